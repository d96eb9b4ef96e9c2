#include "desktop/texts.hpp"

#include "platform/runtime/string_table.hpp"

namespace desktop {

namespace {

struct Row {
  const char* english;
  const char* japanese;
  const char* korean;
};

constexpr Row kTexts[] = {
#define TEXT(name, english, japanese, korean) {english, japanese, korean},
#include "desktop/texts.inc"
#undef TEXT
};

} // namespace

QString text(Text id) {
  const Row& row = kTexts[static_cast<int>(id)];
  switch (platform::language()) {
  case platform::Language::Japanese:
    return QString::fromUtf8(row.japanese);
  case platform::Language::Korean:
    return QString::fromUtf8(row.korean);
  default:
    return QString::fromUtf8(row.english);
  }
}

} // namespace desktop
