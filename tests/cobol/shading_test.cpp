#include "cobol/shading.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace cobol;
using testing::ElementsAre;

namespace {

// Every line as letters under its characters: a dot where nothing is shaded.
std::vector<std::string> pictureOf(std::string_view text, Format format) {
  static constexpr std::string_view kLetters = "mcdhkvnlpe"; // in the order of Shade
  const ShadedText shaded = shade(text, format);
  std::vector<std::string> pictures;
  for (std::size_t line = 1; line <= shaded.lines.size(); ++line) {
    std::string picture(100, '.');
    for (const ShadedSpan& span : shaded.spans(line))
      for (std::uint32_t i = 0; i < span.length; ++i)
        picture[span.column - 1 + i] = kLetters[static_cast<std::size_t>(span.shade)];
    pictures.push_back(picture.substr(0, picture.find_last_not_of('.') + 1));
  }
  return pictures;
}

} // namespace

TEST(Shading, FollowsTheScanner) {
  EXPECT_THAT(pictureOf("000100 IDENTIFICATION DIVISION.                                         PROG1\n"
                        "       AUTHOR. somebody.\n"
                        "      * a remark\n"
                        "\n"
                        "       WORKING-STORAGE SECTION.\n"
                        "       01  É-NAME PIC X(3) VALUE 'a b'. *> why\n"
                        "           MOVE ZERO, 1.5 TO B\n"
                        "      $SET SOURCEFORMAT\n",
                        Format::fixed),
              ElementsAre("mmmmmm.hhhhhhhhhhhhhh.hhhhhhhh..........................................mmmmm",
                          ".......hhhhhh..ccccccccc", "......cccccccccc", "", ".......hhhhhhhhhhhhhhh.hhhhhhh",
                          ".......nn.........kkk.pppp.kkkkk.lllll..cccccc", "...........kkkk.vvvv..nnn.kk",
                          "......ddddddddddddddddd"));
}

TEST(Shading, KnowsWhatRunsOnOverALineEnd) {
  EXPECT_THAT(pictureOf("           MOVE 'begin of a literal that goes on to the margin of the li\n"
                        "      -    'ne' TO A\n"
                        "           EXEC SQL SELECT A -- all\n"
                        "             INTO :B FROM T END-EXEC\n",
                        Format::fixed),
              ElementsAre("...........kkkk.llllllllllllllllllllllllllllllllllllllllllllllllllllllll",
                          "......m....llll.kk", "...........kkkk.eee.eeeeee.e.cccccc",
                          ".............eeee....eeee.e.kkkkkkkk"));
  EXPECT_THAT(pictureOf("           MOVE A TO LONG-\n"
                        "      -    NAME OF REC.\n"
                        "           MOVE B TO VERY-\n"
                        "      -    LO\n"
                        "      -    NG. *> so\n",
                        Format::fixed),
              ElementsAre("...........kkkk...kk", "......m.........kk", "...........kkkk...kk", "......m",
                          "......m........ccccc"));
}

TEST(Shading, FreeFormatAndAChangeOfFormat) {
  EXPECT_THAT(pictureOf("display x *> say it\n*> alone\n", Format::free),
              ElementsAre("kkkkkkk...ccccccccc", "cccccccc"));
  EXPECT_THAT(pictureOf("       >>SOURCE FORMAT FREE\nmove 1 to x\n", Format::fixed),
              ElementsAre(".......dddddddddddddddddddd", "kkkk.n.kk"));
}
