#include "orvane/verification.hpp"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <filesystem>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>

#include <unistd.h>

#include <fmt/format.h>

#include "cobol/analyse.hpp"
#include "cobol/source_text.hpp"
#include "orvane/fingerprint.hpp"
#include "orvane/host.hpp"
#include "orvane/lock.hpp"
#include "orvane/program_files.hpp"
#include "orvane/sources.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/store/program_database.hpp"

namespace orvane {

namespace {

using platform::Ref;
using platform::Value;
using tarnsift::RepositoryObject;

constexpr std::size_t kLongestFileStem = 100; // bytes
constexpr std::size_t kGroup = 16;            // programs that are done
constexpr auto kGroupTime = std::chrono::milliseconds(100);

/// The small facts that are kept of a program that is done.
struct Facts {
  std::uint64_t lines = 0, constructs = 0, relationships = 0;
  std::size_t files = 0;
  std::map<std::uint32_t, std::uint64_t> diagnostics;
  std::set<std::string> missing;
  std::uint64_t fingerprint = 0;
};

struct Task {
  Ref<RepositoryObject> object; ///< for the calling thread only
  std::string name, source;
  std::string analysisFile; ///< stored path
  std::string fingerprint;  ///< of the last verification, or empty
  std::uint64_t bytes = 0;  ///< of the source, copybooks left out
  bool settled = false;     ///< nothing is left to do for it
  Verified outcome = Verified::failed;
  std::string reason; ///< why it failed
  Facts facts;
  CarryCounts decisions;
  std::int64_t written = 0;               ///< microseconds since 1970 UTC
  std::unique_ptr<NewProgramFiles> files; ///< not in their place yet
};

std::int64_t microsecondsNow() {
  return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::system_clock::now().time_since_epoch())
      .count();
}

// Names of programs come from file names: what could trouble a path or make it too long is replaced.
std::string analysisFileOf(const std::string& name, const std::string& id) {
  std::string stem = name.substr(0, kLongestFileStem);
  for (char& c : stem)
    if (c <= ' ' || c > '~' || std::string_view("/\\:*?\"<>|'").find(c) != std::string_view::npos) c = '_';
  return "Analysis\\" + stem + "-" + id + ".kva";
}

Facts factsOf(const StoreData& data) {
  Facts facts;
  facts.files = data.files.size();
  facts.lines = data.files.empty() ? 0 : data.files.front().lines;
  facts.constructs = data.constructs.size();
  facts.relationships = data.relations.size();
  for (const DiagnosticRecord& remark : data.diagnostics)
    if (remark.severity != static_cast<std::uint32_t>(cobol::Severity::information)) ++facts.diagnostics[remark.code];
  for (const CopyRecord& copy : data.copies)
    if (copy.file < 0) facts.missing.emplace(data.text(copy.name));
  facts.fingerprint = data.generation;
  return facts;
}

std::string reasonOfFailure(const cobol::Analysis& analysis, const std::string& path) {
  for (const cobol::Diagnostic& remark : analysis.diagnostics)
    if (remark.code == cobol::Code::SourceUnreadable && remark.at.file == 0) return remark.text;
  const auto bytes = cobol::readBytes(path);
  const bool binary = bytes && std::string_view(*bytes).substr(0, 8192).find('\0') != std::string_view::npos;
  return binary ? path + ": is a binary file, no COBOL source"
                : path + ": nothing in it says that it is a COBOL program (no division header, no PROGRAM-ID)";
}

/// Runs work for 0 … count-1 on several threads. `collect` gets on the calling thread what is done, in groups: syncs
/// and notes of several programs at a time cost the threads that analyse less.
class Crew {
 public:
  Crew(std::size_t jobs, std::size_t count, const std::atomic<bool>* cancel, std::function<void(std::size_t)> work)
      : m_count(count), m_cancel(cancel), m_work(std::move(work)), m_running(std::min(jobs, count)) {
    for (std::size_t i = m_running; i > 0; --i)
      m_threads.emplace_back([this](std::stop_token stop) { labour(stop); });
  }

  void collect(const std::function<void(const std::vector<std::size_t>&)>& take) {
    for (;;) {
      std::vector<std::size_t> done;
      {
        std::unique_lock lock(m_lock);
        m_news.wait_for(lock, kGroupTime, [&] { return m_done.size() >= kGroup || m_running == 0; });
        done.swap(m_done);
        if (done.empty() && m_running == 0) return;
      }
      if (!done.empty()) take(done);
    }
  }

 private:
  void labour(const std::stop_token& stop) {
    while (!stop.stop_requested() && !(m_cancel && *m_cancel)) {
      const std::size_t index = m_next++;
      if (index >= m_count) break;
      m_work(index);
      const std::lock_guard guard(m_lock);
      m_done.push_back(index);
      if (m_done.size() == kGroup) m_news.notify_one();
    }
    const std::lock_guard guard(m_lock);
    --m_running;
    m_news.notify_one();
  }

  std::size_t m_count;
  const std::atomic<bool>* m_cancel;
  std::function<void(std::size_t)> m_work;
  std::atomic<std::size_t> m_next{0};
  std::mutex m_lock;
  std::condition_variable m_news;
  std::vector<std::size_t> m_done;
  std::size_t m_running;
  std::vector<std::jthread> m_threads; ///< last, so that they end before what they use
};

class Verification {
 public:
  Verification(const BaseFolder& base, RepositoryFile& repository, cobol::Options options,
               const VerifySettings& settings)
      : m_base(base), m_repository(repository), m_settings(settings), m_options(std::move(options)),
        m_library(m_options.copybookFolders, m_options.copyExtensions), m_fingerprints(m_base, m_options, m_library) {}

  void run(const std::string& projectId, VerifyResult& result) {
    readTasks(projectId);
    result.programs = m_tasks.size();
    inParallel([this](Task& task) { inspect(task); }, result);
    markBegun();
    inParallel([this](Task& task) { verify(task); }, result);
    result.cancelled = m_settings.cancel && *m_settings.cancel;
    std::sort(result.failed.begin(), result.failed.end(),
              [](const auto& a, const auto& b) { return a.program < b.program; });
  }

 private:
  void readTasks(const std::string& projectId) {
    for (auto members = m_repository.SelectObjects(kSourceType, projectId, "Name"); !members->AtEnd();
         members->MoveNext()) {
      Task task;
      task.object = members->Current();
      task.name = task.object->Attribute("Name").asText();
      task.source = task.object->Attribute("Source").asText();
      task.analysisFile = task.object->Attribute("Kelvane").asText();
      if (task.analysisFile.empty()) task.analysisFile = analysisFileOf(task.name, task.object->Id());
      task.fingerprint = task.object->Attribute("Fingerprint").asText();
      m_tasks.push_back(std::move(task));
    }
  }

  // The work of all tasks that are not settled; it must settle each or leave it for the next round.
  void inParallel(const std::function<void(Task&)>& work, VerifyResult& result) {
    std::vector<Task*> open;
    for (Task& task : m_tasks)
      if (!task.settled) open.push_back(&task);
    // Or else a large program that comes last would be analysed while the other threads have nothing to do.
    std::stable_sort(open.begin(), open.end(), [](const Task* a, const Task* b) { return a->bytes > b->bytes; });
    const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
    Crew crew(m_settings.jobs > 0 ? m_settings.jobs : cores, open.size(), m_settings.cancel, [&](std::size_t index) {
      Task& task = *open[index];
      try {
        work(task);
      } catch (const std::exception& error) { // out of memory too costs this program only
        settle(task, Verified::failed, error.what());
      }
    });
    crew.collect([&](const std::vector<std::size_t>& done) {
      std::vector<Task*> settled;
      for (const std::size_t index : done)
        if (open[index]->settled) settled.push_back(open[index]);
      if (settled.empty()) return;
      place(settled);
      const auto noteAll = [&] {
        for (Task* const task : settled)
          note(*task, result);
      };
      const bool isNews = std::any_of(settled.begin(), settled.end(),
                                      [](const Task* task) { return task->outcome != Verified::unchanged; });
      if (isNews)
        m_repository.together(noteAll);
      else // nothing to write, as a rule
        noteAll();
      for (Task* const task : settled) {
        task->object = nullptr; // of programs that are done as little as possible stays in memory
        task->facts = {};
        if (m_settings.progress) m_settings.progress({++m_done, m_tasks.size(), task->name, task->outcome});
      }
    });
  }

  // The crew works on while the disk takes what it has made. A note in the repository says that a database is whole, so
  // it must be on the disk before.
  static void place(const std::vector<Task*>& settled) {
    const auto step = [](Task& task, void (*work)(Task&)) {
      if (!task.files) return;
      try {
        work(task);
      } catch (const std::exception& error) {
        settle(task, Verified::failed, error.what());
        task.files.reset();
      }
    };
    syncTogether(settled, [&](Task& task) { step(task, [](Task& one) { one.files->sync(); }); });
    for (Task* const task : settled)
      step(*task, [](Task& one) {
        one.files->place();
        one.files.reset();
      });
  }

  // A disk takes files that are synced at the same time in fewer goes.
  static void syncTogether(const std::vector<Task*>& tasks, const std::function<void(Task&)>& sync) {
    constexpr std::size_t kAtATime = 8;
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
      for (std::size_t at; (at = next++) < tasks.size();)
        sync(*tasks[at]);
    };
    std::vector<std::jthread> others;
    try {
      for (std::size_t i = 1; i < std::min(kAtATime, tasks.size()); ++i)
        others.emplace_back(work);
    } catch (const std::system_error&) { // no more threads: those that are there do it
    }
    work();
  }

  static void settle(Task& task, Verified outcome, std::string reason = {}) {
    task.settled = true;
    task.outcome = outcome;
    task.reason = std::move(reason);
  }

  // Settles programs that are gone or unchanged. Their analysis files must be of the fingerprint that the last finished
  // verification noted, and their databases are so as long as that note stands.
  void inspect(Task& task) {
    const std::string source = nativePathOf(m_base, task.source);
    if (!platform::fileExists(source)) return settle(task, Verified::failed, source + ": the source file is gone");
    task.bytes = platform::fileSize(source);
    const std::string file = m_base.native(task.analysisFile);
    if (m_settings.force || task.fingerprint.empty() || !platform::fileExists(file) ||
        !platform::fileExists(tarnsift::DatabasePath(file)))
      return;
    try {
      const StoreData data = readStore(file);
      if (data.files.empty() || fingerprintText(data.generation) != task.fingerprint ||
          m_fingerprints.current(data) != data.generation)
        return;
      task.facts = factsOf(data);
      settle(task, Verified::unchanged);
    } catch (const platform::FileError&) { // damaged: made anew
    }
  }

  // A killed run must not leave two files of different generations that pass for one.
  void markBegun() {
    m_repository.together([&] {
      for (Task& task : m_tasks) {
        if (task.settled || task.fingerprint.empty()) continue;
        task.object->BeginUpdate();
        task.object->SetAttribute("Fingerprint", Value());
        task.object->CommitUpdate();
      }
    });
  }

  void verify(Task& task) {
    const std::string source = nativePathOf(m_base, task.source);
    const cobol::Analysis analysis = cobol::analyse(source, m_options, m_library);
    if (!analysis.isCobol) return settle(task, Verified::failed, reasonOfFailure(analysis, source));
    StoreData data = packAnalysis(analysis, 0, [this](const std::string& path) { return storedPath(m_base, path); });
    data.generation = m_fingerprints.recorded(data);
    task.written = microsecondsNow();
    task.files = std::make_unique<NewProgramFiles>(m_base.native(task.analysisFile), analysis, data, task.written);
    task.decisions = task.files->decisions();
    task.facts = factsOf(data);
    settle(task, Verified::written);
  }

  // Within a transaction of the repository when something is news.
  void note(Task& task, VerifyResult& result) {
    setAttributes(task);
    if (task.outcome == Verified::failed) {
      result.failed.push_back({task.name, task.source, task.reason});
      return;
    }
    ++(task.outcome == Verified::written ? result.written : result.unchanged);
    result.lines += task.facts.lines;
    result.constructs += task.facts.constructs;
    result.relationships += task.facts.relationships;
    for (const auto& [code, count] : task.facts.diagnostics)
      result.diagnostics[std::string(cobol::nameOf(static_cast<cobol::Code>(code)))] += count;
    for (const auto& name : task.facts.missing)
      ++result.missingCopybooks[name];
    result.decisions += task.decisions;
  }

  static void setAttributes(Task& task) {
    const bool isGood = task.outcome != Verified::failed;
    if (task.outcome != Verified::written && task.object->Attribute("DataRelations").asBool() == isGood &&
        task.object->Attribute("Reason").asText() == task.reason)
      return;
    task.object->BeginUpdate();
    task.object->SetAttribute("DataRelations", isGood);
    task.object->SetAttribute("Reason", task.reason);
    if (task.outcome == Verified::written) {
      task.object->SetAttribute("Kelvane", task.analysisFile);
      task.object->SetAttribute("Modified", task.written);
      task.object->SetAttribute("Fingerprint", fingerprintText(task.facts.fingerprint));
      task.object->SetAttribute("Files", static_cast<std::int64_t>(task.facts.files));
      task.object->SetAttribute("Lines", static_cast<std::int64_t>(task.facts.lines));
    }
    task.object->CommitUpdate();
  }

  const BaseFolder& m_base;
  RepositoryFile& m_repository;
  const VerifySettings& m_settings;
  cobol::Options m_options;
  cobol::CopyLibrary m_library;
  Fingerprints m_fingerprints;
  std::vector<Task> m_tasks;
  std::size_t m_done = 0;
};

} // namespace

VerifyResult verifyProject(const BaseFolder& base, RepositoryFile& repository, const std::string& project,
                           const VerifySettings& settings) {
  const FolderLock lock(baseLockFile(base), FolderLock::Mode::exclusive, "the base folder " + base.path());
  const Ref<RepositoryObject> object = repository.FindByName(kProjectType, project, 0);
  const Ref<OptionDocument> options(
      new OptionDocument(optionFile(base.projectFolder(object->Attribute("Name").asText()))));
  platform::createFolders(base.analysisFolder());
  if (::access(base.analysisFolder().c_str(), W_OK | X_OK) != 0)
    throw platform::FileError(base.analysisFolder(), "cannot be written to; make the folder writable");
  removeLeftovers(base.analysisFolder());
  VerifyResult result;
  SourcesFound found = refreshSources(base, repository, object, options->Document());
  result.added = std::move(found.added);
  result.problems = std::move(found.problems);
  Verification(base, repository, readingOptions(base, options->Document()), settings).run(object->Id(), result);
  platform::dbEngine().settle();
  return result;
}

} // namespace orvane
