#pragma once

#include <functional>
#include <vector>

#include "platform/xml/xml.hpp"

class QString;
class QVBoxLayout;
class QWidget;

namespace desktop {

/// What writes an editor's value into the document, if it was changed.
using OptionChanges = std::vector<std::function<void()>>;

/// Adds the editor of an option, with everything below it, to a column of a page.
void addOption(QVBoxLayout& column, platform::Document document, const platform::Node& option, OptionChanges& changes);

/// Whether an option has anything for the analyst to see or change.
bool showsAnything(const platform::Node& option);

/// What the analyst reads for an option: its caption in his language where that is known, else its name.
QString optionCaption(const platform::Node& option);

} // namespace desktop
