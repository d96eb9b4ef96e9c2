#include "cobol/keywords.hpp"

namespace cobol {
namespace {

constexpr std::string_view kTexts[] = {
    "",
#define WORD(name, text, kind) text,
#include "cobol/keyword_table.inc"
#undef WORD
};
static_assert(std::size(kTexts) == keywordCount());

} // namespace

const WordClass kWordClasses[] = {
    WordClass::none,
#define WORD(name, text, kind) WordClass::kind,
#include "cobol/keyword_table.inc"
#undef WORD
};

std::string_view textOf(Keyword word) {
  return word < Keyword::Count_ ? kTexts[idOf(word)] : std::string_view();
}

} // namespace cobol
