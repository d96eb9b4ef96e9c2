#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/xml/xml.hpp"

struct _xmlDoc;
struct _xmlNode;

namespace platform {

enum class BlankText : std::uint8_t { dropped, kept };

/// A tree of libxml2 with the elements that stand nowhere in it at the moment. Nodes share its ownership.
class DocumentData : public std::enable_shared_from_this<DocumentData> {
 public:
  explicit DocumentData(_xmlDoc* document) : m_document(document) {}
  ~DocumentData();
  DocumentData(const DocumentData&) = delete;
  DocumentData& operator=(const DocumentData&) = delete;

  _xmlDoc* document() const { return m_document; }
  /// For a style sheet, which takes the tree over.
  _xmlDoc* handOver();
  Node wrap(_xmlNode* node);
  Node newElement(const std::string& name);
  Node copyOf(_xmlNode* node, bool deep);
  /// The elements that the XPath selects, in document order; at most one if `first`.
  std::vector<Node> select(_xmlNode* context, const std::string& xpath, bool first);

  void becameLoose(_xmlNode* node) { m_loose.insert(node); }
  void becamePlaced(_xmlNode* node) { m_loose.erase(node); }

 private:
  _xmlDoc* m_document;
  std::unordered_set<_xmlNode*> m_loose;
};

std::shared_ptr<DocumentData> parseXml(std::string_view text, BlankText blanks);

/// Texts must be UTF-8 of characters that XML has.
void requireXmlText(const std::string& text);
void requireXmlName(const std::string& name);

} // namespace platform
