#pragma once

#include <string_view>

#include <QString>

namespace desktop {

/// The caption of an option of the product's own template in the language of the process; any other as it stands.
QString captionInLanguage(std::string_view caption);

} // namespace desktop
