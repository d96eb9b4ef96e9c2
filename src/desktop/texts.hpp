#pragma once

#include <QString>

namespace desktop {

/// The texts of the host's own widgets, in the languages of the component's string table: see texts.inc.
enum class Text : int {
#define TEXT(name, english, japanese, korean) name,
#include "desktop/texts.inc"
#undef TEXT
};

/// In the language of the process. %1, %2 … are filled by QString::arg.
QString text(Text id);

} // namespace desktop
