#include "orvane/report_rows.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orvane;
using testing::ElementsAre;

namespace {

FinishedReport report(const std::vector<ReportRecord>& records) {
  FinishedReport made;
  made.columns = readRecordFormat("<F><Program CAPTION=\"Program\"/><Comment CAPTION=\"Comment\"/>"
                                  "<Usages CAPTION=\"Usages(%)\"/></F>");
  made.records = std::make_shared<RecordFile>();
  for (const ReportRecord& record : records)
    made.records->append(record);
  return made;
}

std::vector<std::string> shown(const ReportRows& rows) {
  std::vector<std::string> all;
  for (std::size_t row = 0; row < rows.count(); ++row) {
    std::string line;
    for (std::size_t field = 0; field < rows.fields().size(); ++field)
      line += (field ? "|" : "") + std::string(rows.cell(row, field));
    all.push_back(line);
  }
  return all;
}

} // namespace

TEST(ReportRows, ReadInPiecesSortedAndFilteredAtAnyTime) {
  ReportRows rows(report({{"PAY01", "Größe two", "     12.5%"},
                          {"acct", "", "      0.0%"},
                          {"PAY02", "two\nlines", "    150.0%"},
                          {"Bill", "Two", "      9.0%"}}));
  EXPECT_TRUE(rows.readMore(2));
  EXPECT_EQ(rows.count(), 0u); // read, not shown yet
  rows.join();
  EXPECT_THAT(shown(rows), ElementsAre("PAY01|Größe two|12.5%", "acct||0.0%"));
  rows.filter("TWO");
  EXPECT_THAT(shown(rows), ElementsAre("PAY01|Größe two|12.5%"));
  EXPECT_FALSE(rows.readMore(10));
  rows.join();
  EXPECT_THAT(shown(rows), ElementsAre("PAY01|Größe two|12.5%", "PAY02|two\nlines|150.0%", "Bill|Two|9.0%"));
  rows.sort(2, true); // by value, not by letters
  EXPECT_THAT(shown(rows), ElementsAre("PAY02|two\nlines|150.0%", "PAY01|Größe two|12.5%", "Bill|Two|9.0%"));
  rows.filter(" pay  LINES ");
  EXPECT_THAT(shown(rows), ElementsAre("PAY02|two\nlines|150.0%"));
  rows.filter("");
  rows.sort(0, false);
  EXPECT_THAT(shown(rows),
              ElementsAre("acct||0.0%", "Bill|Two|9.0%", "PAY01|Größe two|12.5%", "PAY02|two\nlines|150.0%"));
  rows.sort(std::nullopt, false);
  EXPECT_EQ(shown(rows).front(), "PAY01|Größe two|12.5%");
}

TEST(ReportRows, LateRowsTakeTheirSortedPlace) {
  ReportRows rows(report({{"B", "", ""}, {"D", "", ""}, {"A", "", ""}, {"C", "", ""}}));
  rows.readMore(2);
  rows.sort(0, false);
  rows.readMore(2);
  EXPECT_EQ(rows.waiting(), 2u);
  rows.join();
  EXPECT_THAT(shown(rows), ElementsAre("A||", "B||", "C||", "D||"));
}
