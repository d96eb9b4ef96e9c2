#include "cobol/picture.hpp"

#include <ostream>

namespace {

using cobol::Usage;

struct PictureRow {
  std::string text;
  std::int64_t bytes;
  int digits;
  int scale;
  bool isSigned = false;
  bool decimalComma = false;
};

void PrintTo(const PictureRow& row, std::ostream* out) {
  *out << row.text;
}

class PictureSymbols : public testing::TestWithParam<PictureRow> {};

TEST_P(PictureSymbols, CountAsTheRulesSay) {
  cobol::PictureRules rules{
      .decimalComma = GetParam().decimalComma, .currencies = {{'L', 3}, {'F', 1}}, .constant = {}};
  rules.constant = [](std::string_view name) {
    return name == "WIDTH" ? std::optional<std::int64_t>(12) : std::nullopt;
  };
  const auto picture = cobol::readPicture(GetParam().text, rules);
  EXPECT_EQ(picture.bytes, GetParam().bytes);
  EXPECT_EQ(picture.digits, GetParam().digits);
  EXPECT_EQ(picture.scale, GetParam().scale);
  EXPECT_EQ(picture.isSigned, GetParam().isSigned);
  EXPECT_TRUE(picture.isValid);
}

INSTANTIATE_TEST_SUITE_P(
    Table, PictureSymbols,
    testing::Values(PictureRow{"X", 1, 0, 0}, PictureRow{"X(30)", 30, 0, 0}, PictureRow{"A(3)X(2)99", 7, 0, 0},
                    PictureRow{"9(8)", 8, 8, 0}, PictureRow{"S9(7)V99", 9, 9, 2, true},
                    PictureRow{"SV9(4)", 4, 4, 4, true}, PictureRow{"9(3)P(2)", 3, 3, -2},
                    PictureRow{"VPP9(3)", 3, 3, 5}, PictureRow{"P(2)9(3)", 3, 3, 5}, PictureRow{"N(4)", 8, 0, 0},
                    PictureRow{"NBN", 6, 0, 0}, PictureRow{"G(5)", 10, 0, 0}, PictureRow{"U(5)", 20, 0, 0},
                    PictureRow{"1(8)", 8, 0, 0}, PictureRow{"ZZ,ZZ9.99", 9, 7, 2},
                    PictureRow{"ZZ.ZZ9,99", 9, 7, 2, false, true}, PictureRow{"**9B99/99", 9, 7, 0},
                    PictureRow{"9,9,9,", 6, 3, 0}, PictureRow{"$$$,$$9.99CR", 12, 7, 2}, PictureRow{"$9(3)DB", 6, 3, 0},
                    PictureRow{"-(5)9", 6, 5, 0}, PictureRow{"+9(3)", 4, 3, 0}, PictureRow{"9(3)-", 4, 3, 0},
                    PictureRow{"+9(2).9(3)E+99", 11, 5, 3}, PictureRow{"LLL9", 6, 3, 0}, PictureRow{"FF9", 3, 2, 0},
                    PictureRow{"X(WIDTH)", 12, 0, 0}, PictureRow{"9(2147483647)V9", 2147483648, 2147483647, 1}));

TEST(Picture, KeepsCountingWhatItDoesNotKnow) {
  for (const std::string text : {"X(3)?", "9(UNKNOWN)", "", "X(", "9(-1)"}) {
    const auto picture = cobol::readPicture(text, {});
    EXPECT_FALSE(picture.isValid) << text;
    EXPECT_LE(picture.bytes, 4) << text;
  }
}

struct UsageRow {
  Usage usage;
  std::string picture;
  std::int64_t bytes;
};

std::string sizes(const std::vector<UsageRow>& rows, const cobol::Options& options, bool separate = false,
                  bool noSign = false) {
  std::string wrong;
  for (const auto& row : rows) {
    const auto picture = cobol::readPicture(row.picture, {});
    const auto* given = row.picture.empty() ? nullptr : &picture;
    const auto bytes = cobol::bytesOf({row.usage, given, separate, noSign}, options);
    if (bytes != row.bytes)
      wrong += std::string(nameOf(row.usage)) + ' ' + row.picture + ": " + std::to_string(bytes) + " not " +
               std::to_string(row.bytes) + '\n';
  }
  return wrong;
}

TEST(UsageSizes, OfTheDefaultDialect) {
  EXPECT_EQ(sizes({{Usage::display, "S9(5)", 5},
                   {Usage::comp, "9", 2},
                   {Usage::comp, "S9(4)", 2},
                   {Usage::comp, "S9(5)", 4},
                   {Usage::comp, "9(9)", 4},
                   {Usage::comp, "9(10)", 8},
                   {Usage::comp, "S9(18)", 8},
                   {Usage::comp, "9(19)", 16},
                   {Usage::comp, "9(2)P(7)", 2},
                   {Usage::comp5, "S9(9)", 4},
                   {Usage::comp5, "99", 2},
                   {Usage::comp5, "X(3)", 3},
                   {Usage::compX, "X(5)", 5},
                   {Usage::compX, "99", 1},
                   {Usage::compX, "9(4)", 2},
                   {Usage::compX, "9(7)", 3},
                   {Usage::compX, "9(9)", 4},
                   {Usage::compX, "9(12)", 5},
                   {Usage::compX, "9(14)", 6},
                   {Usage::compX, "9(16)", 7},
                   {Usage::compX, "9(18)", 8},
                   {Usage::comp3, "S9(7)", 4},
                   {Usage::comp3, "S9(6)V99", 5},
                   {Usage::comp3, "9(3)PP", 2},
                   {Usage::comp6, "9(5)", 3},
                   {Usage::comp1, "", 4},
                   {Usage::comp2, "", 8},
                   {Usage::floatExtended, "", 16},
                   {Usage::floatDecimal16, "", 8},
                   {Usage::binaryChar, "", 1},
                   {Usage::binaryShort, "", 2},
                   {Usage::binaryLong, "", 4},
                   {Usage::binaryDouble, "", 8},
                   {Usage::index, "", 4},
                   {Usage::pointer, "", 4},
                   {Usage::functionPointer, "", 4},
                   {Usage::procedurePointer, "", 8},
                   {Usage::pointer32, "", 4},
                   {Usage::national, "N(4)", 8},
                   {Usage::national, "9(4)", 8},
                   {Usage::display1, "G(3)", 6},
                   {Usage::utf8, "U(3)", 12},
                   {Usage::none, "", 0}},
                  {}),
            "");
}

TEST(UsageSizes, FollowTheOptions) {
  EXPECT_EQ(sizes({{Usage::comp, "99", 1}, {Usage::comp, "999", 2}, {Usage::comp, "9(5)", 4}},
                  {.binarySize = cobol::BinarySize::by1_2_4_8}),
            "");
  EXPECT_EQ(
      sizes(
          {{Usage::comp, "S9(6)", 3}, {Usage::comp, "S9(7)", 4}, {Usage::comp, "9(7)", 3}, {Usage::comp, "S9(12)", 6}},
          {.binarySize = cobol::BinarySize::by1to8}),
      "");
  EXPECT_EQ(sizes({{Usage::comp5, "99", 1}, {Usage::comp5, "999", 2}}, {.comp5Small = true}), "");
  EXPECT_EQ(sizes({{Usage::pointer, "", 8}, {Usage::index, "", 8}, {Usage::pointer32, "", 4}}, {.pointerBytes = 8}),
            "");
  EXPECT_EQ(sizes({{Usage::comp3, "9(7)", 4}, {Usage::comp3, "9(6)", 3}}, {}, false, true), "");
  EXPECT_EQ(sizes({{Usage::display, "S9(5)", 6}, {Usage::display, "9(5)", 5}, {Usage::national, "S9(2)", 6}}, {}, true),
            "");
}

} // namespace
