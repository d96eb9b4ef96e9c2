#pragma once

#include <string_view>

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// A stored layout counts only behind this signature.
inline constexpr std::string_view kLayoutSignature = "mPrograms, Lists, Synonyms, Source";

/// Takes over the stored layout, or builds the default one.
void buildPanes(frmMain& window);
void saveLayout(frmMain& window);

} // namespace tarnsift
