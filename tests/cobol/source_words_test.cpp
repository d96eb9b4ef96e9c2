#include "cobol/source_words.hpp"

#include <gtest/gtest.h>

#include "cobol/source_text.hpp"

namespace cobol {
namespace {

/// Under each line a letter for each byte of a word: k keyword, w name, n number, s literal, p picture, c comment,
/// m margin.
std::string picture(const std::string& text, std::optional<Format> format) {
  const SourceWords source = wordsOf(text, {}, format);
  EXPECT_EQ(source.hash, contentHash(text));
  std::vector<std::string> marks;
  for (const auto& line : source.lines)
    marks.emplace_back(line.size(), ' ');
  for (const SourceWord& word : source.words)
    for (std::uint32_t i = word.from; i < word.to; ++i) {
      char& mark = marks.at(word.line - 1).at(i);
      EXPECT_EQ(mark, ' ') << "two words over each other";
      mark = "kwnspcm"[static_cast<std::size_t>(word.kind)];
    }
  std::string result;
  for (std::size_t i = 0; i < marks.size(); ++i)
    result += source.lines[i] + "\n" + marks[i].substr(0, marks[i].find_last_not_of(' ') + 1) + "\n";
  return result;
}

TEST(SourceWords, FixedFormatWithItsMargins) {
  EXPECT_EQ(picture("000100 01 A-B   PIC X(3) VALUE 'x y'.  *> why\n"
                    "      * A COMMENT\n"
                    "\n"
                    "      D    DISPLAY A-B.\n"
                    "           MOVE 12 TO A-B, C (1:2)                                      IDENT 01\n",
                    Format::fixed),
            "000100 01 A-B   PIC X(3) VALUE 'x y'.  *> why\n"
            "mmmmmm nn www   kkk pppp kkkkk sssss   cccccc\n"
            "      * A COMMENT\n"
            "      ccccccccccc\n"
            "\n\n"
            "      D    DISPLAY A-B.\n"
            "      ccccccccccccccccc\n"
            "           MOVE 12 TO A-B, C (1:2)                                      IDENT 01\n"
            "           kkkk nn kk www  w  n n                                       mmmmmmmm\n");
}

TEST(SourceWords, ALiteralThatRunsOverLines) {
  EXPECT_EQ(picture("       01 A PIC X(90) VALUE 'This literal is longer than its line\n"
                    "      -    ' goes on here'.\n"
                    "       01 B PIC X.\n",
                    Format::fixed),
            "       01 A PIC X(90) VALUE 'This literal is longer than its line\n"
            "       nn w kkk ppppp kkkkk sssssssssssssssssssssssssssssssssssss\n"
            "      -    ' goes on here'.\n"
            "           sssssssssssssss\n"
            "       01 B PIC X.\n"
            "       nn w kkk p\n");
}

TEST(SourceWords, FreeFormatTabsAndWideCharacters) {
  EXPECT_EQ(picture("move a to b *> c\n\t\tdisplay \"\xC3\xA4\xC3\xB6\" upon x\n", Format::free),
            "move a to b *> c\n"
            "kkkk w kk w cccc\n"
            "\t\tdisplay \"\xC3\xA4\xC3\xB6\" upon x\n"
            "  kkkkkkk ssssss kkkk w\n");
  EXPECT_EQ(picture("      *\tnote\n\tMOVE A TO B.\n", Format::fixed), "      *\tnote\n      cccccc\n"
                                                                       "\tMOVE A TO B.\n kkkk w kk w\n");
}

TEST(SourceWords, CopyReplaceAndEmbeddedTextAsTheyAreWritten) {
  EXPECT_EQ(picture("       COPY REC REPLACING ==:T:== BY ==W==.\n"
                    "           EXEC SQL SELECT A INTO :B END-EXEC.\n",
                    Format::fixed),
            "       COPY REC REPLACING ==:T:== BY ==W==.\n"
            "       kkkk www kkkkkkkkk    w    kk   w\n"
            "           EXEC SQL SELECT A INTO :B END-EXEC.\n"
            "           kkkk kkk kkkkkk w kkkk  w kkkkkkkk\n");
}

TEST(SourceWords, AFileThatIsNotThereSaysWhy) {
  std::string error;
  EXPECT_FALSE(readWords("/nowhere/x.cbl", {}, std::nullopt, error));
  EXPECT_EQ(error, "No such file or directory");
}

} // namespace
} // namespace cobol
