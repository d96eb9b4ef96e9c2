#include "platform/runtime/string_table.hpp"

#include <array>
#include <cstdlib>
#include <optional>
#include <unordered_map>

#include "platform/runtime/application.hpp"
#include "platform/runtime/error.hpp"

namespace platform {

namespace {

using Table = std::unordered_map<int, const char*>;

std::unordered_map<int, Table>& tables() {
  static std::unordered_map<int, Table> all;
  return all;
}

std::optional<Language>& chosen() {
  static std::optional<Language> language;
  return language;
}

Language ofLocale() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (!value || !*value) continue;
    const std::string_view locale(value);
    if (locale.starts_with("ja")) return Language::Japanese;
    if (locale.starts_with("ko")) return Language::Korean;
    return Language::English;
  }
  return Language::English;
}

} // namespace

Application& App() {
  static Application application;
  return application;
}

void setStringTable(Language language, std::span<const StringEntry> entries) {
  Table& table = tables()[static_cast<int>(language)];
  table.clear();
  for (const auto& entry : entries)
    table.emplace(entry.id, entry.text);
}

std::string LoadResString(int id) {
  for (const Language language : {language(), Language::English}) {
    const Table& table = tables()[static_cast<int>(language)];
    if (const auto found = table.find(id); found != table.end()) return found->second;
  }
  throw KeyError("the string table has no text " + std::to_string(id));
}

Language language() {
  return chosen().value_or(ofLocale());
}
void setLanguage(Language language) {
  chosen() = language;
}
void resetLanguage() {
  chosen().reset();
}

} // namespace platform
