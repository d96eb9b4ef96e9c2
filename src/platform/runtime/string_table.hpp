#pragma once

#include <span>
#include <string>
#include <string_view>

namespace platform {

enum class Language : int { English = 1033, Japanese = 1041, Korean = 1042 };

struct StringEntry {
  int id;
  const char* text; ///< UTF-8
};

/// Makes the entries the numbered string table of that language; they must outlive the process's use of them.
void setStringTable(Language language, std::span<const StringEntry> entries);
/// The text in the chosen language, else in English. Throws KeyError for an unknown id.
std::string LoadResString(int id);
/// By default the language of the locale (LC_ALL, LC_MESSAGES, LANG); English where it is none of the three.
Language language();
void setLanguage(Language language);
/// Back to the locale's.
void resetLanguage();

} // namespace platform
