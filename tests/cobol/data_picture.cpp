#include "cobol/data_picture.hpp"

#include "cobol/data_division.hpp"
#include "cobol/declared_relations.hpp"
#include "cobol/kvid.hpp"
#include "cobol/layout.hpp"
#include "cobol/overlay.hpp"
#include "cobol/source.hpp"

namespace cobol_test {

std::string fixedForm(std::string_view lines) {
  std::string result;
  while (!lines.empty()) {
    const auto end = lines.find('\n');
    const auto line = lines.substr(0, end);
    if (!line.empty()) result += "       " + std::string(line);
    result += '\n';
    lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
  }
  return result;
}

std::string workingStorage(std::string_view lines) {
  return fixedForm("IDENTIFICATION DIVISION.\nPROGRAM-ID. P.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n" +
                   std::string(lines) + "\nPROCEDURE DIVISION.\n    STOP RUN.\n");
}

DataRun readAndLayOut(const std::string& source, const cobol::Options& options,
                      const std::map<std::string, std::string>& copybooks) {
  DataRun run;
  cobol::Diagnostics diagnostics;
  const auto stream = cobol::readTokens(source, options, copybooks, diagnostics);
  run.analysis.texts = stream.names.texts();
  cobol::readData(stream, options, run.analysis, diagnostics);
  cobol::layOut(run.analysis, options, diagnostics);
  cobol::addDeclaredRelations(run.analysis);
  cobol::addOverlays(run.analysis, diagnostics);
  cobol::nameConstructs(run.analysis);
  run.diagnostics = diagnostics.all();
  return run;
}

std::string picture(const DataRun& run) {
  static constexpr std::string_view kLetters = "GEYJBDMUR";
  std::string text;
  for (const auto& item : run.analysis.constructs) {
    text += (item.level < 10 ? "0" : "") + std::to_string(item.level) + ' ' + item.name;
    if (item.hasStorage()) {
      text += " @" + std::to_string(item.offset - item.position) + '+' + std::to_string(item.position) + " len " +
              std::to_string(item.length);
      if (item.repeats) text += " x" + std::to_string(item.occurs);
    } else {
      text += " @" + std::to_string(item.offset);
    }
    if (!item.picture.empty()) text += " PIC " + item.picture;
    if (!item.usage.empty()) text += ' ' + item.usage;
    if (!item.value.empty()) text += " = " + item.value;
    if (!item.dims.empty()) text += " dims " + item.dims;
    std::string flags;
    for (std::size_t bit = 0; bit < kLetters.size(); ++bit)
      if ((item.flags >> bit & 1) != 0) flags += kLetters[bit];
    if (!flags.empty()) text += " flags " + flags;
    text += '\n';
  }
  return text;
}

std::string layoutOf(std::string_view lines, const cobol::Options& options) {
  return picture(readAndLayOut(workingStorage(lines), options));
}

std::string relationsOf(const DataRun& run) {
  static const std::map<cobol::RelationKind, std::string> kNames = {{cobol::RelationKind::Condition, "Condition"},
                                                                    {cobol::RelationKind::Redefinition, "Redefinition"},
                                                                    {cobol::RelationKind::Renaming, "Renaming"},
                                                                    {cobol::RelationKind::Index, "Index"},
                                                                    {cobol::RelationKind::Overlay, "Overlay"}};
  std::string text;
  for (const auto& relation : run.analysis.relationships) {
    const auto& site = run.analysis.sites.at(relation.firstSite);
    text += run.analysis.constructs[relation.from].name + ' ' + kNames.at(relation.kind) + ' ' +
            run.analysis.constructs[relation.to].name + " <" + std::to_string(site.line) + ':' +
            std::to_string(site.column) + ">\n";
  }
  return text;
}

std::string diagnosticsOf(const DataRun& run) {
  std::string text;
  for (const auto& diagnostic : run.diagnostics)
    text += std::string(cobol::nameOf(diagnostic.code)) + ' ' + std::to_string(diagnostic.at.line) + '\n';
  return text;
}

} // namespace cobol_test
