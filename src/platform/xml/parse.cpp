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

/// The first error of a parse; those that follow from it only hide the cause. Also takes the place of printing them.
struct FirstError {
  std::string reason;
  int line = 0;
  int position = 0;
};

void keepFirst(void* parser, xmlErrorPtr error) {
  auto* first = static_cast<FirstError*>(static_cast<xmlParserCtxt*>(parser)->_private);
  if (!first->reason.empty() || error->level < XML_ERR_ERROR || error->message == nullptr) return;
  first->reason = error->message;
  while (first->reason.ends_with('\n') || first->reason.ends_with(' '))
    first->reason.pop_back();
  std::replace(first->reason.begin(), first->reason.end(), '\n', ' ');
  first->line = error->line;
  first->position = error->int2;
}

[[noreturn]] void tooLarge() {
  throw XmlError("the document is larger than 64 MB", 0, 0);
}

} // namespace

std::shared_ptr<DocumentData> parseXml(std::string_view text, BlankText blanks) {
  static std::once_flag initialised;
  std::call_once(initialised, [] { xmlInitParser(); });
  if (text.size() > kLargestDocument) tooLarge();
  const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxtPtr)> parser(xmlNewParserCtxt(), &xmlFreeParserCtxt);
  if (!parser) throw XmlError("out of memory", 0, 0);
  FirstError error;
  parser->_private = &error;
  parser->sax->serror = &keepFirst;
  // Neither XML_PARSE_NOENT nor XML_PARSE_DTDLOAD: nothing outside the text is ever read.
  const int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NOCDATA |
                      (blanks == BlankText::dropped ? XML_PARSE_NOBLANKS : 0);
  xmlDoc* document =
      xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()), nullptr, nullptr, options);
  if (document == nullptr) {
    throw XmlError(error.reason.empty() ? "the document is not well formed" : error.reason, error.line, error.position);
  }
  auto data = std::make_shared<DocumentData>(document);
  if (document->intSubset != nullptr && document->intSubset->entities != nullptr) {
    throw XmlError("the document declares entities, which are not read", 1, 1);
  }
  return data;
}

Document Document::loadText(std::string_view text) {
  return Document(parseXml(text, BlankText::dropped));
}

Document Document::load(const std::string& path) {
  if (fileExists(path) && fileSize(path) > kLargestDocument)
    throw XmlError(path + ": the document is larger than 64 MB", 0, 0);
  const std::string text = readText(path, kLargestDocument);
  try {
    return loadText(text);
  } catch (const XmlError& error) {
    throw XmlError(path + ": " + error.reason(), error.line(), error.position());
  }
}

} // namespace platform
