#pragma once

#include <string>
#include <vector>

#include "platform/runtime/object.hpp"
#include "platform/runtime/value.hpp"

namespace tarnsift {

/// Adds the page Main.htm to a project's web pages: the metrics of its programs and the datanames of its lists, each
/// linked to the page of its source. Runs without the main window.
class SitemintAddOn : public platform::Object {
 public:
  /// The host object, the page generator (a SitemintGenerator) and the OptionElement of this page with the attributes
  /// NAME, its folder, and CAPTION. Sets the session's globals and lets go of them at the end, also when it fails.
  /// Gives 0; a page that cannot be written is a FileError.
  platform::Value Run(const platform::Value& anOVWS, const platform::Value& anOV3,
                      const platform::Value& SitemintOptionsRoot);
  /// Writes the page; `uProgress` gets the progress calls by name. Needs the globals that Run sets.
  void CreateReport(const platform::Value& OV3, const platform::Value& SitemintOptionsRoot,
                    const platform::Value& uProgress);
  platform::Value Invoke(std::string_view member, std::span<platform::Value> arguments) override;

 private:
  /// A line that names the current section large and links to the others; "" links to all.
  static std::string NavigationLine(const std::string& current, const std::vector<std::string>& titles,
                                    const std::vector<std::string>& names);
};

} // namespace tarnsift
