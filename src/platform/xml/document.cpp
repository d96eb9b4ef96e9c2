#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/xml/document_data.hpp"

namespace platform {

namespace {

const xmlChar* bytes(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

/// Take the place of printing what is wrong with an XPath.
void quiet(void*, xmlErrorPtr) {}
void quietText(void*, const char*, ...) {}

} // namespace

DocumentData::~DocumentData() {
  for (xmlNode* node : m_loose)
    xmlFreeNode(node); // before the document, whose dictionary holds their names
  if (m_document != nullptr) xmlFreeDoc(m_document);
}

_xmlDoc* DocumentData::handOver() {
  return std::exchange(m_document, nullptr);
}

Node DocumentData::wrap(_xmlNode* node) {
  return node == nullptr ? Node() : Node(shared_from_this(), node);
}

Node DocumentData::newElement(const std::string& name) {
  requireXmlName(name);
  xmlNode* node = xmlNewDocNode(m_document, nullptr, bytes(name), nullptr);
  becameLoose(node);
  return wrap(node);
}

Node DocumentData::copyOf(_xmlNode* node, bool deep) {
  constexpr int kAllBelow = 1;
  constexpr int kAttributesOnly = 2;
  xmlNode* copy = xmlDocCopyNode(node, m_document, deep ? kAllBelow : kAttributesOnly);
  if (copy == nullptr) throw XmlError("out of memory", 0, 0);
  becameLoose(copy);
  return wrap(copy);
}

std::vector<Node> DocumentData::select(_xmlNode* context, const std::string& xpath, bool first) {
  const std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContextPtr)> evaluation(xmlXPathNewContext(m_document),
                                                                                  &xmlXPathFreeContext);
  evaluation->node = context;
  evaluation->error = &quiet;
  xmlSetGenericErrorFunc(nullptr, &quietText); // of this thread
  const std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObjectPtr)> result(
      xmlXPathEval(bytes(xpath), evaluation.get()), &xmlXPathFreeObject);
  if (!result) throw XmlError("not an XPath: " + xpath, 0, 0);
  if (result->type != XPATH_NODESET) throw XmlError("an XPath selects no elements: " + xpath, 0, 0);
  std::vector<Node> nodes;
  xmlXPathNodeSetSort(result->nodesetval);
  const int count = result->nodesetval == nullptr ? 0 : result->nodesetval->nodeNr;
  for (int i = 0; i < count && !(first && !nodes.empty()); ++i) {
    xmlNode* node = result->nodesetval->nodeTab[i];
    if (node->type != XML_ELEMENT_NODE)
      throw XmlError("an XPath selects something other than elements: " + xpath, 0, 0);
    nodes.push_back(wrap(node));
  }
  return nodes;
}

Document::Document() : m_data(std::make_shared<DocumentData>(xmlNewDoc(bytes("1.0")))) {}

std::string Document::text() const {
  xmlChar* buffer = nullptr;
  int size = 0;
  constexpr int kIndented = 1;
  xmlDocDumpFormatMemoryEnc(m_data->document(), &buffer, &size, "UTF-8", kIndented);
  const std::unique_ptr<xmlChar, void (*)(void*)> owner(buffer, xmlFree);
  if (!owner) throw XmlError("the document cannot be written", 0, 0);
  return std::string(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(size));
}

void Document::save(const std::string& path) const {
  WriteFileAtomically(path, text());
}

Node Document::documentElement() const {
  return m_data->wrap(xmlDocGetRootElement(m_data->document()));
}

void Document::setDocumentElement(const Node& root) {
  auto* element = static_cast<xmlNode*>(root.element());
  if (element->doc != m_data->document())
    throw XmlError("the element belongs to another document; import it first", 0, 0);
  xmlUnlinkNode(element);
  m_data->becamePlaced(element);
  if (xmlNode* old = xmlDocSetRootElement(m_data->document(), element)) m_data->becameLoose(old);
}

Node Document::createElement(const std::string& name) const {
  return m_data->newElement(name);
}

Node Document::importNode(const Node& node) const {
  return m_data->copyOf(static_cast<xmlNode*>(node.element()), true);
}

Node Document::selectSingleNode(const std::string& xpath) const {
  auto* whole = reinterpret_cast<xmlNode*>(m_data->document());
  const std::vector<Node> found = m_data->select(whole, xpath, true);
  return found.empty() ? Node() : found.front();
}

std::vector<Node> Document::selectNodes(const std::string& xpath) const {
  return m_data->select(reinterpret_cast<xmlNode*>(m_data->document()), xpath, false);
}

} // namespace platform
