#include "tarnsift/options/upgrade.hpp"

#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/session/host.hpp"

namespace tarnsift {

namespace {

using platform::Document;
using platform::Node;

// What stood right below the root in the older shape.
struct KeptNodes {
  Node positiveFilters, nameNegative;
  std::string applySelected, overrideStatus, viewAllRedefines;
};

// A node that is missing is an error of the document.
Node takeOut(Node root, const char* path) {
  const Node node = root.selectSingleNode(path);
  const Node kept = node.cloneNode(true);
  root.removeChild(node);
  return kept;
}

KeptNodes takeOutOldNodes(const Node& root) {
  KeptNodes kept;
  kept.positiveFilters = takeOut(root, "./GROUP[@NAME='PositiveFilters']");
  kept.nameNegative = takeOut(root, "./STRINGS[@NAME='NameNegative']");
  kept.applySelected = takeOut(root, "./BOOL[@NAME='ApplySelected']").getAttribute("VALUE").asText();
  kept.overrideStatus = takeOut(root, "./BOOL[@NAME='OverrideStatus']").getAttribute("VALUE").asText();
  kept.viewAllRedefines = takeOut(root, "./BOOL[@NAME='ViewAllRedefines']").getAttribute("VALUE").asText();
  return kept;
}

/// Makes the elements of the new branch.
class Branch {
 public:
  explicit Branch(Document& document) : m_document(document) {}

  Node group(Node parent, const char* element, const char* name, const char* caption) {
    Node node = m_document.createElement(element);
    node.setAttribute("NAME", name);
    node.setAttribute("CAPTION", caption);
    return parent.appendChild(node);
  }
  Node list(Node parent, const char* name, const char* caption, const char* type, const char* display,
            const char* value) {
    Node node = m_document.createElement("LIST");
    node.setAttribute("NAME", name);
    node.setAttribute("CAPTION", caption);
    node.setAttribute("TYPE", type);
    node.setAttribute("DISPLAY", display);
    node.setAttribute("VALUE", value);
    return parent.appendChild(node);
  }
  void option(Node parent, const char* name, const char* caption, const std::string& value) {
    Node node = group(parent, "BOOL", name, caption);
    node.setAttribute("VALUE", value);
  }

 private:
  Document& m_document;
};

void buildPages(Document& document, const Node& root, const KeptNodes& kept) {
  Branch branch(document);
  const Node pages = branch.list(root, "Pages", "", "select", "page", "Filters");
  const Node filters = branch.group(pages, "CASE", "Filters", "Filters");
  const Node types = branch.list(filters, "FilterTypes", "Search Filters", "data", "combo", "Patterns");
  Node patterns = branch.group(types, "CASE", "Patterns", "Patterns");
  patterns.appendChild(kept.positiveFilters);
  patterns.appendChild(kept.nameNegative);
  const Node parameters = branch.group(pages, "CASE", "Parameters", "Parameters");
  const Node search = branch.group(parameters, "GROUP", "Search", "Search");
  branch.option(search, "ApplySelected", "Apply to selected programs", kept.applySelected);
  branch.option(search, "OverrideStatus", "Override status", kept.overrideStatus);
  branch.option(search, "RefreshLists", "Refresh lists (for pattern filters only)", "false");
  branch.option(parameters, "ViewAllRedefines", "View all redefinitions in synonyms pane", kept.viewAllRedefines);
  branch.option(parameters, "ShowUnused", "Show unused datanames in Affected Code Report", "false");
}

// False when there is nothing to do, which ends the run.
bool upgradeFile(const std::string& file) {
  Document document = Document::load(file);
  const Node root = document.selectSingleNode("//CASE[@ID='Tarnsift']");
  if (!root || root.selectSingleNode("./LIST[@NAME='Pages']")) return false;
  buildPages(document, root, takeOutOldNodes(root));
  document.save(file);
  return true;
}

std::string optionFileOf(Repository& repository, RepositoryObject& project) {
  const std::string folder = theFileProbe().SplitPath(repository.FilePath()).first;
  return platform::nativePath(folder + "\\Projects\\" + project.Attribute("NAME").asText() + "\\Options.Project.xml");
}

} // namespace

bool UprgadeOptions::Upgrade(const Value&) {
  platform::ignoring([] {
    const Ref<Repository> repository = theRepositoryAccess().Repository();
    for (auto projects = repository->SelectObjects("FOLDER", "", ""); !projects->AtEnd(); projects->MoveNext())
      if (!upgradeFile(optionFileOf(*repository, *projects->Current()))) return;
  });
  return true;
}

Value UprgadeOptions::Invoke(std::string_view member, std::span<Value> arguments) {
  if (!platform::equalsIgnoringCase(member, "Upgrade")) return Object::Invoke(member, arguments);
  return Upgrade(arguments.empty() ? Value() : arguments[0]);
}

} // namespace tarnsift
