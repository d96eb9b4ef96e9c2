#include <gtest/gtest.h>

#include "platform/runtime/collection.hpp"
#include "platform/runtime/formats.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/value.hpp"
#include "platform/runtime/wildcard.hpp"

using namespace platform;

TEST(Wildcard, MatchesTheWholeTextAndRefusesBrokenPatterns) {
  struct Case {
    const char* text;
    const char* pattern;
    bool matches;
  };
  for (const Case& c : {Case{"CUST-ID", "CUST*", true},
                        {"CUST-ID", "*ID", true},
                        {"CUST-ID", "*CUST", false},
                        {"CUST-ID", "cust*", false},
                        {"", "", true},
                        {"", "*", true},
                        {"A", "", false},
                        {"A1", "A#", true},
                        {"AB", "A#", false},
                        {"AB", "A?", true},
                        {"A", "A?", false},
                        {"X-7", "[A-Z]-[0-9]", true},
                        {"X-7", "[!A-W]-#", true},
                        {"X-7", "[!X]*", false},
                        {"A*B", "A[*]B", true},
                        {"AXB", "A[*]B", false},
                        {"A-B", "A[-]B", true},
                        {"AB", "A[]B", true},
                        {"AAAB", "*A*AB", true},
                        {"ABABAC", "*ABAC", true},
                        {"\xE6\x97\xA5X", "?X", true},
                        {"A]", "A]", true}}) {
    EXPECT_EQ(like(c.text, c.pattern), c.matches) << c.text << " like " << c.pattern;
  }
  EXPECT_THROW(like("Hello", "[AB"), PatternError);
  EXPECT_THROW(like("", "X[B-A]"), PatternError) << "refused even when the match fails earlier";
  const std::string hostile(200, 'A');
  EXPECT_FALSE(like(hostile, "*A*A*A*A*A*A*A*A*A*B")) << "in time that does not explode";
}

TEST(Formats, RoundHalvesAwayFromZeroAndPrintLongNumbersInFull) {
  EXPECT_EQ(formatPercent(0.125F), "12.5%");
  EXPECT_EQ(formatPercent(1.0F / 16), "6.3%");
  EXPECT_EQ(formatPercent(0), "0.0%");
  EXPECT_EQ(formatPercent(1.5F), "150.0%");
  EXPECT_EQ(formatSixDigits(42), "000042");
  EXPECT_EQ(formatSixDigits(1234567), "1234567");
}

TEST(Text, CutsAndRepairsAtCodePoints) {
  EXPECT_EQ(firstCodePoints("\xE6\x97\xA5\xE6\x9C\xAC", 1), "\xE6\x97\xA5");
  EXPECT_EQ(countCodePoints("a\xE6\x97\xA5z"), 3U);
  EXPECT_EQ(toValidUtf8("a\xFF\xC0\x80z"), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz");
  EXPECT_EQ(fillTemplate("%1 of %2, %3", {"a%2", "b"}), "a%2 of b, %3") << "a filled value is not filled again";
  EXPECT_EQ(replaceAll("a&b&", "&", "&amp;"), "a&amp;b&amp;");
}

TEST(Collection, KeepsOrderAndRefusesASecondKeyInAnyCase) {
  Collection<std::string> names;
  names.Add("one", "A");
  names.Add("two", "B");
  EXPECT_EQ(names.Item("b"), "two");
  EXPECT_EQ(names.Item(1), "one");
  EXPECT_THROW(names.Add("three", "a"), KeyError);
  EXPECT_THROW(names.Item("C"), KeyError);
  EXPECT_EQ(names.Count(), 2U);
}

TEST(Value, ConvertsOrSaysWhatIsWrong) {
  EXPECT_EQ(Value().asText(), "");
  EXPECT_EQ(Value(" 12 ").asInteger(), 12);
  EXPECT_THROW(Value("12x").asInteger(), Error);
  EXPECT_TRUE(Value("TRUE").asBool());
  EXPECT_FALSE(Value().asBool());
  EXPECT_NE(Value(), Value("")) << "Null equals nothing but Null";
}
