#include "orvane/options.hpp"

#include <fmt/format.h>

#include "cobol/analysis.hpp"
#include "orvane/columns.hpp"
#include "orvane/product.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

using platform::Document;
using platform::Node;
using platform::Value;

constexpr const char* kRoot = "//CASE[@ID='Tarnsift']";
constexpr const char* kAnalysis = "//CASE[@ID='Kelvane']";

// Where earlier documents kept a value, and where a session reads it. Paths from the root of the component's branch.
struct Move {
  const char* from;
  const char* to;
};
constexpr Move kMoves[] = {
    {"./LIST[@NAME='Pages']/CASE[@NAME='Parameters']/GROUP[@NAME='Search']/BOOL[@NAME='ApplySelected']",
     "./BOOL[@NAME='ApplySelected']"},
    {"./LIST[@NAME='Pages']/CASE[@NAME='Parameters']/BOOL[@NAME='ViewAllRedefines']",
     "./GROUP[@NAME='Synonyms']/BOOL[@NAME='Redefines']/BOOL[@NAME='ViewAllRedefines']"},
    {"./LIST[@NAME='Pages']/CASE[@NAME='Parameters']/BOOL[@NAME='ShowUnused']",
     "./GROUP[@NAME='AffectedCodeReport']/BOOL[@NAME='ShowUnused']"},
    {"./BOOL[@NAME='OverrideStatus']",
     "./LIST[@NAME='Pages']/CASE[@NAME='Parameters']/GROUP[@NAME='Search']/BOOL[@NAME='OverrideStatus']"},
    {"./BOOL[@NAME='ViewAllRedefines']",
     "./GROUP[@NAME='Synonyms']/BOOL[@NAME='Redefines']/BOOL[@NAME='ViewAllRedefines']"},
    {"./GROUP[@NAME='PositiveFilters']", "./LIST[@NAME='Pages']/CASE[@NAME='Filters']/LIST[@NAME='FilterTypes']/"
                                         "CASE[@NAME='Patterns']/GROUP[@NAME='PositiveFilters']"},
    {"./STRINGS[@NAME='NameNegative']", "./LIST[@NAME='Pages']/CASE[@NAME='Filters']/LIST[@NAME='FilterTypes']/"
                                        "CASE[@NAME='Patterns']/STRINGS[@NAME='NameNegative']"},
};

void addTicked(Document& document, Node list, const std::string& name, bool ticked) {
  Node entry = document.createElement("CASE");
  entry.setAttribute("NAME", name);
  entry.setAttribute("CAPTION", name);
  entry.setAttribute("CHECKED", ticked ? "true" : "false");
  list.appendChild(entry);
}

// A component's branch is found by its id, everything else by its name.
bool sameOption(const Node& a, const Node& b) {
  const char* key = a.getAttribute("ID").isNull() && b.getAttribute("ID").isNull() ? "NAME" : "ID";
  return a.name() == b.name() && a.getAttribute(key) == b.getAttribute(key);
}

Node childLike(const Node& parent, const Node& pattern) {
  for (Node child = parent.firstChild(); child; child = child.nextSibling())
    if (sameOption(child, pattern)) return child;
  return {};
}

// Missing children go behind the sibling that stands before them in the template, so document order stays the
// template's where it matters.
void addMissing(Document& document, const Node& into, const Node& from) {
  for (const auto& attribute : from.attributeNames())
    if (into.getAttribute(attribute).isNull())
      Node(into).setAttribute(attribute, from.getAttribute(attribute).asText());
  Node previous;
  for (Node child = from.firstChild(); child; child = child.nextSibling()) {
    Node present = childLike(into, child);
    if (present) {
      addMissing(document, present, child);
    } else {
      const Node before = previous ? previous.nextSibling() : into.firstChild();
      present = Node(into).insertBefore(document.importNode(child), before);
    }
    previous = present;
  }
}

// The kept value takes the place of the template's; the earlier node goes.
void moveValue(const Node& root, const Move& move) {
  Node from = root.selectSingleNode(move.from);
  const Node to = root.selectSingleNode(move.to);
  if (!from || !to) return;
  if (from.name() == "BOOL") {
    Node(to).setAttribute("VALUE", from.getAttribute("VALUE").asText());
    from.parent().removeChild(from);
  } else {
    Node place = to.parent();
    place.insertBefore(from, to);
    place.removeChild(to);
  }
}

// The moves whose value has no other place yet. A switch that the upgrade put on a page although its place held a value
// already is read by nobody: it goes.
std::vector<const Move*> movesOf(const Node& root) {
  std::vector<const Move*> pending;
  for (const Move& move : kMoves) {
    const Node from = root.selectSingleNode(move.from);
    if (!from) continue;
    if (!root.selectSingleNode(move.to))
      pending.push_back(&move);
    else if (std::string_view(move.from).starts_with("./LIST"))
      from.parent().removeChild(from);
  }
  return pending;
}

// The filter's OverrideStatus is the first of that name; the upgrade appends its pages behind the synonym search's.
void putPagesFirst(const Node& root) {
  const Node pages = root.selectSingleNode("./LIST[@NAME='Pages']");
  const Node synonymSearch = root.selectSingleNode("./GROUP[@NAME='SynonymSearch']");
  for (Node later = synonymSearch; later; later = later.nextSibling())
    if (later == pages) {
      Node(root).insertBefore(pages, synonymSearch);
      return;
    }
}

Node analysisGroup(const Document& document) {
  return document.selectSingleNode(std::string(kAnalysis) + "/GROUP[@NAME='Analysis']");
}

std::string analysisValue(const Document& document, const std::string& name) {
  const Node node = analysisGroup(document).selectSingleNode("./*[@NAME='" + name + "']");
  return node ? node.getAttribute("VALUE").asText() : "";
}

template<typename T>
using Words = std::vector<std::pair<std::string_view, T>>;

const Words<cobol::Dialect> kDialects = {
    {"ibm", cobol::Dialect::ibm}, {"gnu", cobol::Dialect::gnu}, {"mf", cobol::Dialect::mf}};
const Words<cobol::FormatChoice> kFormats = {{"detect", cobol::FormatChoice::detect},
                                             {"fixed", cobol::FormatChoice::fixed},
                                             {"variable", cobol::FormatChoice::variable},
                                             {"free", cobol::FormatChoice::free}};
const Words<cobol::DebugLines> kDebugLines = {
    {"auto", cobol::DebugLines::automatic}, {"code", cobol::DebugLines::code}, {"comment", cobol::DebugLines::comment}};

template<typename T>
T wordValue(const Words<T>& words, std::string_view text) {
  for (const auto& [word, value] : words)
    if (platform::equalsIgnoringCase(word, text)) return value;
  return words.front().second;
}

template<typename T>
std::vector<std::string> allWords(const Words<T>& words) {
  std::vector<std::string> all;
  for (const auto& [word, value] : words)
    all.emplace_back(word);
  return all;
}

// The values that an option takes; empty: any.
std::vector<std::string> knownValues(const std::string& name) {
  if (name == "dialect") return allWords(kDialects);
  if (name == "format") return allWords(kFormats);
  if (name == "debugLines") return allWords(kDebugLines);
  if (name == "allBranches") return {"true", "false"};
  if (name == "encoding") return {"auto", "UTF-8", "ISO-8859-1"};
  return {};
}

} // namespace

Document optionTemplate() {
  Document document = Document::load(productFolder() + "/Options.Template.xml");
  const Node high = document.selectSingleNode("//LIST[@NAME='HighAffinityRels']");
  const Node low = document.selectSingleNode("//LIST[@NAME='LowAffinityRels']");
  for (const auto& kind : cobol::relationKinds())
    addTicked(document, kind.affinity == cobol::Affinity::high ? high : low, std::string(kind.name), true);
  const Node columns = document.selectSingleNode("//CASE[@NAME='COBOL']/LIST[@NAME='Columns']");
  for (const auto& column : analysisColumns())
    addTicked(document, columns, std::string(column.name), false);
  return document;
}

void mergeOntoTemplate(Document& document) {
  const Document model = optionTemplate();
  if (!document.documentElement()) document.setDocumentElement(document.createElement("OPTIONS"));
  // Documents of earlier versions lack a place only for values that the moves bring in from elsewhere.
  std::vector<const Move*> pending;
  if (const Node root = document.selectSingleNode(kRoot)) pending = movesOf(root);
  addMissing(document, document.documentElement(), model.documentElement());
  const Node merged = document.selectSingleNode(kRoot);
  for (const Move* move : pending)
    moveValue(merged, *move);
  // What was moved takes the template's nodes below it.
  if (!pending.empty()) addMissing(document, document.documentElement(), model.documentElement());
  putPagesFirst(merged);
}

std::string optionFile(const std::string& projectFolder) {
  return projectFolder + "/Options.Project.xml";
}

OptionDocument::OptionDocument(std::string file) : m_file(std::move(file)) {
  if (platform::fileExists(m_file)) {
    try {
      m_document = Document::load(m_file);
    } catch (const platform::XmlError& error) {
      throw platform::Error(
          fmt::format("{}: the option document is damaged: {}; mend it, or remove it to start from the defaults",
                      m_file, error.what()));
    }
  }
  mergeOntoTemplate(m_document);
}

void OptionDocument::ShowDialog(const std::string& path, platform::Form&, const std::string&, int, int, bool& result) {
  if (!dialog) throw platform::Error("there is no screen to show the options on");
  result = dialog(m_document, path);
  if (!result) return;
  Save();
  FLO_Saved.raise();
}

std::string OptionDocument::savedText() {
  for (auto& changed : m_overrides)
    changed.node.setAttribute("VALUE", changed.kept);
  std::string text = m_document.text();
  for (auto& changed : m_overrides)
    changed.node.setAttribute("VALUE", changed.value);
  return text;
}

void OptionDocument::Save() {
  platform::WriteFileAtomically(m_file, savedText());
}

void OptionDocument::overrideForSession(const std::string& path, const std::string& value) {
  Node node = m_document.selectSingleNode(path);
  if (!node) throw platform::Error("there is no option " + path);
  m_overrides.push_back({node, node.getAttribute("VALUE").asText(), value});
  node.setAttribute("VALUE", value);
}

cobol::Options analyserOptions(const Document& document) {
  cobol::Options options;
  options.format = wordValue(kFormats, analysisValue(document, "format"));
  options.debugLines = wordValue(kDebugLines, analysisValue(document, "debugLines"));
  if (const std::string encoding = analysisValue(document, "encoding"); !encoding.empty()) options.encoding = encoding;
  if (const std::string ebcdic = analysisValue(document, "ebcdic"); !ebcdic.empty()) options.ebcdic = ebcdic;
  options.allBranches = analysisValue(document, "allBranches") == "true";
  options.copybookFolders = analysisStrings(document, "CopybookFolders");
  return cobol::withDialect(options, wordValue(kDialects, analysisValue(document, "dialect")));
}

void setAnalyserOption(Document& document, const std::string& name, const std::string& value) {
  std::vector<std::string> names;
  for (Node node = analysisGroup(document).firstChild(); node; node = node.nextSibling()) {
    const std::string known = node.getAttribute("NAME").asText();
    names.push_back(known);
    if (!platform::equalsIgnoringCase(known, name)) continue;
    const auto values = knownValues(known);
    const auto found = std::find_if(values.begin(), values.end(),
                                    [&](const auto& v) { return platform::equalsIgnoringCase(v, value); });
    if (!values.empty() && found == values.end())
      throw platform::Error(
          fmt::format("the option {} takes {}, not '{}'", known, platform::joined(values, ", "), value));
    node.setAttribute("VALUE", values.empty() ? value : *found);
    return;
  }
  throw platform::Error(fmt::format("there is no option '{}'; known are {}", name, platform::joined(names, ", ")));
}

std::vector<std::string> analysisStrings(const Document& document, const std::string& name) {
  std::vector<std::string> texts;
  const Node list = document.selectSingleNode(std::string(kAnalysis) + "/STRINGS[@NAME='" + name + "']");
  if (!list) return texts;
  for (Node entry = list.firstChild(); entry; entry = entry.nextSibling())
    texts.push_back(entry.getAttribute("VALUE").asText());
  return texts;
}

void setAnalysisStrings(Document& document, const std::string& name, const std::vector<std::string>& texts) {
  Node list = document.selectSingleNode(std::string(kAnalysis) + "/STRINGS[@NAME='" + name + "']");
  while (Node entry = list.firstChild())
    list.removeChild(entry);
  for (const auto& text : texts) {
    Node entry = document.createElement("STRING");
    entry.setAttribute("VALUE", text);
    entry.setAttribute("CHECKED", "true");
    list.appendChild(entry);
  }
}

} // namespace orvane
