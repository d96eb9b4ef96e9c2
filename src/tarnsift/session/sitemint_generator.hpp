#pragma once

#include <string>

#include "platform/runtime/object.hpp"
#include "platform/xml/xml.hpp"

/// What the web page add-on asks of the host's page generator.
namespace tarnsift {

using platform::Object;
using platform::Ref;

/// Makes the set of pages that the add-on's page belongs to. By name it has the four progress calls too:
/// StartProgress(text, count), StartStep(text), FinishStep(count), FinishProgress.
class SitemintGenerator : public Object {
 public:
  /// The folder of the pages, without a separator at its end.
  virtual std::string OutputFolder() = 0;
  /// The heading of a page as HTML. It stands within the first kilobyte and says the page's character set.
  virtual std::string PageHeading(const std::string& caption) = 0;
  /// The page of a source file (path relative to the base folder, backslashes), relative to OutputFolder, backslashes.
  virtual std::string FilePageLink(const std::string& file) = 0;
};

/// An element of an option document, to be handed over by name.
class OptionElement : public Object {
 public:
  explicit OptionElement(platform::Node node) : m_node(std::move(node)) {}
  const platform::Node& Node() const { return m_node; }

 private:
  platform::Node m_node;
};

} // namespace tarnsift
