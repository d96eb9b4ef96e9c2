#pragma once

#include "platform/runtime/value.hpp"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// XML documents with XPath 1.0 and XSLT 1.0. Nothing is ever fetched: no network, no external entities, no document().
/// Thread-compatible: a document and its nodes belong to one thread at a time.
namespace platform {

class DocumentData;
class Document;

/// An element of a document, or nothing. It keeps its document alive; copies are the same element. Children, parents
/// and siblings are elements only. Asking an empty node anything but whether it is one is an XmlError.
class Node {
 public:
  Node() = default;

  explicit operator bool() const { return m_node != nullptr; }
  bool operator==(const Node& other) const { return m_node == other.m_node; }

  std::string name() const;
  /// Null when the attribute is missing, else a text.
  Value getAttribute(std::string_view name) const;
  /// Texts with characters that XML forbids, and names that are none, are XmlErrors.
  void setAttribute(const std::string& name, const std::string& value);
  /// The attribute may be missing.
  void removeAttribute(const std::string& name);
  /// Attribute names in document order.
  std::vector<std::string> attributeNames() const;

  /// Appends a node of the same document behind the last child, taking it from where it was; a node of another document
  /// must be imported first.
  Node appendChild(const Node& child);
  /// Puts `child` in front of `before`, a child of this node; an empty `before` appends.
  Node insertBefore(const Node& child, const Node& before);
  /// Takes a child out; it lives on by itself until its document goes, and can be appended again.
  Node removeChild(const Node& child);
  /// A copy that stands nowhere yet; with everything below it when `deep`, else with its attributes only.
  Node cloneNode(bool deep) const;

  Node firstChild() const;
  Node nextSibling() const;
  Node parent() const;
  std::vector<Node> children() const;

  /// The first element of that XPath in document order, or an empty node. A malformed XPath is an XmlError.
  Node selectSingleNode(const std::string& xpath) const;
  std::vector<Node> selectNodes(const std::string& xpath) const;

  /// All text below this node.
  std::string text() const;
  /// Replaces all content by one text.
  void setText(const std::string& text);
  /// The element as XML, on one line where it was so made, without declaration.
  std::string xml() const;

 private:
  friend class Document;
  friend class DocumentData;
  friend class Stylesheet;
  Node(std::shared_ptr<DocumentData> document, void* node) : m_document(std::move(document)), m_node(node) {}
  void* element() const;

  std::shared_ptr<DocumentData> m_document;
  void* m_node = nullptr;
};

/// A document; copies are the same document.
class Document {
 public:
  /// A new document without a root.
  Document();

  /// Blank text between elements is dropped. A file that is missing or unreadable is a FileError; one that is not well
  /// formed, declares entities, nests deeper than 256, or is larger than 64 MB is an XmlError with reason, line and
  /// position.
  static Document load(const std::string& path);
  static Document loadText(std::string_view text);

  /// Writes the document whole, in UTF-8 and indented, through a temporary file. FileError on failure.
  void save(const std::string& path) const;
  std::string text() const;

  Node documentElement() const;
  void setDocumentElement(const Node& root);
  /// An element that stands nowhere yet.
  Node createElement(const std::string& name) const;
  /// A deep copy of an element of another document that stands nowhere yet in this one.
  Node importNode(const Node& node) const;

  Node selectSingleNode(const std::string& xpath) const;
  std::vector<Node> selectNodes(const std::string& xpath) const;

 private:
  friend class Stylesheet;
  explicit Document(std::shared_ptr<DocumentData> data) : m_data(std::move(data)) {}
  std::shared_ptr<DocumentData> m_data;
};

/// A compiled XSLT style sheet. It can read no further file and write none.
class Stylesheet {
 public:
  /// XmlError with what the compiler said.
  explicit Stylesheet(std::string_view text);
  ~Stylesheet();
  Stylesheet(Stylesheet&&) noexcept;
  Stylesheet& operator=(Stylesheet&&) noexcept;

  /// The result as the sheet's output element asks. Parameters are texts by name.
  std::string apply(const Document& document, const std::map<std::string, std::string>& parameters = {}) const;

 private:
  struct State;
  std::unique_ptr<State> m_state;
};

} // namespace platform
