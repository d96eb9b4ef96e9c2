#include <libxml/tree.h>

#include "platform/runtime/error.hpp"
#include "platform/xml/document_data.hpp"

namespace platform {

namespace {

const xmlChar* bytes(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

std::string textOf(const xmlChar* text) {
  return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

std::string textOwned(xmlChar* text) {
  const std::unique_ptr<xmlChar, void (*)(void*)> owner(text, xmlFree);
  return textOf(text);
}

xmlNode* asNode(void* node) {
  return static_cast<xmlNode*>(node);
}

bool isAbove(const xmlNode* above, const xmlNode* node) {
  for (; node != nullptr; node = node->parent) {
    if (node == above) return true;
  }
  return false;
}

/// Checks that `child` may come below `parent` and takes it from where it was.
void detachFor(xmlNode* parent, xmlNode* child) {
  if (child->doc != parent->doc) throw XmlError("the element belongs to another document; import it first", 0, 0);
  if (isAbove(child, parent)) throw XmlError("an element cannot come below itself", 0, 0);
  xmlUnlinkNode(child);
}

} // namespace

void requireXmlText(const std::string& text) {
  const char* at = text.c_str();
  const char* end = at + text.size();
  while (at < end) {
    int length = static_cast<int>(end - at);
    const int character = xmlGetUTF8Char(reinterpret_cast<const unsigned char*>(at), &length);
    const bool known = character == '\t' || character == '\n' || character == '\r' ||
                       (character >= 0x20 && character <= 0xd7ff) || (character >= 0xe000 && character <= 0xfffd) ||
                       (character >= 0x10000 && character <= 0x10ffff);
    if (!known) {
      throw XmlError("byte " + std::to_string(at - text.c_str() + 1) + " of a text is no character that XML can hold",
                     0, 0);
    }
    at += length;
  }
}

void requireXmlName(const std::string& name) {
  if (name.find('\0') != std::string::npos || xmlValidateNCName(bytes(name), 0) != 0) {
    throw XmlError("'" + name + "' cannot be an XML name", 0, 0);
  }
}

void* Node::element() const {
  if (m_node == nullptr) throw XmlError("an element that was looked for is not there", 0, 0);
  return m_node;
}

std::string Node::name() const {
  return textOf(asNode(element())->name);
}

Value Node::getAttribute(std::string_view name) const {
  const std::string terminated(name);
  if (xmlHasProp(asNode(element()), bytes(terminated)) == nullptr) return {};
  return Value(textOwned(xmlGetProp(asNode(m_node), bytes(terminated))));
}

void Node::setAttribute(const std::string& name, const std::string& value) {
  requireXmlName(name);
  requireXmlText(value);
  xmlSetProp(asNode(element()), bytes(name), bytes(value));
}

void Node::removeAttribute(const std::string& name) {
  xmlUnsetProp(asNode(element()), bytes(name));
}

std::vector<std::string> Node::attributeNames() const {
  std::vector<std::string> names;
  for (const xmlAttr* attribute = asNode(element())->properties; attribute != nullptr; attribute = attribute->next) {
    names.push_back(textOf(attribute->name));
  }
  return names;
}

Node Node::appendChild(const Node& child) {
  detachFor(asNode(element()), asNode(child.element()));
  xmlAddChild(asNode(m_node), asNode(child.m_node));
  m_document->becamePlaced(asNode(child.m_node));
  return child;
}

Node Node::insertBefore(const Node& child, const Node& before) {
  if (!before) return appendChild(child);
  if (asNode(before.m_node)->parent != asNode(element())) throw XmlError("the place to insert at is no child", 0, 0);
  if (child == before) return child;
  detachFor(asNode(m_node), asNode(child.element()));
  xmlAddPrevSibling(asNode(before.m_node), asNode(child.m_node));
  m_document->becamePlaced(asNode(child.m_node));
  return child;
}

Node Node::removeChild(const Node& child) {
  if (asNode(child.element())->parent != asNode(element())) throw XmlError("the element to remove is no child", 0, 0);
  xmlUnlinkNode(asNode(child.m_node));
  m_document->becameLoose(asNode(child.m_node));
  return child;
}

Node Node::cloneNode(bool deep) const {
  auto* node = asNode(element());
  return m_document->copyOf(node, deep);
}

Node Node::firstChild() const {
  return m_document->wrap(xmlFirstElementChild(asNode(element())));
}

Node Node::nextSibling() const {
  auto* node = asNode(element());
  return m_document->wrap(xmlNextElementSibling(node));
}

Node Node::parent() const {
  xmlNode* above = asNode(element())->parent;
  return above != nullptr && above->type == XML_ELEMENT_NODE ? m_document->wrap(above) : Node();
}

std::vector<Node> Node::children() const {
  std::vector<Node> nodes;
  for (xmlNode* child = xmlFirstElementChild(asNode(element())); child != nullptr;
       child = xmlNextElementSibling(child)) {
    nodes.push_back(m_document->wrap(child));
  }
  return nodes;
}

Node Node::selectSingleNode(const std::string& xpath) const {
  auto* node = asNode(element());
  const std::vector<Node> found = m_document->select(node, xpath, true);
  return found.empty() ? Node() : found.front();
}

std::vector<Node> Node::selectNodes(const std::string& xpath) const {
  auto* node = asNode(element());
  return m_document->select(node, xpath, false);
}

std::string Node::text() const {
  return textOwned(xmlNodeGetContent(asNode(element())));
}

void Node::setText(const std::string& text) {
  requireXmlText(text);
  auto* node = asNode(element());
  while (xmlNode* child = node->children) { // handles to children stay good
    xmlUnlinkNode(child);
    if (child->type == XML_ELEMENT_NODE) {
      m_document->becameLoose(child);
    } else {
      xmlFreeNode(child);
    }
  }
  xmlAddChild(node, xmlNewDocTextLen(node->doc, bytes(text), static_cast<int>(text.size())));
}

std::string Node::xml() const {
  auto* node = asNode(element());
  const std::unique_ptr<xmlBuffer, void (*)(xmlBufferPtr)> buffer(xmlBufferCreate(), &xmlBufferFree);
  constexpr int kNoIndent = 0;
  xmlNodeDump(buffer.get(), node->doc, node, 0, kNoIndent);
  return textOf(xmlBufferContent(buffer.get()));
}

} // namespace platform
