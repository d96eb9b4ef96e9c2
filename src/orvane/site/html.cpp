#include "orvane/site/html.hpp"

#include <fmt/format.h>

#include "platform/runtime/text.hpp"

namespace orvane {

std::string htmlText(std::string_view text) {
  std::string result;
  for (const char c : platform::toValidUtf8(text)) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '&')
      result += "&amp;";
    else if (c == '<')
      result += "&lt;";
    else if (c == '>')
      result += "&gt;";
    else if (c == '"')
      result += "&quot;";
    else if (code < 0x20 && c != '\t')
      result += {'\xE2', '\x90', static_cast<char>(0x80 + code)};
    else
      result += c;
  }
  return result;
}

std::string urlText(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    const bool plain = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') ||
                       std::string_view("-._~:/").find(c) != std::string_view::npos;
    result += plain ? std::string(1, c) : fmt::format("%{:02X}", code);
  }
  return result;
}

std::string pageHead(std::string_view title, std::string_view styleSheet) {
  return fmt::format("<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n{}\n"
                     "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>{}</title>\n"
                     "<link href=\"{}\" rel=\"stylesheet\" type=\"text/css\">\n</head>\n<body>\n",
                     kGeneratorMark, htmlText(title), styleSheet);
}

std::string pageHeading(std::string_view caption, std::string_view project, std::string_view index) {
  std::string way;
  if (!index.empty()) way = fmt::format("<nav><a href=\"{}\">{}</a></nav>", index, htmlText(project));
  return fmt::format("<header>{}<h1>{}</h1></header>", way, htmlText(caption));
}

} // namespace orvane
