#include "cobol/conditions.hpp"

#include "cobol/token_picture.hpp"

namespace cobol {
namespace {

TEST(Conditions, Expressions) {
  const std::map<std::string, std::string, std::less<>> constants = {{"A", "1"}, {"B", "text"}};
  const std::map<std::string, bool> cases = {
      {"A DEFINED", true},
      {"C IS DEFINED", false},
      {"C NOT DEFINED", true},
      {"A = 1", true},
      {"A > 01 OR B = 'text'", true},
      {"A IS GREATER THAN OR EQUAL TO 1", true},
      {"NOT A = 1 OR B DEFINED", true},
      {"NOT (A = 1 OR B DEFINED)", false},
      {"A = 2 AND B DEFINED OR A = 1", true},
      {"A = 2 AND (B DEFINED OR A = 1)", false},
      {"C = 1", false},
      {"C <> 1", false},
      {"A <> 2", true},
      {"", false},
      {"(((", false},
  };
  for (const auto& [text, holds] : cases)
    EXPECT_EQ(holdsCondition(text, constants), holds) << text;
  std::string deep(50000, '(');
  deep.append("A = 1").append(50000, ')');
  EXPECT_TRUE(holdsCondition(deep, constants));
}

TEST(Conditions, ChooseBranches) {
  const std::map<std::string, std::string> cases = {
      {">>IF A DEFINED\nX\n>>ELSE\nY\n>>END-IF\nZ", "Y Z"},
      {">>DEFINE A AS 2\n>>IF A = 1\nX\n>>ELIF A = 2\nY\n>>ELSE\nW\n>>END-IF", "Y"},
      {">>IF A DEFINED\n>>IF B DEFINED\nX\n>>ELSE\nY\n>>END-IF\n>>DEFINE C 1\n>>END-IF\n>>IF C DEFINED\nZ\n>>END-IF\nW",
       "W"},
      {">>DEFINE A 2\n>>EVALUATE A\n>>WHEN 1\nX\n>>WHEN 2 THRU 3\nY\n>>WHEN OTHER\nZ\n>>END-EVALUATE", "Y"},
      {">>DEFINE A 1\n>>EVALUATE TRUE\n>>WHEN A = 1\nX\n>>WHEN OTHER\nZ\n>>END-EVALUATE", "X"},
      {"$IF A DEFINED\nX\n$ELSE\nY\n$END\nZ", "Y Z"},
      {">>IF A DEFINED\nCOPY NONE.\n>>END-IF\nZ", "Z"},
      {">>END-IF\n>>ELSE\nZ", "Z"},
  };
  for (const auto& [text, words] : cases) {
    EXPECT_EQ(pictureOf(text, inFormat(FormatChoice::free)).words, words) << text;
    EXPECT_TRUE(pictureOf(text, inFormat(FormatChoice::free)).remarks.empty()) << text;
  }
  Options all = inFormat(FormatChoice::free);
  all.allBranches = true;
  EXPECT_EQ(pictureOf(">>IF A DEFINED\nX\n>>ELSE\nY\n>>END-IF\nZ", all).words, "X Y Z");
}

} // namespace
} // namespace cobol
