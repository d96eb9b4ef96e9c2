#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <mutex>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/xml/document_data.hpp"

namespace platform {

namespace {

constexpr std::size_t kLargestDocument = std::size_t{64} << 20;

[[noreturn]] void tooLarge() { throw XmlError("the document is larger than 64 MB", 0, 0); }

} // namespace

void throwXmlError(const _xmlError* error, const std::string& fallback) {
  if (error == nullptr || error->message == nullptr) throw XmlError(fallback, 0, 0);
  std::string reason = error->message;
  while (reason.ends_with('\n') || reason.ends_with(' ')) reason.pop_back();
  std::replace(reason.begin(), reason.end(), '\n', ' ');
  throw XmlError(reason, error->line, error->int2);
}

std::shared_ptr<DocumentData> parseXml(std::string_view text, BlankText blanks) {
  static std::once_flag initialised;
  std::call_once(initialised, [] { xmlInitParser(); });
  if (text.size() > kLargestDocument) tooLarge();
  const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxtPtr)> parser(xmlNewParserCtxt(), &xmlFreeParserCtxt);
  if (!parser) throw XmlError("out of memory", 0, 0);
  // Neither XML_PARSE_NOENT nor XML_PARSE_DTDLOAD: nothing outside the text is ever read.
  const int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NOCDATA |
                      (blanks == BlankText::dropped ? XML_PARSE_NOBLANKS : 0);
  xmlDoc* document = xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()), nullptr, nullptr, options);
  if (document == nullptr) throwXmlError(xmlCtxtGetLastError(parser.get()), "the document is not well formed");
  auto data = std::make_shared<DocumentData>(document);
  if (document->intSubset != nullptr && document->intSubset->entities != nullptr) {
    throw XmlError("the document declares entities, which are not read", 1, 1);
  }
  return data;
}

Document Document::loadText(std::string_view text) { return Document(parseXml(text, BlankText::dropped)); }

Document Document::load(const std::string& path) {
  if (fileExists(path) && fileSize(path) > kLargestDocument) throw XmlError(path + ": the document is larger than 64 MB", 0, 0);
  const std::string text = readText(path, kLargestDocument);
  try {
    return loadText(text);
  } catch (const XmlError& error) {
    throw XmlError(path + ": " + error.reason(), error.line(), error.position());
  }
}

} // namespace platform
