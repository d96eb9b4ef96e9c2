#include <libxml/tree.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/variables.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <cstdarg>
#include <cstdio>
#include <mutex>

#include "platform/runtime/error.hpp"
#include "platform/xml/document_data.hpp"

namespace platform {

namespace {

/// What libxslt reports while this thread compiles or transforms.
thread_local std::string reports;

void report(void*, const char* format, ...) {
  char line[1000];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(line, sizeof line, format, arguments);
  va_end(arguments);
  reports += line;
}

std::string takeReports(const std::string& fallback) {
  std::string text = std::exchange(reports, {});
  while (text.ends_with('\n'))
    text.pop_back();
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text.empty() ? fallback : text;
}

/// A sheet may read and write nothing: not through document(), import or include, nor through exsl:document.
xsltSecurityPrefs* closedDoors() {
  xsltSecurityPrefs* doors = xsltNewSecurityPrefs();
  for (const xsltSecurityOption option :
       {XSLT_SECPREF_READ_FILE, XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY, XSLT_SECPREF_READ_NETWORK,
        XSLT_SECPREF_WRITE_NETWORK}) {
    xsltSetSecurityPrefs(doors, option, &xsltSecurityForbid);
  }
  return doors;
}

void prepareLibrary() {
  static std::once_flag prepared;
  std::call_once(prepared, [] {
    xsltInit();
    xsltSetGenericErrorFunc(nullptr, &report);
    xsltSetDefaultSecurityPrefs(closedDoors()); // for the life of the process
  });
}

using Transformation = std::unique_ptr<xsltTransformContext, void (*)(xsltTransformContextPtr)>;
using Tree = std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)>;

} // namespace

struct Stylesheet::State {
  std::unique_ptr<xsltStylesheet, void (*)(xsltStylesheetPtr)> sheet;
};

Stylesheet::Stylesheet(std::string_view text) {
  prepareLibrary();
  const auto data = parseXml(text, BlankText::kept);
  reports.clear();
  xsltStylesheet* sheet = xsltParseStylesheetDoc(data->document());
  if (sheet == nullptr) throw XmlError(takeReports("not a style sheet"), 0, 0);
  data->handOver();
  m_state = std::make_unique<State>(State{{sheet, &xsltFreeStylesheet}});
  if (sheet->errors != 0) throw XmlError(takeReports("not a style sheet"), 0, 0);
}

Stylesheet::~Stylesheet() = default;
Stylesheet::Stylesheet(Stylesheet&&) noexcept = default;
Stylesheet& Stylesheet::operator=(Stylesheet&&) noexcept = default;

std::string Stylesheet::apply(const Document& document, const std::map<std::string, std::string>& parameters) const {
  xsltStylesheet* sheet = m_state->sheet.get();
  xmlDoc* source = document.m_data->document();
  reports.clear();
  const Transformation transformation(xsltNewTransformContext(sheet, source), &xsltFreeTransformContext);
  if (!transformation) throw XmlError("out of memory", 0, 0);
  for (const auto& [name, value] : parameters) {
    xsltQuoteOneUserParam(transformation.get(), reinterpret_cast<const xmlChar*>(name.c_str()),
                          reinterpret_cast<const xmlChar*>(value.c_str()));
  }
  const Tree result(xsltApplyStylesheetUser(sheet, source, nullptr, nullptr, nullptr, transformation.get()),
                    &xmlFreeDoc);
  if (!result || transformation->state != XSLT_STATE_OK) throw XmlError(takeReports("the transformation failed"), 0, 0);
  xmlChar* buffer = nullptr;
  int size = 0;
  if (xsltSaveResultToString(&buffer, &size, result.get(), sheet) != 0)
    throw XmlError("the result cannot be written", 0, 0);
  const std::unique_ptr<xmlChar, void (*)(void*)> owner(buffer, xmlFree);
  return buffer == nullptr ? std::string()
                           : std::string(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(size));
}

} // namespace platform
