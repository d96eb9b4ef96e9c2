#include "orvane/site/page_generator.hpp"

#include <fmt/format.h>

#include "orvane/site/html.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

// Stands in the body of an add-on's page. A reader takes the character set, the title and the view port from here too.
std::string PageGenerator::PageHeading(const std::string& caption) {
  return fmt::format("<meta charset=\"utf-8\"><meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                     "<title>{} - {}</title><script src=\"../Decor.js\" defer></script>{}",
                     htmlText(caption), htmlText(m_project), pageHeading(caption, m_project, "../index.html"));
}

std::string PageGenerator::FilePageLink(const std::string& file) {
  const SiteFile* known = m_files.find(file);
  return platform::replaceAll(known ? known->page : "index.html", "/", "\\");
}

platform::Value PageGenerator::Invoke(std::string_view member, std::span<platform::Value> arguments) {
  const auto is = [&](std::string_view name) { return platform::equalsIgnoringCase(member, name); };
  const auto count = [&](std::size_t i) {
    return i < arguments.size() ? static_cast<std::size_t>(arguments[i].asInteger()) : 0;
  };
  if (is("StartProgress")) {
    m_action = arguments.empty() ? "" : arguments[0].asText();
    m_total = count(1);
    m_done = 0;
  } else if (is("StartStep")) {
    m_step = arguments.empty() ? "" : arguments[0].asText();
  } else if (is("FinishStep")) {
    m_done += count(0);
  } else if (is("FinishProgress")) {
    m_done = m_total;
  } else {
    return Object::Invoke(member, arguments);
  }
  tell();
  return {};
}

void PageGenerator::tell() const {
  if (m_progress) m_progress(m_step.empty() ? m_action : m_action + ": " + m_step, m_done, m_total);
}

} // namespace orvane
