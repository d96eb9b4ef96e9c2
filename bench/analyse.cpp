#include "bench/analyse.hpp"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

#include "bench/bare_insertion.hpp"
#include "bench/measure.hpp"
#include "cobol/analyse.hpp"
#include "orvane/projects.hpp"
#include "orvane/sources.hpp"
#include "orvane/verification.hpp"
#include "platform/dao/dao.hpp"
#include "platform/runtime/error.hpp"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPeerPrograms = 100;   // for the compiler, which takes a process each
constexpr std::size_t kStoredPrograms = 600; // for what is written to disk
constexpr int kRounds = 5;                   // of what is written to disk, as syncs take now this long, now that

// Opens, maps and counts the lines: nothing that reads a text can be faster.
std::uint64_t readRaw(const Corpus& corpus) {
  std::uint64_t lines = 0;
  for (const auto& file : corpus.programs) {
    const int handle = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat facts {};
    if (handle < 0 || ::fstat(handle, &facts) != 0) throw platform::FileError(file, "cannot be read");
    const auto size = static_cast<std::size_t>(facts.st_size);
    if (size > 0) {
      void* const bytes = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, handle, 0);
      if (bytes == MAP_FAILED) throw platform::FileError(file, "cannot be mapped");
      const char* at = static_cast<const char*>(bytes);
      const char* const end = at + size;
      while (at < end && (at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at))))) {
        ++at;
        ++lines;
      }
      ::munmap(bytes, size);
    }
    ::close(handle);
  }
  return lines;
}

// Gives the lines that were read, those of a copybook once for each program that copies it.
std::uint64_t analyseAll(const Corpus& corpus) {
  cobol::Options options;
  options.copybookFolders = corpus.copybooks;
  cobol::CopyLibrary library(corpus.copybooks);
  std::uint64_t lines = 0;
  for (const auto& program : corpus.programs)
    for (const auto& file : cobol::analyse(program, options, library).files)
      lines += file.lines;
  return lines;
}

void analyseAndInsert(const Corpus& corpus, const std::string& folder) {
  cobol::Options options;
  options.copybookFolders = corpus.copybooks;
  cobol::CopyLibrary library(corpus.copybooks);
  std::size_t number = 0;
  for (const auto& file : corpus.programs)
    insertBare(cobol::analyse(file, options, library), fmt::format("{}/{}.mdb", folder, number++));
}

/// A project over programs, verified with everything written.
class StoredProject {
 public:
  StoredProject(const Corpus& corpus, const std::string& folder)
      : m_base(orvane::BaseFolder::create(folder)), m_repository(new orvane::RepositoryFile(m_base.repositoryFile())) {
    const auto project = orvane::createProject(m_base, *m_repository, "bench");
    orvane::OptionDocument options(orvane::optionFile(m_base.projectFolder("bench")));
    orvane::addSources(m_base, *m_repository, project, options, corpus.programs, corpus.copybooks);
  }
  void verify(unsigned jobs) {
    orvane::VerifySettings settings;
    settings.jobs = jobs;
    const auto result = orvane::verifyProject(m_base, *m_repository, "bench", settings);
    if (!result.failed.empty())
      throw platform::Error(result.failed.front().program + ": " + result.failed.front().reason);
  }

 private:
  orvane::BaseFolder m_base;
  platform::Ref<orvane::RepositoryFile> m_repository;
};

/// What writing takes on one core, medians of the rounds.
struct Writing {
  double bare, verification, again; ///< seconds
  double besideBare;                ///< verification / bare
  double secondCore;                ///< verification on one core / on two, each at its best
};

// A round runs in turn what is compared, for the machine is slower at one time than at another, and writes into new
// folders, for replacing a file takes longer than making one.
Writing measureWriting(const Corpus& part, const std::string& folder) {
  std::vector<double> bare, one, two, again, besideBare;
  for (int round = 0; round < kRounds; ++round) {
    const std::string place = fmt::format("{}/round{}", folder, round);
    fs::create_directories(place + "/bare");
    StoredProject first(part, place + "/one");
    {
      const OneCore core;
      bare.push_back(secondsOnce([&] { analyseAndInsert(part, place + "/bare"); }));
      one.push_back(secondsOnce([&] { first.verify(1); }));
      again.push_back(secondsOnce([&] { first.verify(1); }));
    }
    StoredProject second(part, place + "/two");
    two.push_back(secondsOnce([&] { second.verify(2); }));
    besideBare.push_back(one.back() / bare.back());
  }
  // Whatever else the machine does takes the second core first.
  const double secondCore = std::ranges::min(one) / std::ranges::min(two);
  return {median(bare), median(one), median(again), median(besideBare), secondCore};
}

std::string listFile(const Corpus& corpus, const std::string& folder) {
  const std::string name = folder + "/programs.txt";
  std::ofstream list(name);
  for (const auto& file : corpus.programs)
    list << file << '\n';
  return name;
}

double rate(const Corpus& corpus, double time) {
  return static_cast<double>(corpus.lines) / time;
}

void row(const char* what, std::optional<double> rate, std::optional<double> beside) {
  if (rate)
    fmt::print("  {:<58}{:>12.0f}{:>10.2f}\n", what, *rate, beside.value_or(0));
  else
    fmt::print("  {:<58}{:>12}\n", what, "not there");
}

bool aim(const char* what, std::optional<double> ratio, double wanted, bool atLeast) {
  if (!ratio) {
    fmt::print("  {:<58}{:>12}\n", what, "not measured");
    return true;
  }
  const bool met = atLeast ? *ratio >= wanted : *ratio <= wanted;
  fmt::print("  {:<58}{:>12.2f}{:>6} {:<5}{}\n", what, *ratio, atLeast ? ">=" : "<=", wanted, met ? "" : "MISSED");
  return met;
}

// Its map of extensions tells capitals apart. `tags` is the file it writes, as it does when it is run by hand.
std::optional<double> ctagsRate(const Corpus& corpus, const std::string& folder, const std::string& tags) {
  if (!isInstalled("ctags")) return std::nullopt;
  const std::string command =
      fmt::format("ctags --languages=COBOL --langmap=COBOL:.cbl.cob.cobol.CBL.COB.COBOL -f '{}' -L '{}'", tags,
                  listFile(corpus, folder));
  if (shell(command) != 0) return std::nullopt;
  return rate(corpus, seconds([&] { shell(command); }));
}

// What the compiler thinks of a program does not matter, only that it read it.
std::optional<double> compilerRate(const Corpus& corpus) {
  if (!isInstalled("cobc")) return std::nullopt;
  const Corpus part = corpus.sample(kPeerPrograms);
  std::string folders;
  for (const auto& folder : part.copybooks)
    folders += " -I '" + folder + "'";
  return rate(part, seconds([&] {
                for (const auto& file : part.programs)
                  shell(fmt::format("cobc -std=ibm -fsyntax-only{} '{}'", folders, file));
              }));
}

/// What reading takes on one core.
struct Reading {
  double raw, analysis;             ///< lines a second
  std::uint64_t linesWithCopybooks; ///< that the analysis read
  std::optional<double> ctags, ctagsAlone, compiler;
};

Reading measureReading(const Corpus& corpus, const std::string& folder) {
  const OneCore core;
  Reading reading{};
  reading.raw = rate(corpus, seconds([&] { readRaw(corpus); }));
  reading.analysis = rate(corpus, seconds([&] { reading.linesWithCopybooks = analyseAll(corpus); }));
  reading.ctags = ctagsRate(corpus, folder, folder + "/tags");
  reading.ctagsAlone = ctagsRate(corpus, folder, "/dev/null");
  reading.compiler = compilerRate(corpus);
  return reading;
}

} // namespace

void analyseOnce(const Corpus& corpus) {
  fmt::print("{} lines, copybooks counted\n", analyseAll(corpus));
}

bool benchAnalyse(const Corpus& corpus, const std::string& folder) {
  const Corpus part = corpus.sample(kStoredPrograms);
  fmt::print("analyse: {} programs, {} lines, {} MB; written: {} programs, {} lines\n\n", corpus.programs.size(),
             corpus.lines, corpus.bytes / 1000000, part.programs.size(), part.lines);
  std::fflush(stdout);
  const auto [raw, analysis, linesWithCopybooks, ctags, ctagsAlone, compiler] = measureReading(corpus, folder);
  const Writing writing = measureWriting(part, folder);

  fmt::print("  {:<58}{:>12}{:>10}\n  {:-<80}\n", "one core", "lines/s", "analysis", "");
  const auto beside = [analysis = analysis](std::optional<double> peer) {
    return peer ? std::optional(*peer / analysis) : std::nullopt;
  };
  row("read and split into lines", raw, beside(raw));
  row("analysis, all stages", analysis, 1);
  const double more = static_cast<double>(linesWithCopybooks) / static_cast<double>(corpus.lines);
  row("the same, lines of copybooks counted as well", analysis * more, more);
  row("ctags --languages=COBOL, all files in one process", ctags, beside(ctags));
  row("the same, its tags thrown away", ctagsAlone, beside(ctagsAlone));
  row("cobc -fsyntax-only, a process a file", compiler, beside(compiler));
  const auto written = [&part, analysis = analysis](const char* what, double time) {
    row(what, rate(part, time), rate(part, time) / analysis);
  };
  written("analysis and bare insertion of the same rows", writing.bare);
  written("verification, everything written", writing.verification);
  written("verification, nothing changed", writing.again);

  fmt::print("\n  {:<58}{:>12}\n  {:-<80}\n", "aims", "ratio", "");
  bool met = aim("analysis / ctags", ctags ? std::optional(analysis / *ctags) : std::nullopt, 1.5, true);
  met = aim("analysis / cobc a file", compiler ? std::optional(analysis / *compiler) : std::nullopt, 40, true) && met;
  met = aim("verification time / (analysis + bare insertion)", writing.besideBare, 1.3, false) && met;
  const bool hasCores = std::thread::hardware_concurrency() > 1;
  met = aim("verification time, one core / two cores", hasCores ? std::optional(writing.secondCore) : std::nullopt, 1.7,
            true) &&
        met;
  met = aim("verification / cobc a file",
            compiler ? std::optional(rate(part, writing.verification) / *compiler) : std::nullopt, 8, true) &&
        met;

  fmt::print("\n  {:<58}{:>12}\n  {:-<80}\n", "peak memory, process of its own", "MiB", "");
  fmt::print("  {:<58}{:>12.0f}\n", "before (with the list of programs)", peakMemory([] {}));
  fmt::print("  {:<58}{:>12.0f}\n", "analysis of all programs, one after the other",
             peakMemory([&] { analyseAll(corpus); }));
  platform::dbEngine().settle(); // the processes share no connection
  for (const std::size_t programs : {kStoredPrograms / 4, kStoredPrograms}) {
    const Corpus some = corpus.sample(programs);
    fmt::print("  {:<58}{:>12.0f}\n", fmt::format("verification of {} programs, two cores", some.programs.size()),
               peakMemory([&] { StoredProject(some, fmt::format("{}/memory{}", folder, programs)).verify(2); }));
  }
  return met;
}

} // namespace bench
