#include "tarnsift/session/captions.hpp"

#include <optional>

#include "platform/files/files.hpp"
#include "tarnsift/session/host.hpp"

namespace tarnsift {

namespace {

// Stays from the first successful look-up until the process ends.
struct ResModule {
  std::optional<platform::Document> document;
};
ResModule& resModule() {
  static ResModule module;
  return module;
}

} // namespace

void LoadCaptionDocument() {
  if (resModule().document) return;
  const std::string path = theProductPaths().ResourceFile("KVSearch.xrc");
  if (!theFileProbe().FileExists(path, false)) return;
  try {
    resModule().document = platform::Document::load(platform::nativePath(path));
  } catch (const platform::XmlError& error) {
    const std::string text = theProductStrings().Format(
        "Error: '%1' at line: %2, pos: %3",
        {error.reason() + "\r\n", std::to_string(error.line()), std::to_string(error.position())});
    platform::screen().messageBox(text, platform::kCritical, "KVSearch.xrc Error");
  } catch (const platform::FileError& error) {
    const std::string text =
        theProductStrings().Format("Error: '%1' at line: %2, pos: %3", {std::string(error.what()) + "\r\n", "0", "0"});
    platform::screen().messageBox(text, platform::kCritical, "KVSearch.xrc Error");
  }
}

std::string GetCaption(const std::string& kind, const std::string& key) {
  LoadCaptionDocument();
  if (!resModule().document) return key;
  const platform::Node node =
      resModule().document->selectSingleNode("//" + kind + "[@name='" + theCaptionText().EscapeText(key) + "']");
  const std::string caption = node ? node.getAttribute("caption").asText() : "";
  return caption.empty() ? key : caption;
}

} // namespace tarnsift
