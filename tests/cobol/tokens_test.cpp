#include "cobol/token_picture.hpp"

#include "cobol/characters.hpp"
#include "cobol/keywords.hpp"
#include "cobol/word_bytes.hpp"

namespace cobol {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// One line of fixed format: the text begins in column 8, whatever stands in front of it here.
std::string areaA(const std::string& text) {
  return "       " + text + "\n";
}
std::string areaB(const std::string& text) {
  return "           " + text + "\n";
}

/// A line whose text ends exactly in column 72.
std::string upToMargin(std::string text) {
  text.resize(72, ' ');
  return text + "\n";
}

TEST(Tokens, WordsNumbersLiteralsAndSymbols) {
  const std::map<std::string, std::string> cases = {
      {"move Total-1 to 2nd-x", "MOVE TOTAL-1 TO 2ND-X"},
      {"1.5 .5 12. 1.5E+3 -7", "#1.5 #.5 #12 . #1.5E+3 - #7"},
      {"A(1, I; J) B,C", "A ( #1 I J ) B C"},
      {"X'0A' N\"x\" z'q' nx'00' 'it''s' \"\" 'a\"b'", "'0A' 'x' 'q' '00' 'it's' '' 'a\"b'"},
      {"A ** B<=C >= D<>E obj::m", "A ** B <= C >= D <> E OBJ :: M"},
      {"CB-:X:-A", "CB- : X : - A"},
      {"A.B. C", "A . B . C"},
      {"A *> B 'open", "A"},
      {"'a*>b' C", "'a*>b' C"},
      {"IF A=B*C", "IF A = B * C"},
      {"Größe a_b $x #y @z", "GRößE A_B $X #Y @Z"},
  };
  for (const auto& [text, words] : cases)
    EXPECT_EQ(pictureOf(areaB(text)).words, words) << text;
}

// Every byte behind words of every length, near to the end of what can be read and far from it.
TEST(Tokens, AWordEndsAtTheFirstByteThatNoneHolds) {
  for (int byte = 0; byte < 256; ++byte) {
    for (std::size_t length = 1; length <= 35; ++length) {
      for (const std::size_t behind : {0, 1, 14, 15, 16, 40}) {
        const char last = static_cast<char>(byte);
        const std::string text = std::string(length, 'z') + last + std::string(behind, 'q');
        const char* const from = text.data();
        std::array<char, 100> taken{};
        const std::size_t got = takeWord(from, from + text.size(), from + text.size(), taken.data());
        ASSERT_EQ(got, isWordChar(last) ? text.size() : length) << byte << ' ' << behind;
        ASSERT_EQ(std::string(taken.data(), got), upper(text.substr(0, got))) << byte << ' ' << behind;
        ASSERT_EQ(takeWord(from, from + length, from + text.size(), taken.data()), length);
      }
    }
  }
}

TEST(Tokens, PictureStrings) {
  const std::map<std::string, std::string> cases = {
      {"PIC x(5). A", "PIC {X(5)} . A"},
      {"PICTURE IS S9(7)v99 COMP", "PICTURE IS {S9(7)V99} COMP"},
      {"PIC 9,9,9,.", "PIC {9,9,9,} ."},
      {"PIC 9,9, VALUE 1", "PIC {9,9} VALUE #1"},
      {"PIC 99.99.", "PIC {99.99} ."},
      {"PIC -(5)9.99- VALUE", "PIC {-(5)9.99-} VALUE"},
      {"PIC\n           IS\n           $$9 .", "PIC IS {$$9} ."},
      {"CURRENCY SIGN 'E' WITH PICTURE SYMBOL '$'", "CURRENCY SIGN 'E' WITH PICTURE SYMBOL '$'"},
  };
  for (const auto& [text, words] : cases)
    EXPECT_EQ(pictureOf(areaB(text)).words, words) << text;
}

TEST(Tokens, DecimalPointIsComma) {
  EXPECT_EQ(pictureOf(areaB("DECIMAL-POINT IS COMMA.") + areaB("MOVE 1,5 TO A. MOVE ,5 TO B, C. COMPUTE 7.")).words,
            "DECIMAL-POINT IS COMMA . MOVE #1,5 TO A . MOVE #,5 TO B C . COMPUTE #7 .");
  EXPECT_EQ(pictureOf(areaB("MOVE 1,5 TO A.")).words, "MOVE #1 #5 TO A .");
}

TEST(Tokens, PlacesAndFlags) {
  const TokenPicture fixed = pictureOf("000100 01  A.\n" + areaB("05 B PIC X."));
  EXPECT_EQ(fixed.places, "#01<1:8> A<1:12> .<1:13> #05<2:12> B<2:15> PIC<2:17> {X}<2:21> .<2:22>");
  EXPECT_EQ(fixed.flagged('A'), "#01");
  EXPECT_EQ(fixed.flagged('L'), "#01 #05");
  EXPECT_EQ(fixed.flagged('J'), ". .");
  const TokenPicture free = pictureOf("a.\n  b c\n", inFormat(FormatChoice::free));
  EXPECT_EQ(free.places, "A<1:1> .<1:2> B<2:3> C<2:5>");
  EXPECT_EQ(free.flagged('A'), "A B");
}

TEST(Tokens, ColumnsCountCharactersAndATabAsOne) {
  EXPECT_EQ(pictureOf("\t\tMOVE 'é' TO\tB.\n").places, "MOVE<1:3> 'é'<1:8> TO<1:12> B<1:15> .<1:16>");
  EXPECT_EQ(pictureOf("\tA.\n\t\tB.\n").flagged('A'), "A"); // stops of 8 decide: column 9 and column 17
}

TEST(Tokens, EveryKindOfLineEndCounts) {
  for (const std::string text : {"       A\n\n       B\n       C", "       A\r\n\r\n       B\r\n       C\r\n",
                                 "       A\r\r       B\r       C"}) {
    EXPECT_EQ(pictureOf(text).places, "A<1:8> B<3:8> C<4:8>");
  }
  EXPECT_EQ(pictureOf(std::string("       A\0B\n", 11)).words, "A B");
  EXPECT_EQ(pictureOf("").words, "");
}

TEST(Tokens, IndicatorsDecideWhatALineIs) {
  const std::string text =
      "      * comment\n      / page\n      D    DISPLAY 1.\n      Q    LOST\n           KEPT\n      *\n";
  EXPECT_EQ(pictureOf(text).words, "KEPT");
  EXPECT_THAT(pictureOf(text).remarks, ElementsAre("IndicatorUnknown 4:7"));
  Options code;
  code.debugLines = DebugLines::code;
  EXPECT_EQ(pictureOf(text, code).words, "DISPLAY #1 . KEPT");
  const std::string mode = areaB("SOURCE-COMPUTER. X WITH DEBUGGING MODE.");
  EXPECT_EQ(pictureOf(mode + "      D    STOP RUN.\n").words, "SOURCE-COMPUTER . X WITH DEBUGGING MODE . STOP RUN .");
}

TEST(Tokens, CommentEntriesEndAtTheNextHeader) {
  EXPECT_EQ(
      pictureOf(
          "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. P.\n       AUTHOR. It's me.\n           DATA of mine\n"
          "       REMARKS.\n       Free text 'open\n       ENVIRONMENT DIVISION.\n")
          .words,
      "IDENTIFICATION DIVISION . PROGRAM-ID . P . AUTHOR . REMARKS . ENVIRONMENT DIVISION .");
  EXPECT_EQ(pictureOf(areaB("MOVE SECURITY TO A.")).words, "MOVE SECURITY TO A .");
}

TEST(Tokens, ListingAndOptionLinesVanish) {
  EXPECT_EQ(pictureOf("CBL ARITH(EXTEND)\n       PROCESS LP(32)\n       A\n           EJECT\n           SKIP2.\n       "
                      "    TITLE 'x'\n           B\n")
                .words,
            "A B");
}

TEST(Tokens, OptionLinesStandInAnyColumnInFrontOfAProgram) {
  const TokenPicture picture =
      pictureOf("CBL LP(64)\n  PROCESS ARITH(EXTEND)\n000100 CBL X\n      *CBL LIST\n       *CONTROL NOLIST\n       A\n"
                "           *CBL LIST\n       END PROGRAM A.\n       CBL LP(32)\n       B\n",
                inFormat(FormatChoice::fixed));
  EXPECT_EQ(picture.words, "A END PROGRAM A . B");
  EXPECT_THAT(picture.remarks, IsEmpty());
  EXPECT_EQ(pictureOf("       PROCESS SECTION.\n       PROCESS.\n").words, "PROCESS SECTION . PROCESS .");
}

TEST(Continuation, JoinsWordsNumbersAndPictures) {
  const TokenPicture picture =
      pictureOf("           MOVE LONG-\n      -    NAME TO 12\n      * between\n\n      -34 PIC X(1\n      -    0).\n");
  EXPECT_EQ(picture.places, "MOVE<1:12> LONG-NAME<1:17> TO<2:17> #1234<2:20> PIC<5:11> {X(10)}<5:15> .<6:14>");
  EXPECT_EQ(picture.flagged('C'), "LONG-NAME #1234 {X(10)}");
}

TEST(Continuation, WordsKnowTheirLaterParts) {
  EXPECT_EQ(pictureOf("           MOVE CU\n      -      ST-\n      * between\n      -    NUMBER TO AMOUNT-ÄÖ\n"
                      "      -        Ü-X Z 12\n      -    34 'a\n      -    'b'.\n")
                .scattered(),
            "CUST-NUMBER<1:17+2><2:14+3><4:12+6> AMOUNT-ÄÖÜ-X<4:22+9><5:16+3>");
  // A copybook's parts lie in the copybook.
  EXPECT_EQ(
      pictureOf("           COPY C.\n           COPY C.\n", {}, {{"C", "       01  A-\n      -    B.\n"}}).scattered(),
      "A-B<1/1:12+2><1/2:12+1> A-B<1/1:12+2><1/2:12+1>");
}

TEST(Continuation, OpenLiteralRunsToTheMargin) {
  const std::string padded = "ab" + std::string(72 - 14, ' ');
  EXPECT_EQ(pictureOf("           'ab\n      -    'cd' X.\n").places, "'" + padded + "cd'<1:12> X<2:17> .<2:18>");
  EXPECT_EQ(pictureOf(upToMargin("           'ab" + std::string(57, '.')) + "      -    'cd'.\n").words,
            "'ab" + std::string(57, '.') + " cd' .");
  Options variable = inFormat(FormatChoice::variable);
  EXPECT_EQ(pictureOf("           'ab \n      -    'cd'\n", variable).words, "'ab cd'");
}

TEST(Continuation, QuotesAtTheMargin) {
  const std::string start = "           '" + std::string(59, 'x') + "'"; // the quote stands in column 72
  ASSERT_EQ(start.size(), 72u);
  EXPECT_EQ(pictureOf(start + "\n      -    ''yy'\n").words, "'" + std::string(59, 'x') + "'yy'");
  EXPECT_EQ(pictureOf(start + "\n      -    'yy'\n").words, "'" + std::string(59, 'x') + "' 'yy'");
}

TEST(Continuation, FaultsAreRemarked) {
  EXPECT_THAT(pictureOf("           'ab\n      -    cd' E\n").remarks, ElementsAre("ContinuationBad 2:12"));
  const TokenPicture open = pictureOf("           'ab   \n           CD\n");
  EXPECT_EQ(open.words, "'ab' CD");
  EXPECT_THAT(open.remarks, ElementsAre("LiteralOpen 1:12"));
}

TEST(Continuation, FreeFormLiterals) {
  const TokenPicture picture = pictureOf("display \"ab\"-\n  \"cd\" x & 'y'\n", inFormat(FormatChoice::free));
  EXPECT_EQ(picture.places, "DISPLAY<1:1> 'abcd'<1:9> X<2:8> &<2:10> 'y'<2:12>");
  EXPECT_THAT(picture.remarks, IsEmpty());
}

TEST(Tokens, HugeLinesTakeLinearTime) {
  std::string line = "       ";
  for (int i = 0; i < 300000; ++i)
    line += "é A1 ";
  EXPECT_EQ(pictureOf(line, inFormat(FormatChoice::variable)).stream.tokens.size(), 600001u);
  std::string quotes = "       ";
  for (int i = 0; i < 200000; ++i)
    quotes += "'\n      -'";
  EXPECT_FALSE(pictureOf(quotes).stream.tokens.empty());
}

TEST(Tokens, KeywordIdsAreTheirEnumerators) {
  const TokenPicture picture = pictureOf(areaB("Working-Storage END-IF zeroes PAINT"));
  const std::vector<Token>& tokens = picture.stream.tokens;
  EXPECT_EQ(keywordOf(tokens[0].text), Keyword::WorkingStorage);
  EXPECT_EQ(classOf(tokens[1].text), WordClass::terminator);
  EXPECT_EQ(classOf(tokens[2].text), WordClass::figurative);
  EXPECT_EQ(keywordOf(tokens[3].text), Keyword::None);
}

TEST(Tokens, OnlyProgramsLookLikeCobol) {
  EXPECT_TRUE(looksLikeCobol(pictureOf(areaA("PROCEDURE DIVISION.")).stream));
  EXPECT_TRUE(looksLikeCobol(pictureOf(areaA("PROGRAM-ID. A.")).stream));
  EXPECT_FALSE(looksLikeCobol(pictureOf("int main() { return division; }\n").stream));
  EXPECT_FALSE(looksLikeCobol(pictureOf(std::string("\x7F"
                                                    "ELF\0\1\2\3\xFF\xFE",
                                                    10))
                                  .stream));
}

} // namespace
} // namespace cobol
