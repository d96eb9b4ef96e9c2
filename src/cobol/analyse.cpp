#include "cobol/analyse.hpp"

#include "cobol/characters.hpp"

#include "cobol/data_division.hpp"
#include "cobol/declared_relations.hpp"
#include "cobol/kvid.hpp"
#include "cobol/layout.hpp"
#include "cobol/overlay.hpp"
#include "cobol/procedure.hpp"
#include "cobol/source.hpp"

namespace cobol {
namespace {

// Legal as long as nothing uses the name; a copybook that is copied twice is the usual reason.
void remarkDuplicates(const Analysis& analysis, const std::vector<std::uint32_t>& repeated, Diagnostics& diagnostics) {
  for (const auto index : repeated) {
    const Construct& item = analysis.constructs[index];
    if (item.level == 0 || item.kind == Kind::filler || (item.flags & implicit_) != 0) continue;
    diagnostics.add(Code::NameDuplicate, Severity::information, item.declared,
                    std::string(item.name) + " is declared more than once at the same place; the keys tell them apart");
  }
}

// The stages in their order: statements need the places of items, keys need every construct that statements make.
Analysis analyseTokens(TokenStream stream, Options options, Diagnostics diagnostics) {
  if (stream.pointerBytes != 0) options.pointerBytes = stream.pointerBytes;
  Analysis analysis;
  analysis.texts = stream.names.texts();
  readData(stream, options, analysis, diagnostics);
  layOut(analysis, options, diagnostics);
  addDeclaredRelations(analysis);
  addOverlays(analysis, diagnostics);
  readProcedures(stream, options, analysis, diagnostics);
  layOutWithoutStorage(analysis, options);
  remarkDuplicates(analysis, nameConstructs(analysis), diagnostics);
  for (const CopyUse& copy : stream.copies)
    analysis.places.push_back({"COPY", analysis.texts->keep(upper(copy.name)), copy.at});
  analysis.files = std::move(stream.files);
  analysis.copies = std::move(stream.copies);
  analysis.further = std::move(stream.further);
  analysis.diagnostics = diagnostics.take();
  return analysis;
}

} // namespace

Analysis analyse(const std::string& path, const Options& options, CopyLibrary& library) {
  Diagnostics diagnostics;
  TokenStream stream = readTokens(path, options, library, diagnostics);
  return analyseTokens(std::move(stream), options, std::move(diagnostics));
}

Analysis analyse(std::string_view text, const Options& options, const std::map<std::string, std::string>& copybooks) {
  Diagnostics diagnostics;
  TokenStream stream = readTokens(text, options, copybooks, diagnostics);
  return analyseTokens(std::move(stream), options, std::move(diagnostics));
}

} // namespace cobol
