#pragma once

#include <string>

namespace tarnsift {

/// The caption of a search tab ("tab") or criterion ("criterion") from KVSearch.xrc; the key itself when the file has
/// none.
std::string GetCaption(const std::string& kind, const std::string& key);
/// Reads KVSearch.xrc once; a damaged file is told in a message box at every look-up, a missing one is not told.
void LoadCaptionDocument();

} // namespace tarnsift
