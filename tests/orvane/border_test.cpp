#include <gtest/gtest.h>

#include <fmt/format.h>

#include "cobol/analyse.hpp"
#include "orvane/border.hpp"

namespace {

using orvane::Border;
using orvane::Crossing;
using orvane::StoreData;

// A program whose file F is FDD with those record entries, those of working storage, and those statements.
StoreData analysed(const std::string& records, const std::string& storage, const std::string& statements,
                   const std::string& linkage = "", const std::string& parameters = "") {
  std::string text = "IDENTIFICATION DIVISION.\nPROGRAM-ID. P.\n";
  if (!records.empty())
    text += "ENVIRONMENT DIVISION.\nINPUT-OUTPUT SECTION.\nFILE-CONTROL.\n    SELECT F ASSIGN TO FDD.\nDATA "
            "DIVISION.\nFILE SECTION.\nFD F.\n" +
            records;
  else
    text += "DATA DIVISION.\n";
  text += "WORKING-STORAGE SECTION.\n" + storage;
  if (!linkage.empty()) text += "LINKAGE SECTION.\n" + linkage;
  text += "PROCEDURE DIVISION" + parameters + ".\n    " + statements + "\n    GOBACK.\n";
  cobol::Options options;
  options.format = cobol::FormatChoice::free;
  return orvane::packAnalysis(cobol::analyse(text, options, {}), 1, [](const std::string& path) { return path; });
}

std::uint32_t construct(const StoreData& data, const std::string& name) {
  for (std::uint32_t i = 0; i < data.constructs.size(); ++i)
    if (data.text(data.constructs[i].name) == name) return i;
  ADD_FAILURE() << "no " << name;
  return 0;
}

std::string carried(const StoreData& data, const std::string& name) {
  std::string text;
  for (const Crossing& crossing : Border(data).carriedBy(construct(data, name)))
    text += (text.empty() ? "" : "; ") + crossing.criterion("").substr(std::string("Across:").size());
  return text;
}

std::string reached(const StoreData& data, const std::string& argument, bool isFile) {
  std::string text;
  for (const std::uint32_t at : Border(data).reachedBy(orvane::crossingNamed(argument, isFile)))
    text += (text.empty() ? "" : " ") + std::string(data.text(data.constructs[at].name));
  return text;
}

const char* const kRecord = "01 REC.\n 05 NO PIC 9(8).\n 05 NAME PIC X(20).\n 05 FILLER PIC X(4).\n 05 ROWS OCCURS "
                            "3.\n  10 DAY PIC 99.\n  10 AMT PIC 9(4).\n"
                            "01 HEAD.\n 05 RUN-DATE PIC 9(6).\n 05 COUNT-OF PIC 9(5).\n";

} // namespace

TEST(Border, AFieldCarriesItsBytesAndARecordItsWholeFile) {
  const StoreData data = analysed(kRecord, "01 W PIC X.\n", "MOVE W TO W");
  EXPECT_EQ(carried(data, "NO"), "file FDD at 1-8");
  EXPECT_EQ(carried(data, "REC"), "file FDD");
  EXPECT_EQ(carried(data, "FDD"), "file FDD");
  EXPECT_EQ(carried(data, "ROWS"), "file FDD at 33-38; file FDD at 33-50; file FDD at 39-44; file FDD at 45-50");
  EXPECT_EQ(carried(data, "AMT"), "file FDD at 35-38; file FDD at 41-44; file FDD at 47-50") << "every occurrence";
  EXPECT_EQ(carried(data, "W"), "");
}

TEST(Border, BytesReachWhatLiesExactlyThereElseTheItemsOverThem) {
  const StoreData data = analysed(kRecord, "01 W PIC X.\n", "MOVE W TO W");
  const std::pair<const char*, const char*> kCases[] = {
      {"FDD at 1-8", "NO"},                   // RUN-DATE overlaps, but there is an exact one
      {"FDD at 1-6", "RUN-DATE"},             //
      {"FDD at 1-7", "NO RUN-DATE COUNT-OF"}, // nothing exact: the value must not be lost
      {"FDD at 41-44", "AMT"},                // the second row
      {"FDD at 29-32", ""},                   // FILLER
      {"FDD at 60-70", ""},                   // behind the record
      {"FDD", "REC HEAD FDD"},                // the whole
      {"OTHER at 1-8", ""},
  };
  for (const auto& [argument, names] : kCases)
    EXPECT_EQ(reached(data, argument, true), names) << argument;
}

TEST(Border, AreasReadIntoAndWrittenFromStandForTheRecord) {
  const StoreData data =
      analysed("01 REC PIC X(30).\n",
               "01 IN-AREA.\n 05 IN-NO PIC 9(8).\n 05 IN-NAME PIC X(22).\n01 OUT-AREA.\n 05 OUT-NO PIC 9(6).\n",
               "OPEN I-O F READ F INTO IN-AREA WRITE REC FROM OUT-AREA");
  EXPECT_EQ(carried(data, "IN-NO"), "file FDD at 1-8");
  EXPECT_EQ(reached(data, "FDD at 1-6", true), "OUT-AREA OUT-NO");
  EXPECT_EQ(reached(data, "FDD at 9-30", true), "IN-NAME") << "the record itself only counts bytes";
}

TEST(Border, ParametersMeetByTheirPartsAndDynamicCallsLeadNowhere) {
  const StoreData caller =
      analysed("", "01 ARGS.\n 05 A-NO PIC 9(8).\n 05 A-FLAG PIC X.\n01 ONE PIC 9(6).\n01 WHO PIC X(8).\n",
               "CALL 'SUB' USING ARGS ONE. CALL WHO USING ARGS");
  EXPECT_EQ(carried(caller, "A-NO"), "call SUB(1) at 1-8");
  EXPECT_EQ(carried(caller, "A-FLAG"), "call SUB(1) at 9-9");
  EXPECT_EQ(carried(caller, "ARGS"), "") << "whole arguments go by their relation to the slot";
  EXPECT_EQ(carried(caller, "ONE"), "call SUB(2) at 1-6");
  EXPECT_EQ(carried(caller, "SUB(1)"), "call SUB(1)");
  EXPECT_EQ(carried(caller, "?(1)"), "");
  EXPECT_EQ(reached(caller, "?(1) at 1-8", false), "");
  const StoreData callee =
      analysed("", "01 W PIC X.\n", "MOVE W TO W",
               "01 L-ARGS.\n 05 L-NO PIC 9(8).\n 05 L-FLAG PIC X.\n01 L-ONE.\n 05 L-YY PIC 99.\n 05 L-MD PIC 9(4).\n",
               " USING L-ARGS L-ONE");
  EXPECT_EQ(reached(callee, "P(1) at 1-8", false), "L-NO");
  EXPECT_EQ(reached(callee, "P(2) at 1-6", false), "L-ONE");
}

TEST(Border, CommentsTellWhereANameCameFrom) {
  const Crossing field{{true, "ACCTMST"}, orvane::SlotBytes{8, 16}};
  const Crossing whole{{false, "SUB(1)"}, std::nullopt};
  EXPECT_EQ(field.criterion("BKB020"), "Across:file ACCTMST with BKB020 at 9-16");
  EXPECT_EQ(orvane::originIn("matches 'Across:file ACCTMST with BKB020 at 9-16' search criteria"),
            "file ACCTMST with BKB020");
  EXPECT_EQ(orvane::originIn("matches 'Across:" + whole.criterion("MAIN").substr(7) + "' search criteria"),
            "call SUB(1) from MAIN");
  EXPECT_EQ(orvane::originIn("matches 'Across:call BKO110(CA) from BKO100 at 4-...' search criteria"),
            "call BKO110(CA) from BKO100");
  EXPECT_EQ(orvane::originIn("Move of ACROSS-NO"), "");
  EXPECT_EQ(orvane::slotIn("matches 'Across:file ACCTMST with BKB020 at 9-16' search criteria"), field.slot);
  EXPECT_EQ(orvane::slotIn("redef of X"), std::nullopt);
  for (const Crossing& crossing : {field, whole}) {
    const std::string name = crossing.criterion("PROG");
    EXPECT_EQ(orvane::crossingNamed(name.substr(std::string("Across:file ").size()), crossing.slot.isFile), crossing)
        << name;
  }
}
