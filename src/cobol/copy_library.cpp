#include "cobol/copy_library.hpp"

#include <filesystem>
#include <mutex>
#include <utility>

#include "cobol/characters.hpp"
#include "cobol/source_text.hpp"

namespace cobol {
namespace {

namespace fs = std::filesystem;

/// Names of one folder by their capitals; those that differ in case only are sorted.
struct FolderIndex {
  std::unordered_map<std::string, std::vector<std::string>> files;
  std::unordered_map<std::string, std::string> folders;
};

FolderIndex listFolder(const std::string& folder) {
  FolderIndex index;
  std::error_code error;
  for (fs::directory_iterator it(folder, fs::directory_options::skip_permission_denied, error), end;
       !error && it != end; it.increment(error)) {
    std::error_code unknown;
    const std::string name = it->path().filename().string();
    if (it->is_directory(unknown))
      index.folders.emplace(upper(name), name);
    else
      index.files[upper(name)].push_back(name);
  }
  for (auto& [name, spellings] : index.files)
    std::sort(spellings.begin(), spellings.end());
  return index;
}

} // namespace

struct CopyLibrary::State {
  struct Read {
    ScanSettings outer;
    std::shared_ptr<const CopyText> text;
  };
  std::mutex indexLock;
  std::map<std::string, std::unique_ptr<const FolderIndex>> indexes;
  struct Found {
    std::optional<std::string> path;
    std::string rival;
  };
  std::mutex foundLock;
  std::unordered_map<std::string, Found> found; ///< by name, library and folder of the includer
  std::mutex textLock;
  std::unordered_map<std::string, std::vector<Read>> texts; ///< by path, for each way of reading it

  /// The words of the copybook if it has been read in that way. Under the lock.
  std::shared_ptr<const CopyText> known(const std::string& path, const ScanSettings& outer) const {
    const auto ways = texts.find(path);
    if (ways == texts.end()) return nullptr;
    for (const Read& read : ways->second)
      if (read.outer == outer) return read.text;
    return nullptr;
  }

  const FolderIndex& index(const std::string& folder) {
    const std::lock_guard guard(indexLock);
    std::unique_ptr<const FolderIndex>& slot = indexes[folder];
    if (!slot) slot = std::make_unique<const FolderIndex>(listFolder(folder));
    return *slot;
  }
};

CopyLibrary::CopyLibrary(std::vector<std::string> folders, std::vector<std::string> extensions)
    : m_folders(std::move(folders)), m_extensions(std::move(extensions)), m_state(std::make_unique<State>()) {
  if (std::find(m_extensions.begin(), m_extensions.end(), "") == m_extensions.end())
    m_extensions.insert(m_extensions.begin(), "");
}

CopyLibrary::CopyLibrary(std::map<std::string, std::string> texts)
    : m_inMemory(true), m_texts(std::move(texts)), m_state(std::make_unique<State>()) {}

CopyLibrary::~CopyLibrary() = default;

// `name` may hold folders; each part is looked up without regard to case.
std::optional<std::string> CopyLibrary::findIn(const std::string& folder, const std::string& name, std::string* rival) {
  std::string at = folder.empty() ? "." : folder;
  std::string_view rest = name;
  for (std::size_t slash; (slash = rest.find('/')) != rest.npos; rest.remove_prefix(slash + 1)) {
    const std::string_view part = rest.substr(0, slash);
    if (part.empty() || part == ".") continue;
    if (part == "..") {
      at += "/..";
      continue;
    }
    const FolderIndex& index = m_state->index(at);
    const auto found = index.folders.find(upper(part));
    if (found == index.folders.end()) return std::nullopt;
    at += "/" + found->second;
  }
  const FolderIndex& index = m_state->index(at);
  for (const std::string& extension : m_extensions) {
    const std::string wanted = std::string(rest) + extension;
    const auto found = index.files.find(upper(wanted));
    if (found == index.files.end()) continue;
    const std::vector<std::string>& spellings = found->second;
    const bool exact = std::find(spellings.begin(), spellings.end(), wanted) != spellings.end();
    if (rival && !exact && spellings.size() > 1) *rival = spellings[1];
    return (fs::path(at) / (exact ? wanted : spellings.front())).lexically_normal().string();
  }
  return std::nullopt;
}

std::optional<std::string> CopyLibrary::findText(std::string_view name, std::string_view library) const {
  if (!library.empty()) {
    const std::string key = upper(library) + "/" + upper(name);
    if (m_texts.contains(key)) return key;
  }
  if (m_texts.contains(upper(name))) return upper(name);
  return std::nullopt;
}

std::optional<std::string> CopyLibrary::find(std::string_view name, std::string_view library,
                                             const std::string& includerPath, std::string* rival) {
  if (m_inMemory) return findText(name, library);
  std::string key(name);
  ((key += '\0') += library) += '\0';
  key.append(includerPath, 0, includerPath.rfind('/') + 1);
  {
    const std::lock_guard guard(m_state->foundLock);
    if (const auto known = m_state->found.find(key); known != m_state->found.end()) {
      if (rival) *rival = known->second.rival;
      return known->second.path;
    }
  }
  State::Found fresh;
  fresh.path = search(name, library, includerPath, &fresh.rival);
  if (rival) *rival = fresh.rival;
  const std::lock_guard guard(m_state->foundLock);
  return m_state->found.emplace(std::move(key), std::move(fresh)).first->second.path;
}

std::optional<std::string> CopyLibrary::search(std::string_view name, std::string_view library,
                                               const std::string& includerPath, std::string* rival) {
  std::string wanted(name);
  std::replace(wanted.begin(), wanted.end(), '\\', '/');
  if (wanted.empty() || wanted.back() == '/') return std::nullopt;
  if (wanted.front() == '/') {
    const fs::path whole(wanted);
    return findIn(whole.parent_path().string(), whole.filename().string(), rival);
  }
  const std::string home = fs::path(includerPath).parent_path().string();
  const bool withFolders = wanted.find('/') != wanted.npos;
  if (withFolders) {
    if (auto found = findIn(home, wanted, rival)) return found;
  }
  if (!library.empty()) {
    const std::string libraryName(library);
    for (const std::string& folder : m_folders) {
      if (upper(fs::path(folder).filename().string()) == upper(library)) {
        if (auto found = findIn(folder, wanted, rival)) return found;
      }
      if (auto found = findIn(folder, libraryName + "/" + wanted, rival)) return found;
    }
    if (auto found = findIn(home, libraryName + "/" + wanted, rival)) return found;
  }
  for (const std::string& folder : m_folders) {
    if (auto found = findIn(folder, wanted, rival)) return found;
  }
  if (auto found = findIn(home, wanted, rival)) return found;
  // A path of another machine: its last part is what the folders of the list hold.
  if (withFolders) return search(wanted.substr(wanted.rfind('/') + 1), library, includerPath, rival);
  return std::nullopt;
}

std::shared_ptr<const CopyText> CopyLibrary::read(const std::string& path, const ScanSettings& outer,
                                                  const Options& options) {
  {
    const std::lock_guard guard(m_state->textLock);
    if (auto known = m_state->known(path, outer)) return known;
  }
  auto copy = std::make_shared<CopyText>();
  std::optional<std::string> bytes;
  if (!m_inMemory)
    bytes = readBytes(path);
  else if (const auto text = m_texts.find(path); text != m_texts.end())
    bytes = text->second;
  if (!bytes)
    copy->block.diagnostics.add(Code::SourceUnreadable, Severity::error, {0, 1, 1, 0},
                                "cannot read the copybook " + path);
  SourceText source = decode(bytes ? std::move(*bytes) : std::string(), options, copy->block.diagnostics);
  copy->block.readable = bytes.has_value();
  copy->block.file = source.file;
  copy->block.file.path = path;
  ScanSettings settings = outer;
  if (options.format == FormatChoice::detect) settings.format = copiedFormat(source, outer.format);
  copy->block.file.format = settings.format;
  Scanner(source.text, source.traits, settings, copy->block, copy->names).run();
  copy->block.tokens.shrink_to_fit();
  const std::lock_guard guard(m_state->textLock);
  if (auto known = m_state->known(path, outer)) return known; // another thread was faster
  m_state->texts[path].push_back({outer, copy});
  return copy;
}

} // namespace cobol
