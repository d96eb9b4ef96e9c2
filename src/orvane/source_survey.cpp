#include "orvane/source_survey.hpp"

#include <algorithm>
#include <filesystem>
#include <set>

#include "orvane/sources.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kCopybookNames[] = {"copy",      "copys",   "copies",   "cpy",    "cpys",   "copybook",
                                               "copybooks", "copylib", "copylibs", "dclgen", "dclgens"};
constexpr std::string_view kCopybookExtensions[] = {".cpy", ".copy", ".cpb", ".dcl"};

template<typename List>
bool isOneOf(const List& list, const std::string& word) {
  return std::any_of(std::begin(list), std::end(list),
                     [&](std::string_view known) { return platform::equalsIgnoringCase(known, word); });
}

bool liesIn(const std::string& path, const std::string& folder) {
  return path.starts_with(folder == "/" ? folder : folder + "/");
}

void addOnce(std::vector<std::string>& list, const std::string& text) {
  if (std::find(list.begin(), list.end(), text) == list.end()) list.push_back(text);
}

class Surveyor {
 public:
  Surveyor(SourceSurvey& survey, const std::atomic<bool>* cancel) : m_survey(survey), m_cancel(cancel) {}

  void take(const std::string& path) {
    std::error_code failed;
    const fs::path whole = fs::canonical(path, failed);
    if (failed) return m_survey.problems.push_back(path + ": " + failed.message());
    if (fs::is_directory(whole, failed)) {
      walk(whole);
      lookBeside(whole);
    } else {
      addOnce(m_survey.files, whole.string());
      lookBeside(whole.parent_path() / "any");
    }
  }

 private:
  bool cancelled() const { return m_cancel && *m_cancel; }

  void walk(const fs::path& root) {
    std::vector<fs::path> open = {root};
    while (!open.empty() && !cancelled()) {
      const fs::path folder = std::move(open.back());
      open.pop_back();
      std::error_code failed;
      const fs::path real = fs::canonical(folder, failed); // links may lead in circles
      if (failed || !m_seen.insert(real).second) continue;
      SourceSurvey::Folder found = countFiles(folder, &open);
      found.root = root.string();
      if (folder != root) noteCopybooks(found);
      if (found.cobol + found.bare > 0) m_survey.folders.push_back(std::move(found));
    }
  }

  // Copybooks often lie beside the folder of programs.
  void lookBeside(const fs::path& path) {
    std::error_code failed;
    std::vector<fs::path> beside;
    for (fs::directory_iterator entry(path.parent_path(), failed), end; !failed && entry != end;
         entry.increment(failed)) {
      std::error_code unknown;
      if (cancelled()) return;
      if (entry->path() != path && entry->is_directory(unknown)) beside.push_back(entry->path());
    }
    std::sort(beside.begin(), beside.end());
    for (const fs::path& folder : beside)
      if (!folder.filename().string().starts_with('.')) noteCopybooks(countFiles(folder, nullptr));
  }

  SourceSurvey::Folder countFiles(const fs::path& folder, std::vector<fs::path>* open) {
    SourceSurvey::Folder found;
    found.path = folder.string();
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed)) {
      if (cancelled()) break;
      const fs::path& path = entry->path();
      if (path.filename().string().starts_with('.')) continue;
      std::error_code unknown;
      if (entry->is_directory(unknown)) {
        if (open) open->push_back(path);
      } else if (hasSourceExtension(path.string())) {
        ++found.cobol;
      } else if (!path.has_extension()) {
        ++found.bare;
      } else if (isOneOf(kCopybookExtensions, path.extension().string())) {
        ++found.copybooks;
      }
    }
    if (failed && open) m_survey.problems.push_back(folder.string() + ": " + failed.message());
    return found;
  }

  void noteCopybooks(const SourceSurvey::Folder& folder) {
    const bool isNamed = isOneOf(kCopybookNames, fs::path(folder.path).filename().string()) &&
                         folder.cobol + folder.bare + folder.copybooks > 0;
    if (isNamed || (folder.copybooks > 0 && folder.cobol == 0)) addOnce(m_survey.copybookFolders, folder.path);
  }

  SourceSurvey& m_survey;
  const std::atomic<bool>* m_cancel;
  std::set<fs::path> m_seen;
};

} // namespace

SourceSurvey surveySources(const std::vector<std::string>& paths, const std::atomic<bool>* cancel) {
  SourceSurvey survey;
  Surveyor surveyor(survey, cancel);
  for (const std::string& path : paths)
    surveyor.take(path);
  return survey;
}

std::size_t programCount(const SourceSurvey& survey, const std::vector<std::string>& copybookFolders) {
  std::set<std::string> copybooks;
  for (const std::string& folder : copybookFolders) {
    std::error_code failed;
    const fs::path real = fs::weakly_canonical(folder, failed);
    copybooks.insert(failed ? folder : real.string());
  }
  std::size_t count = 0;
  std::set<std::string> counted;
  for (const auto& folder : survey.folders) {
    const bool isLeftOut = std::any_of(copybooks.begin(), copybooks.end(), [&](const std::string& copy) {
      return copy != folder.root && liesIn(copy, folder.root) && (folder.path == copy || liesIn(folder.path, copy));
    });
    if (isLeftOut) continue;
    counted.insert(folder.path);
    count += folder.cobol + (copybooks.contains(folder.root) ? 0 : folder.bare);
  }
  for (const std::string& file : survey.files) {
    const fs::path path = file;
    const bool isCounted =
        counted.contains(path.parent_path().string()) && (hasSourceExtension(file) || !path.has_extension());
    if (!isCounted) ++count;
  }
  return count;
}

} // namespace orvane
