#include "cobol/token_picture.hpp"

namespace cobol {
namespace {

std::string formatOf(const std::string& text) {
  switch (pictureOf(text).stream.files[0].format) {
  case Format::fixed:
    return "fixed";
  case Format::variable:
    return "variable";
  case Format::free:
    return "free";
  }
  return "";
}

std::string repeated(const std::string& line, int times) {
  std::string text;
  for (int i = 0; i < times; ++i)
    text += line + "\n";
  return text;
}

/// A line of fixed format with something in columns 73 to 80.
std::string tagged(const std::string& tag) {
  return "           MOVE A TO B." + std::string(49, ' ') + tag + "\n";
}

TEST(Format, IsToldByTheLines) {
  EXPECT_EQ(formatOf(repeated("           MOVE A TO B.", 5)), "fixed");
  EXPECT_EQ(formatOf(repeated("000100     MOVE A TO B.", 5)), "fixed");
  EXPECT_EQ(formatOf(repeated("CR1234     MOVE A TO B.", 5)), "fixed");
  EXPECT_EQ(formatOf(repeated("CR12       MOVE A TO B.", 5)), "fixed");
  EXPECT_EQ(formatOf(repeated("\tMOVE A TO B.", 5)), "fixed");
  EXPECT_EQ(formatOf(repeated("move a to b.", 5)), "free");
  EXPECT_EQ(formatOf(repeated("    if a = b", 5)), "free");
  EXPECT_EQ(formatOf("*> about\nid division.\n" + repeated("        display 'x'", 8)), "free");
  EXPECT_EQ(formatOf("      *one\n      *two\n" + repeated("           A", 20) + "copied\n"), "fixed");
  EXPECT_EQ(formatOf(repeated("           DISPLAY 'this text goes far beyond the margin of the fixed format' 'x'", 5)),
            "variable");
}

TEST(Format, IdentificationsAreNoText) {
  EXPECT_EQ(formatOf(tagged("NC1014.2") + tagged("NC1024.2") + tagged("NC1034.2")), "fixed");
  EXPECT_EQ(formatOf(tagged("00010000") + tagged("00020000")), "fixed");
  EXPECT_EQ(formatOf("           MOVE" + std::string(42, ' ') + "22.222222.NC1014.2\n"), "fixed");
  EXPECT_EQ(pictureOf(tagged("NC1014.2")).words, "MOVE A TO B .");
}

TEST(Format, TabbedLinesHaveNoMargin) {
  const std::string line = "\t\t\t\t\t\tFIELD\t\tPIC X(10).\n"; // spread, the picture stands behind column 72
  EXPECT_EQ(pictureOf(line, inFormat(FormatChoice::fixed)).words, "FIELD PIC {X(10)} .");
}

TEST(Format, DirectivesSwitchFromTheNextLine) {
  EXPECT_EQ(pictureOf("       A\n       >>SOURCE FORMAT IS FREE\nB\n>>SOURCE FIXED\n000001 C                           "
                      "                                      D\n",
                      inFormat(FormatChoice::fixed))
                .places,
            "A<1:8> B<3:1> C<5:8>");
  EXPECT_EQ(pictureOf("      $SET SOURCEFORMAT\"FREE\"\nB 'x'\n", inFormat(FormatChoice::fixed)).words, "B 'x'");
  EXPECT_EQ(pictureOf("           A\n           >>SET SOURCEFORMAT AS \"VARIABLE\"\n" + std::string(72, ' ') + "B\n",
                      inFormat(FormatChoice::fixed))
                .words,
            "A B");
  for (const char* directive : {"$SET SOURCEFORMAT\"FREE\"", ">>SOURCE FREE"}) // behind a sequence number
    EXPECT_EQ(pictureOf(std::string("000100") + directive + "\nB 'x'\n", inFormat(FormatChoice::fixed)).words, "B 'x'");
}

TEST(Format, DirectivesOfABranchThatIsOffHaveNoEffect) {
  const std::string choice = "       >>IF LOOSE DEFINED\n       >>SOURCE FREE\n       >>END-IF\n000001 A\n";
  EXPECT_EQ(pictureOf(choice, inFormat(FormatChoice::fixed)).words, "A");
  EXPECT_EQ(pictureOf("       >>DEFINE LOOSE\n" + choice, inFormat(FormatChoice::fixed)).words, "#000001 A");
  Options all = inFormat(FormatChoice::fixed);
  all.allBranches = true;
  EXPECT_EQ(pictureOf(choice, all).words, "#000001 A");
  // A copybook sees the constants in front of the statement that copies it.
  const std::map<std::string, std::string> books = {{"C", choice}};
  EXPECT_EQ(
      pictureOf("       COPY C.\n       >>DEFINE LOOSE\n       COPY C.\n", inFormat(FormatChoice::detect), books).words,
      "A #000001 A");
}

TEST(Format, CopybookMayDifferFromItsProgram) {
  const std::map<std::string, std::string> books = {{"FREE", "01 a.\n  05 b pic x.\n"},
                                                    {"FIXED", "      * note\n000100 01 A.\n"}};
  EXPECT_EQ(pictureOf("           COPY FREE.\n", {}, books).places,
            "#01<1/1:1> A<1/1:4> .<1/1:5> #05<1/2:3> B<1/2:6> PIC<1/2:8> {X}<1/2:12> .<1/2:13>");
  EXPECT_EQ(pictureOf("copy fixed.\n", inFormat(FormatChoice::detect), books).words, "#01 A .");
  // What it inherits is the format in force where it is copied.
  const std::map<std::string, std::string> indented = {{"C", "a\n           b\n"}};
  EXPECT_EQ(pictureOf("       >>SOURCE FREE\n           copy c.\n", inFormat(FormatChoice::fixed), indented).words,
            "A B");
  EXPECT_EQ(
      pictureOf(">>SOURCE FIXED\n       COPY C.\n>>SOURCE FREE\n++INCLUDE C\n", inFormat(FormatChoice::free), indented)
          .words,
      "B A B");
}

} // namespace
} // namespace cobol
