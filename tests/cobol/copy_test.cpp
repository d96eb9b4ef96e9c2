#include "cobol/token_picture.hpp"

namespace cobol {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The copybook C with `text`, copied by `statement`.
TokenPicture copied(const std::string& text, const std::string& statement) {
  return pictureOf("           " + statement + "\n", {}, {{"C", "       " + text + "\n"}});
}

TEST(Copy, StandsWhereverAWordMayStand) {
  const std::map<std::string, std::string> books = {{"C", "       B\n"}, {"LIB/C", "       L\n"}};
  const std::map<std::string, std::string> cases = {
      {"A COPY C. D", "A B D"},      {"A COPY\n           'c' . D", "A B D"}, {"COPY c OF lib. D", "L D"},
      {"COPY C IN OTHER. D", "B D"}, {"COPY C SUPPRESS PRINTING. D", "B D"},  {"COPY C D", "B D"},
  };
  for (const auto& [text, words] : cases)
    EXPECT_EQ(pictureOf("           " + text + "\n", {}, books).words, words) << text;
  EXPECT_EQ(pictureOf("           A COPY C. D\n", {}, books).places, "A<1:12> B<1/1:8> D<1:22>");
}

TEST(Copy, ReplacesWordByWord) {
  const std::map<std::string, std::string> cases = {
      {"==a b== BY ==x==", "X C (D) 'E'"},
      {"A BY Q B BY A", "Q A C (D) 'E'"}, // what was put in is not looked at again
      {"==A== BY ====", "B C (D) 'E'"},
      {"'E' BY 'F'", "A B C (D) 'F'"},
      {"E BY F", "A B C (D) 'E'"},
      {"C BY X OF Y (1)", "A B X OF Y (#1) (D) 'E'"},
      {"==A C== BY ==X==, ==(D)== BY ==I J==", "A B C I J 'E'"},
      {"A BY 1 == B C == BY == -2 ==", "#1 - #2 (D) 'E'"},
  };
  for (const auto& [rules, words] : cases) {
    std::string expected = words;
    for (std::size_t at; (at = expected.find("(D)")) != expected.npos;)
      expected.replace(at, 3, "( D )");
    for (std::size_t at; (at = expected.find("(#1)")) != expected.npos;)
      expected.replace(at, 4, "( #1 )");
    EXPECT_EQ(copied("A, B *> remark\n      * B\n           C (D) 'E'", "COPY C REPLACING " + rules + ".").words,
              expected)
        << rules;
  }
  EXPECT_EQ(copied("A\n      * remark\n           B C", "COPY C REPLACING ==A B== BY ==X==.").words, "X C");
}

TEST(Copy, GluesWhatStandsTogether) {
  const std::map<std::string, std::string> cases = {
      {"CB-:T:-A :T: X-:T:", "CB-N1-A N1 X-N1"},
      {"FLG-(T)-OK A(T)", "FLG-N1-OK AN1"},
      {":T:-A(:T:)", "N1-A ( N1 )"},
      {":T::T: :T:1", "N1N1 N11"},
      {"PIC :T:. PIC X(:T:).", "PIC {N1} . PIC {X(N1)} ."},
      {"B :U: CB-:U:A", "B : U : CB- : U : A"},
      {"EXEC SQL X = ::T: END-EXEC", "EXEC SQL X = : N1 END-EXEC"},
  };
  for (const auto& [text, words] : cases) {
    EXPECT_EQ(copied(text, "COPY C REPLACING ==:T:== BY ==N1== ==(T)== BY ==N1==.").words, words) << text;
  }
  EXPECT_EQ(copied("CB-:T:A B:T: :T:C", "COPY C REPLACING ==:T:== BY ====.").words, "CB-A B C");
}

TEST(Copy, ReplacedWordsKeepThePlaceInTheCopybook) {
  const TokenPicture picture = copied("01 CB-:T:-A PIC X(10).",
                                      "COPY C REPLACING ==:T:== BY ==LONGER==\n           ==X(10)== BY ==9(4) COMP==.");
  EXPECT_EQ(picture.places, "#01<1/1:8> CB-LONGER-A<1/1:11> PIC<1/1:20> {9(4)}<1/1:24> COMP<1/1:24> .<1/1:29>");
  EXPECT_EQ(picture.flagged('R'), "CB-LONGER-A {9(4)} COMP");
  EXPECT_EQ(picture.stream.tokens[1].length, 8); // CB-:T:-A on the page
}

TEST(Copy, ReplacedWordsKnowWhatReplacedThem) {
  const std::map<std::string, std::string> cases = {
      {"==:T:== BY ==NEW==", "NEW-A<1/1:11+5><1:42+3> NEW<1/1:17+3><1:42+3>"},
      {"==:T:== BY ==X== ==A== BY ==B==", "X-A<1/1:11+5><1:42+1> X<1/1:17+3><1:42+1>"},
      {"LEADING ==OLD== BY ==NEW==", "NEW-B-OLD<1/1:21+9><1:50+3>"},
      {"TRAILING ==OLD== BY ==N W==", "OLD-B-NW<1/1:21+9><1:51+1><1:53+1>"},
      {"OLD-B-OLD BY FINE", "FINE<1/1:21+9><1:42+4>"},
  };
  for (const auto& [rules, words] : cases)
    EXPECT_EQ(copied("01 :T:-A :T: OLD-B-OLD", "COPY C REPLACING " + rules + ".").scattered(), words) << rules;
  // Over a line end, twice in a word, and with a word that continues itself.
  EXPECT_EQ(copied("01 A-:T:\n      -    -B-:T:-\n      -    C :X:-D",
                   "COPY C REPLACING ==:T:== BY ==N== ==:X:== BY ==LO\n"
                   "      -    NG==.")
                .scattered(),
            "A-N-B-N-C<1/1:11+5><1/2:12+7><1/3:12+1><1:42+1> LONG-D<1/3:14+5><1:59+2><2:12+2>");
  // What an outer text put in is what the reader finds there.
  const std::map<std::string, std::string> books = {{"OUTER", "       COPY INNER REPLACING ==:T:== BY ==:U:==.\n"},
                                                    {"INNER", "       :T:-A\n"}};
  EXPECT_EQ(pictureOf("           COPY OUTER REPLACING ==:U:== BY ==V==.\n", {}, books).scattered(),
            "V-A<2/1:8+5><1:46+1>");
  EXPECT_EQ(pictureOf("           REPLACE ==:T:== BY ==V==. :T:-A\n").scattered(), "V-A<1:38+5><1:33+1>");
}

TEST(Copy, LeadingAndTrailingParts) {
  EXPECT_EQ(copied("OLD-A A-OLD B OLD", "COPY C REPLACING LEADING ==OLD== BY ==NEW==.").words, "NEW-A A-OLD B NEW");
  EXPECT_EQ(copied("OLD-A A-OLD B", "COPY C REPLACING TRAILING ==-OLD== BY ====.").words, "OLD-A A B");
}

TEST(Copy, OuterReplacingSeesInnerText) {
  const std::map<std::string, std::string> books = {{"OUTER", "       A COPY INNER REPLACING X BY B. Y\n"},
                                                    {"INNER", "       X Y\n"}};
  EXPECT_EQ(pictureOf("           COPY OUTER REPLACING B BY C Y BY Z.\n", {}, books).places,
            "A<1/1:8> C<2/1:8> Z<2/1:10> Z<1/1:39>");
}

TEST(Copy, CyclesAndMissingMembersEndQuietly) {
  const std::map<std::string, std::string> books = {{"A", "       X COPY B. Y\n"}, {"B", "       COPY A. Z\n"}};
  const TokenPicture picture = pictureOf("           COPY A. COPY NONE. W\n", {}, books);
  EXPECT_EQ(picture.words, "X Z Y W");
  EXPECT_THAT(picture.remarks, ElementsAre("CopyCycle 1:13", "CopyMissing 1:25"));
  std::map<std::string, std::string> deep;
  for (int i = 0; i < 100; ++i)
    deep["N" + std::to_string(i)] = "       COPY N" + std::to_string(i + 1) + ".\n";
  EXPECT_THAT(pictureOf("           COPY N0.\n", {}, deep).remarks, ElementsAre("CopyDepth 1:13"));
}

TEST(Copy, OtherSystemsIncludes) {
  const std::map<std::string, std::string> books = {{"C", "       B\n"}};
  EXPECT_EQ(pictureOf("       ++INCLUDE C\n-INC C\n           D\n", {}, books).words, "B B D");
}

TEST(Copy, WhatACopybookSetsHoldsForTheProgram) {
  EXPECT_EQ(pictureOf("           COPY NAMES.\n           MOVE 1,5 TO A.\n", {},
                      {{"NAMES", "           DECIMAL-POINT IS COMMA.\n"}})
                .words,
            "DECIMAL-POINT IS COMMA . MOVE #1,5 TO A .");
}

TEST(Replace, HoldsFromStatementToStatement) {
  EXPECT_EQ(
      pictureOf("           A REPLACE ==A== BY ==B==. A COPY C. REPLACE OFF. A\n", {}, {{"C", "       A X\n"}}).places,
      "A<1:12> B<1:38> B<1/1:8> X<1/1:10> A<1:61>");
  EXPECT_EQ(pictureOf("           REPLACE ==A== BY ==B==. A REPLACE ==C== BY ==D==.\n           A C\n").words, "B A D");
  EXPECT_EQ(pictureOf("           REPLACE ==X-:T:== BY ==B==. X-:T:-A\n").words, "B-A");
}

TEST(Replace, AlsoAddsAndLastOffTakesAway) {
  const std::string text = "           REPLACE ==A== BY ==B==. A REPLACE ALSO ==C== BY ==D== ==A== BY ==E==. A C\n"
                           "           REPLACE LAST OFF. A C REPLACE LAST OFF. A\n"
                           "           REPLACE ==A== BY ==B==. REPLACE ALSO ==C== BY ==D==. REPLACE OFF. A C\n";
  EXPECT_EQ(pictureOf(text).words, "B E D B C A A C");
}

TEST(Replace, EndsWithTheOutermostProgram) {
  EXPECT_EQ(pictureOf("           PROGRAM-ID. P. REPLACE ==A== BY ==B==. A PROGRAM-ID. Q. A END PROGRAM Q. A\n"
                      "           END PROGRAM P. A PROGRAM-ID. R. A REPLACE ==A== BY ==C==. A END PROGRAM R. A\n")
                .words,
            "PROGRAM-ID . P . B PROGRAM-ID . Q . B END PROGRAM Q . B END PROGRAM P . A PROGRAM-ID . R . A C "
            "END PROGRAM R . A");
}

TEST(Replace, UnendedOperandsDoNoHarm) {
  EXPECT_EQ(pictureOf("           REPLACE ==A BY B. C\n").words, "REPLACE == A BY B . C");
  EXPECT_EQ(pictureOf("           COPY C REPLACING ==A. D\n", {}, {{"C", "       B\n"}}).words, "B == A . D");
}

} // namespace
} // namespace cobol
