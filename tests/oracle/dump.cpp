// Prints what the analyser knows of COBOL sources as JSON lines, for the comparison with another compiler.
//   cobol_dump [--gnu-layout] [-I folder]… source…
// Per source one line {"unit", "files", "copies"}, then one line per construct with its usages.
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>

#include "cobol/analyse.hpp"

namespace {

using Json = nlohmann::json;
using cobol::Analysis;
using cobol::Construct;
using cobol::Kind;

const char* kindWord(Kind kind) {
  static constexpr const char* kWords[] = {"group",     "elementary", "filler",    "renames",
                                           "condition", "switch",     "constant",  "index",
                                           "register",  "call slot",  "file slot", "undeclared"};
  return kWords[static_cast<std::size_t>(kind)];
}

const char* formatWord(cobol::Format format) {
  static constexpr const char* kWords[] = {"fixed", "variable", "free"};
  return kWords[static_cast<std::size_t>(format)];
}

// The names from the level 01 down, without nameless groups and without the file.
std::string pathOf(const Analysis& analysis, const Construct& item) {
  std::string path = item.name;
  for (int up = item.parent; up >= 0; up = analysis.constructs[static_cast<std::size_t>(up)].parent) {
    const Construct& outer = analysis.constructs[static_cast<std::size_t>(up)];
    if (outer.kind != Kind::filler) path.insert(0, outer.name + ".");
  }
  return path;
}

Json dumpOf(const Analysis& analysis, const Construct& item) {
  Json line = {{"name", item.name},
               {"path", pathOf(analysis, item)},
               {"program", analysis.programs[static_cast<std::size_t>(item.program)].name},
               {"kvid", item.kvid},
               {"kind", kindWord(item.kind)},
               {"level", item.level},
               {"section", static_cast<int>(item.section)},
               {"group", item.isGroup()},
               {"size", item.size},
               {"length", item.length},
               {"occurs", item.occurs},
               {"repeats", item.repeats},
               {"dims", item.dims},
               {"picture", item.picture},
               {"usage", item.usage},
               {"file", item.declared.file},
               {"line", item.declared.line},
               {"offset", item.offset},
               {"position", item.position},
               {"area", item.area},
               {"flags", item.flags}};
  line["references"] = Json::array();
  return line;
}

void dump(const std::string& path, const cobol::Options& options, cobol::CopyLibrary& library) {
  const Analysis analysis = cobol::analyse(path, options, library);
  Json head = {{"unit", path}, {"statements", analysis.statements}, {"understood", analysis.statementsUnderstood}};
  head["files"] = Json::array();
  for (const auto& file : analysis.files)
    head["files"].push_back({{"path", file.path}, {"format", formatWord(file.format)}});
  head["diagnostics"] = Json::array();
  for (const auto& one : analysis.diagnostics) {
    head["diagnostics"].push_back({one.at.file, one.at.line, std::string(cobol::nameOf(one.code)), one.text});
  }
  std::cout << head.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';

  std::vector<Json> lines;
  lines.reserve(analysis.constructs.size());
  for (const Construct& item : analysis.constructs)
    lines.push_back(dumpOf(analysis, item));
  for (const cobol::Instance& use : analysis.instances) {
    lines[use.construct]["references"].push_back(
        {use.at.file, use.at.line, use.at.column, std::string(1, static_cast<char>(use.access)), use.verb});
  }
  for (const Json& line : lines)
    std::cout << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace

int main(int count, char** words) {
  cobol::Options options;
  std::vector<std::string> sources;
  for (int at = 1; at < count; ++at) {
    const std::string word = words[at];
    if (word == "--gnu-layout") {
      options.sync = cobol::SyncRule::natural;
      options.pointerBytes = 8;
      options.comp5Small = true;
    } else if (word == "-I" && at + 1 < count) {
      options.copybookFolders.push_back(words[++at]);
    } else {
      sources.push_back(word);
    }
  }
  if (sources.empty()) {
    std::cerr << "cobol_dump [--gnu-layout] [-I folder]... source...\n";
    return 2;
  }
  cobol::CopyLibrary library(options.copybookFolders, options.copyExtensions);
  for (const std::string& source : sources)
    dump(source, options, library);
  return 0;
}
