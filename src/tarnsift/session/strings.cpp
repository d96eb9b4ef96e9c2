#include "tarnsift/session/strings.hpp"

namespace tarnsift {

void registerStrings() {
  platform::setStringTable(platform::Language::English, englishStrings());
  platform::setStringTable(platform::Language::Japanese, japaneseStrings());
  platform::setStringTable(platform::Language::Korean, koreanStrings());
}

} // namespace tarnsift
