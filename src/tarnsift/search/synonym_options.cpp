#include "tarnsift/search/synonym_options.hpp"

#include "tarnsift/session/globals.hpp"

namespace tarnsift {

namespace {

bool isOn(const platform::Node& option) {
  return option && option.getAttribute("VALUE") == Value("true");
}

void appendRelations(std::string& relations, const platform::Node& affinity, const std::string& listPath) {
  if (!isOn(affinity)) return;
  const platform::Node list = affinity.selectSingleNode(listPath);
  if (!list) return;
  for (platform::Node kind = list.firstChild(); kind; kind = kind.nextSibling()) {
    if (kind.getAttribute("CHECKED") != Value("true")) continue;
    if (!relations.empty()) relations += ", ";
    relations += "'" + kind.getAttribute("NAME").asText() + "'";
  }
}

} // namespace

void ReadSynonymOptions(frmMain& window) {
  const platform::Node& root = globals().OptionsRoot;
  window.SynonymRelations.clear();
  appendRelations(window.SynonymRelations,
                  root.selectSingleNode("./GROUP[@NAME='Synonyms']/BOOL[@NAME='HighAffinity']"),
                  "./LIST[@NAME='HighAffinityRels']");
  appendRelations(window.SynonymRelations, root.selectSingleNode("./GROUP[@NAME='Synonyms']/BOOL[@NAME='LowAffinity']"),
                  "./LIST[@NAME='LowAffinityRels']");
  const platform::Node redefines = root.selectSingleNode("./GROUP[@NAME='Synonyms']/BOOL[@NAME='Redefines']");
  window.ShowRedefines = isOn(redefines);
  window.ViewAllRedefines = redefines && isOn(redefines.selectSingleNode("./BOOL[@NAME='ViewAllRedefines']"));
}

} // namespace tarnsift
