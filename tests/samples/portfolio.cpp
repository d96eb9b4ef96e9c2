#include "samples/portfolio.hpp"

#include <fstream>
#include <iterator>
#include <set>

namespace samples {
namespace {

std::string placeOf(const cobol::Position& at) {
  return std::to_string(at.file) + "/" + std::to_string(at.line) + ":" + std::to_string(at.column) + "+" +
         std::to_string(at.length);
}

std::string nameOf(const cobol::Relationship& relation) {
  return std::string(cobol::relationKinds()[static_cast<std::size_t>(relation.kind)].name);
}

void checkRanges(const cobol::Analysis& analysis, std::vector<std::string>& faults) {
  struct Range {
    std::int64_t from, to;
  };
  std::map<int, Range> areas;
  std::set<std::int64_t> placeless;
  for (const cobol::Construct& item : analysis.constructs) {
    if (item.area < 0) { // can meet nothing, not even another one without storage
      if (item.size != 0 || item.offset >= 0 || !placeless.insert(item.offset).second)
        faults.push_back(item.kvid + " has a place without storage");
      continue;
    }
    const Range own{item.offset, item.offset + item.size};
    const auto [area, isNew] = areas.try_emplace(item.area, own);
    if (!isNew) area->second = {std::min(area->second.from, own.from), std::max(area->second.to, own.to)};
    if (item.parent < 0) continue;
    const cobol::Construct& parent = analysis.constructs[static_cast<std::size_t>(item.parent)];
    if (own.from < parent.offset || own.to > parent.offset + parent.length)
      faults.push_back(item.kvid + " lies outside " + parent.kvid);
  }
  std::vector<Range> ranges;
  for (const auto& [area, range] : areas)
    ranges.push_back(range);
  std::sort(ranges.begin(), ranges.end(), [](const Range& a, const Range& b) { return a.from < b.from; });
  for (std::size_t i = 1; i < ranges.size(); ++i) {
    if (ranges[i].from < ranges[i - 1].to) faults.push_back("areas touch at " + std::to_string(ranges[i].from));
  }
}

} // namespace

std::filesystem::path bankFolder() {
  return std::filesystem::path(TARNSIFT_SOURCE_DIR) / "samples" / "bank";
}

std::vector<std::string> programNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(bankFolder() / "cobol"))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

std::string textOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

std::map<std::string, std::string> copybookTexts() {
  std::map<std::string, std::string> texts;
  for (const auto& entry : std::filesystem::directory_iterator(bankFolder() / "copy"))
    texts[entry.path().stem().string()] = textOf(entry.path());
  return texts;
}

cobol::Analysis analysed(const std::filesystem::path& bank, const std::string& program) {
  cobol::CopyLibrary library(std::vector<std::string>{(bank / "copy").string()});
  return cobol::analyse((bank / "cobol" / program).string(), {}, library);
}

cobol::Analysis analysed(const std::string& program) {
  return analysed(bankFolder(), program);
}

std::vector<std::string> linesOf(const cobol::Analysis& analysis) {
  std::vector<std::string> lines;
  for (const cobol::SourceFile& file : analysis.files)
    lines.push_back(file.path + " " + std::to_string(file.hash) + " " + std::to_string(file.lines));
  for (const cobol::Construct& item : analysis.constructs) {
    lines.push_back(item.kvid + " " + std::to_string(item.level) + " " + std::to_string(item.offset) + " " +
                    std::to_string(item.size) + " " + item.dims + " " + item.picture + " " + item.usage + " " +
                    item.value + " " + std::to_string(item.flags) + " " + placeOf(item.declared));
  }
  for (const cobol::Relationship& relation : analysis.relationships) {
    std::string line = nameOf(relation) + " " + std::to_string(relation.from) + " " + std::to_string(relation.to);
    for (const cobol::Position& site : analysis.sitesOf(relation))
      line += " " + placeOf(site);
    lines.push_back(line);
  }
  for (const cobol::Instance& use : analysis.instances)
    lines.push_back(std::to_string(use.construct) + " " + static_cast<char>(use.access) + " " + placeOf(use.at));
  for (const cobol::NamedPlace& place : analysis.places)
    lines.push_back(place.kindWord + " " + place.name + " " + placeOf(place.at));
  for (const cobol::Diagnostic& diagnostic : analysis.diagnostics)
    lines.push_back(std::string(cobol::nameOf(diagnostic.code)) + " " + placeOf(diagnostic.at) + diagnostic.text);
  return lines;
}

std::vector<std::string> faultsOf(const cobol::Analysis& analysis) {
  std::vector<std::string> faults;
  std::set<std::string> keys;
  for (const cobol::Construct& item : analysis.constructs) {
    if (!keys.insert(item.kvid).second) faults.push_back(item.kvid + " is not unique");
  }
  checkRanges(analysis, faults);
  const std::size_t count = analysis.constructs.size();
  for (const cobol::Relationship& relation : analysis.relationships) {
    if (relation.from >= count || relation.to >= count) faults.push_back("a " + nameOf(relation) + " ends nowhere");
    if (relation.from == relation.to) faults.push_back("a " + nameOf(relation) + " ends where it starts");
    if (analysis.sitesOf(relation).empty()) faults.push_back("a " + nameOf(relation) + " stands nowhere");
  }
  for (const cobol::Instance& use : analysis.instances) {
    if (use.construct >= count || use.at.file >= analysis.files.size()) {
      faults.push_back("a usage of nothing at " + placeOf(use.at));
    } else if (use.at.line == 0 || use.at.line > analysis.files[use.at.file].lines) {
      faults.push_back("no such line: " + placeOf(use.at));
    }
  }
  return faults;
}

} // namespace samples
