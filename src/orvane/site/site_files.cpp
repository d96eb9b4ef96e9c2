#include "orvane/site/site_files.hpp"

#include <algorithm>
#include <numeric>
#include <unordered_set>

#include <fmt/format.h>

#include "cobol/analysis.hpp"
#include "cobol/source_text.hpp"
#include "orvane/fingerprint.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

constexpr const char* kFolder = "Sources/";
constexpr std::size_t kLongestStem = 120;

std::uint64_t placeKey(const PlaceRecord& place) {
  return std::uint64_t{place.line} << 32U | place.column;
}

bool leadsSomewhere(const ConstructRecord& construct) {
  switch (static_cast<cobol::Kind>(construct.kind)) {
  case cobol::Kind::specialRegister:
  case cobol::Kind::callSlot:
  case cobol::Kind::fileSlot:
  case cobol::Kind::undeclared:
    return false;
  default:
    return construct.declared.line > 0;
  }
}

bool hasToken(const InstanceRecord& instance) {
  const auto access = static_cast<cobol::Access>(instance.access);
  return access != cobol::Access::declare && access != cobol::Access::implied && instance.place.line > 0;
}

// Letters, digits, dot, dash and underscore of the file's name; whatever else becomes a dash.
std::string stemOf(const std::string& path) {
  const std::string name = path.substr(path.find_last_of("\\/") + 1);
  std::string stem;
  for (const char c : std::string_view(name).substr(0, kLongestStem)) {
    const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
                       ((c == '.' || c == '-') && !stem.empty());
    if (plain)
      stem += c;
    else if (!stem.ends_with('-'))
      stem += '-';
  }
  return stem.empty() || stem == "-" ? "file" : stem;
}

void keepIfSame(std::unordered_map<std::uint64_t, SiteLink>& links, std::uint64_t key, const SiteLink& link) {
  const auto [found, fresh] = links.try_emplace(key, link);
  if (!fresh && found->second.target != link.target) found->second.target = {};
}

} // namespace

int SiteFiles::take(const std::string& path) {
  const auto [found, fresh] = m_byPath.try_emplace(path, static_cast<int>(m_files.size()));
  if (!fresh) return found->second;
  SiteFile file;
  file.path = path;
  file.native = nativePathOf(m_base, path);
  if (const auto bytes = cobol::readBytes(file.native)) {
    file.readable = true;
    file.hash = cobol::contentHash(*bytes);
  }
  m_files.push_back(std::move(file));
  return found->second;
}

std::vector<int> SiteFiles::indexesOf(const StoreData& data) const {
  std::vector<int> indexes;
  for (const FileRecord& file : data.files) {
    const auto found = m_byPath.find(std::string(data.text(file.path)));
    indexes.push_back(found == m_byPath.end() ? -1 : found->second);
  }
  return indexes;
}

// Names and copybooks that stand in a file which is still as the analysis found it.
template<typename Take>
void SiteFiles::eachLink(const StoreData& data, const std::vector<int>& indexes, Take&& take) const {
  const auto current = [&](std::uint32_t file) {
    return file < indexes.size() && indexes[file] >= 0 && at(indexes[file]).hash == data.files[file].hash &&
           at(indexes[file]).readable;
  };
  for (const ConstructRecord& construct : data.constructs) {
    if (!leadsSomewhere(construct) || construct.declared.file >= indexes.size()) continue;
    const SiteTarget target{indexes[construct.declared.file], construct.declared.line};
    for (std::uint32_t i = 0; i < construct.instances; ++i) {
      const InstanceRecord& instance = data.instances[construct.firstInstance + i];
      if (!hasToken(instance)) continue;
      const auto link = [&](const PlaceRecord& place) {
        if (current(place.file)) take(place, SiteLink{place.line, place.column, place.length, target});
      };
      link(instance.place);
      for (const PlaceRecord& place : data.further(instance))
        link(place);
    }
  }
  for (const CopyRecord& copy : data.copies)
    if (copy.file >= 0 && static_cast<std::size_t>(copy.file) < indexes.size() && current(copy.place.file))
      take(copy.place, SiteLink{copy.place.line,
                                copy.place.column,
                                copy.place.length,
                                {indexes[static_cast<std::size_t>(copy.file)], 0}});
}

void SiteFiles::takeProgram(int program, const StoreData& data) {
  std::vector<int> indexes;
  for (std::size_t i = 0; i < data.files.size(); ++i) {
    const FileRecord& record = data.files[i];
    const int index = take(std::string(data.text(record.path)));
    indexes.push_back(index);
    SiteFile& file = at(index);
    if (!file.readable || file.hash != record.hash) file.changed = true;
    file.lines = std::max(file.lines, record.lines);
    file.format = static_cast<cobol::Format>(record.format);
    if (i == 0)
      file.program = program;
    else
      file.copiedBy.push_back(program);
  }
  for (const ConstructRecord& construct : data.constructs)
    if (construct.declared.file < indexes.size()) {
      SiteFile& file = at(indexes[construct.declared.file]);
      file.lines = std::max(file.lines, construct.declared.line);
    }
  eachLink(data, indexes, [&](const PlaceRecord& place, const SiteLink& link) {
    if (place.file > 0) keepIfSame(at(indexes[place.file]).links, placeKey(place), link);
  });
}

std::vector<SiteLink> SiteFiles::linksOf(const StoreData& data) const {
  std::unordered_map<std::uint64_t, SiteLink> links;
  eachLink(data, indexesOf(data), [&](const PlaceRecord& place, const SiteLink& link) {
    if (place.file == 0) keepIfSame(links, placeKey(place), link);
  });
  std::vector<SiteLink> result;
  for (const auto& [place, link] : links)
    if (link.target.file >= 0) result.push_back(link);
  return result;
}

// In the order of the paths, so that the same sources get the same pages.
void SiteFiles::nameAll() {
  std::vector<int> order(m_files.size());
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&](int a, int b) { return at(a).path < at(b).path; });
  std::unordered_set<std::string> taken;
  for (const int index : order) {
    const std::string stem = stemOf(at(index).path);
    std::string name = stem;
    for (int number = 2; !taken.insert(platform::lower(name)).second; ++number)
      name = fmt::format("{}-{}", stem, number);
    at(index).page = kFolder + name + ".html";
  }
}

const SiteFile* SiteFiles::find(const std::string& path) const {
  const auto found = m_byPath.find(path);
  return found == m_byPath.end() ? nullptr : &at(found->second);
}

} // namespace orvane
