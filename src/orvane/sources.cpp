#include "orvane/sources.hpp"

#include <filesystem>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include <fmt/format.h>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace fs = std::filesystem;

namespace {

using platform::Ref;
using tarnsift::RepositoryObject;

constexpr std::string_view kExtensions[] = {".cbl", ".cob", ".cobol", ".pco", ".sqb"};
constexpr const char* kHere = "."; // the base folder itself as a source path

std::string canonical(const std::string& path) {
  std::error_code failed;
  const fs::path whole = fs::weakly_canonical(path, failed);
  if (failed) throw platform::FileError(path, failed.message());
  std::string text = whole.string();
  while (text.size() > 1 && text.ends_with('/'))
    text.pop_back();
  return text;
}

bool lies(const std::string& path, const std::string& below) {
  return path.starts_with(below == "/" ? below : below + "/");
}

bool looksLikeSource(const std::string& name, bool amongCopybooks) {
  return fs::path(name).has_extension() ? hasSourceExtension(name) : !amongCopybooks;
}

std::string nativeOf(const BaseFolder& base, const std::string& stored) {
  return stored.starts_with('/') ? stored : base.native(stored);
}

std::string storedOf(const BaseFolder& base, const std::string& native) {
  if (native == base.path()) return kHere;
  return base.relative(native).value_or(native);
}

/// The candidates of one remembered path, as they are stored.
std::vector<std::string> sourcesAt(const BaseFolder& base, const std::string& stored,
                                   const std::vector<std::string>& copybookFolders) {
  const std::string root = nativeOf(base, stored);
  if (platform::fileExists(root)) return {stored};
  const std::string real = canonical(root);
  std::vector<std::string> leftOut;
  bool amongCopybooks = false;
  for (const std::string& folder : copybookFolders) {
    const std::string realFolder = canonical(nativeOf(base, folder));
    if (realFolder == real) amongCopybooks = true;
    if (lies(realFolder, real)) leftOut.push_back(realFolder);
  }
  // A source tree around the base folder: what the host keeps is no source.
  if (real == base.path())
    for (const char* own : {"Projects", "Analysis", "Sources", "Output", "Resources"})
      leftOut.push_back(real + "/" + own);
  else if (lies(base.path(), real))
    leftOut.push_back(base.path());
  std::vector<std::string> sources;
  for (const std::string& file : platform::walkFiles(root)) {
    if (!looksLikeSource(file, amongCopybooks)) continue;
    const std::string whole = real + "/" + file;
    if (std::any_of(leftOut.begin(), leftOut.end(), [&](const std::string& folder) { return lies(whole, folder); }))
      continue;
    sources.push_back(storedOf(base, root + "/" + file));
  }
  return sources;
}

/// Makes repository objects for source files. Lives within one transaction.
class Registration {
 public:
  Registration(RepositoryFile& repository, Ref<RepositoryObject> project)
      : m_repository(repository), m_project(std::move(project)) {
    for (auto all = repository.SelectObjects(kSourceType, "", ""); !all->AtEnd(); all->MoveNext()) {
      m_sources[all->Current()->Attribute("Source").asText()] = all->Current();
      m_allNames.insert(all->Current()->Attribute("Name").asText());
    }
    for (auto members = repository.SelectObjects(kSourceType, m_project->Id(), ""); !members->AtEnd();
         members->MoveNext()) {
      m_members.insert(members->Current()->Id());
      m_names.insert(members->Current()->Attribute("Name").asText());
    }
    for (auto all = repository.SelectObjects(kProgramType, "", ""); !all->AtEnd(); all->MoveNext())
      m_programs[all->Current()->Attribute("SID").asText()] = all->Current();
  }

  void take(const std::string& stored, SourcesFound& found) {
    Ref<RepositoryObject>& source = m_sources[stored];
    if (source && m_members.contains(source->Id())) {
      ++found.known;
      return;
    }
    if (source) {
      makeUnique(source, stored);
    } else {
      source = m_repository.createObject(kSourceType, freeName(stored, m_names));
      set(source, {{"Source", stored}});
    }
    const std::string name = source->Attribute("Name").asText();
    source->AddRelation(kBelongsTo, m_project);
    m_members.insert(source->Id());
    m_names.insert(name);
    m_allNames.insert(name);
    joinProgram(source, name);
    found.added.push_back(name);
  }

 private:
  using Names = std::unordered_set<std::string, platform::IgnoringCaseHash, platform::IgnoringCaseEqual>;

  // The stem, with its extension where that is taken, then with more and more of its folders.
  static std::string freeName(const std::string& stored, const Names& taken) {
    const fs::path path = platform::nativePath(stored);
    std::string name = platform::upper(path.stem().string());
    if (!taken.contains(name)) return name;
    name = platform::upper(path.filename().string());
    for (fs::path folder = path.parent_path(); taken.contains(name) && folder.has_filename();
         folder = folder.parent_path())
      name = platform::upper(folder.filename().string()) + "." + name;
    const std::string stem = name;
    for (int number = 2; taken.contains(name); ++number)
      name = fmt::format("{}-{}", stem, number);
    return name;
  }

  // A program of another project keeps its name unless this project has it already.
  void makeUnique(const Ref<RepositoryObject>& source, const std::string& stored) {
    if (m_names.contains(source->Attribute("Name").asText())) set(source, {{"Name", freeName(stored, m_allNames)}});
  }

  void joinProgram(const Ref<RepositoryObject>& source, const std::string& name) {
    Ref<RepositoryObject>& program = m_programs[source->Id()];
    if (!program) {
      program = m_repository.createObject(kProgramType, name);
      set(program, {{"SID", source->Id()}});
    } else if (program->Attribute("Name").asText() != name) {
      set(program, {{"Name", name}});
    }
    program->AddRelation(kBelongsTo, m_project);
  }

  static void set(const Ref<RepositoryObject>& object,
                  const std::vector<std::pair<std::string, platform::Value>>& attributes) {
    object->BeginUpdate();
    for (const auto& [name, value] : attributes)
      object->SetAttribute(name, value);
    object->CommitUpdate();
  }

  RepositoryFile& m_repository;
  Ref<RepositoryObject> m_project;
  std::unordered_map<std::string, Ref<RepositoryObject>> m_sources;  ///< by stored path
  std::unordered_map<std::string, Ref<RepositoryObject>> m_programs; ///< by the source's id
  std::set<std::string> m_members;
  Names m_names;    ///< of the project's programs
  Names m_allNames; ///< of all programs of the base folder
};

void registerAll(RepositoryFile& repository, const Ref<RepositoryObject>& project,
                 const std::vector<std::string>& sources, SourcesFound& found) {
  repository.together([&] {
    Registration registration(repository, project);
    for (const std::string& source : sources)
      registration.take(source, found);
  });
}

/// Brings native folders below the base folder, each tree once.
class Placing {
 public:
  Placing(const BaseFolder& base, TakeSources how) : m_base(base), m_how(how) {}
  /// A folder whose place is known already, from an earlier call.
  void knows(const std::string& place) { m_places.emplace_back(canonical(place), place); }

  std::string folder(const std::string& path) {
    const std::string whole = canonical(path);
    if (!platform::folderExists(whole))
      throw platform::FileError(path, platform::fileExists(whole) ? "is no folder" : "is not there");
    if (whole == m_base.path()) return whole;
    for (const auto& [original, place] : m_places)
      if (original == whole || lies(whole, original)) return place + whole.substr(original.size());
    m_places.emplace_back(whole, m_how == TakeSources::link ? m_base.linkFolder(whole) : m_base.copyFolder(whole));
    return m_places.back().second;
  }

  std::string file(const std::string& path) {
    const std::string whole = canonical(path);
    const fs::path parent = fs::path(whole).parent_path();
    const std::string name = fs::path(whole).filename().string();
    if (m_how == TakeSources::link || whole.starts_with(m_base.path() + "/"))
      return folder(parent.string()) + "/" + name;
    const std::string place =
        m_base.path() + "/Sources/" + (parent.filename().empty() ? "root" : parent.filename().string());
    platform::createFolders(place);
    std::error_code failed;
    fs::copy_file(whole, place + "/" + name, fs::copy_options::overwrite_existing, failed);
    if (failed) throw platform::FileError(place + "/" + name, failed.message());
    return place + "/" + name;
  }

 private:
  const BaseFolder& m_base;
  TakeSources m_how;
  std::vector<std::pair<std::string, std::string>> m_places; ///< real folder, its place below the base folder
};

void addOnce(std::vector<std::string>& list, std::string text) {
  if (std::find(list.begin(), list.end(), text) == list.end()) list.push_back(std::move(text));
}

} // namespace

bool hasSourceExtension(const std::string& name) {
  const std::string extension = fs::path(name).extension().string();
  return std::any_of(std::begin(kExtensions), std::end(kExtensions),
                     [&](std::string_view known) { return platform::equalsIgnoringCase(known, extension); });
}

SourcesFound addSources(const BaseFolder& base, RepositoryFile& repository, const Ref<RepositoryObject>& project,
                        OptionDocument& options, const std::vector<std::string>& paths,
                        const std::vector<std::string>& copybookFolders, TakeSources how) {
  platform::Document document = options.Document();
  std::vector<std::string> sourcePaths = analysisStrings(document, "SourcePaths");
  std::vector<std::string> folders = analysisStrings(document, "CopybookFolders");
  Placing placing(base, how);
  if (how == TakeSources::link)
    for (const std::string& stored : sourcePaths)
      if (platform::folderExists(nativeOf(base, stored))) placing.knows(nativeOf(base, stored));
  std::vector<std::string> named;
  for (const std::string& path : paths) {
    const bool isFile = platform::fileExists(path);
    named.push_back(storedOf(base, isFile ? placing.file(path) : placing.folder(path)));
    addOnce(sourcePaths, named.back());
  }
  for (const std::string& folder : copybookFolders)
    addOnce(folders, storedOf(base, placing.folder(folder)));

  std::vector<std::string> sources;
  for (const std::string& stored : named)
    for (std::string& source : sourcesAt(base, stored, folders))
      sources.push_back(std::move(source));
  SourcesFound found;
  registerAll(repository, project, sources, found);
  setAnalysisStrings(document, "SourcePaths", sourcePaths);
  setAnalysisStrings(document, "CopybookFolders", folders);
  options.Save();
  return found;
}

SourcesFound refreshSources(const BaseFolder& base, RepositoryFile& repository, const Ref<RepositoryObject>& project,
                            const platform::Document& options) {
  SourcesFound found;
  std::vector<std::string> sources;
  const std::vector<std::string> copybookFolders = analysisStrings(options, "CopybookFolders");
  for (const std::string& stored : analysisStrings(options, "SourcePaths")) {
    try {
      for (std::string& source : sourcesAt(base, stored, copybookFolders))
        sources.push_back(std::move(source));
    } catch (const platform::Error& error) {
      found.problems.emplace_back(error.what());
    }
  }
  registerAll(repository, project, sources, found);
  return found;
}

cobol::Options readingOptions(const BaseFolder& base, const platform::Document& options) {
  cobol::Options reading = analyserOptions(options);
  for (std::string& folder : reading.copybookFolders)
    folder = nativeOf(base, folder);
  return reading;
}

} // namespace orvane
