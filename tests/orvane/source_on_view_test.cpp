#include "orvane/source_on_view.hpp"

#include <gtest/gtest.h>

#include "cobol/analyse.hpp"
#include "platform/files/files.hpp"

namespace {

using namespace orvane;

constexpr const char* kText = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. PAY.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       COPY REC REPLACING ==:T:== BY ==IN==.
       COPY REC REPLACING ==:T:== BY ==OUT==.
       01  THIS-
      -    NAME-
      -    GOES-ON PIC X(9).
       PROCEDURE DIVISION.
           MOVE IN-NAME TO THIS-NAME-GOES-ON OUT-
      -    NAME
           MOVE THIS-NA
      -    ME-GOES-ON TO IN-NAME.
)";

// As the analysis file gives it back.
StoreData stored() {
  const cobol::Analysis analysis =
      cobol::analyse(kText, {}, {{"REC", "       01 :T:-REC.\n          05 :T:-NAME PIC X(9).\n"}});
  return readStoreBytes(storeBytes(packAnalysis(analysis, 1, [](const std::string& path) { return path; })), "x");
}

/// Every mark as "kind file/line:column+length", further parts of a name in brackets.
std::string marked(const StoreData& data, const std::string& kvid) {
  static constexpr const char* kKinds[] = {"D", "R", "W", "B"};
  std::string all;
  for (const SourceMark& mark : marksOf(data, static_cast<std::uint32_t>(data.find(kvid)))) {
    const std::string text = std::string(kKinds[static_cast<std::size_t>(mark.kind)]) + ' ' +
                             std::to_string(mark.place.file) + '/' + std::to_string(mark.place.line) + ':' +
                             std::to_string(mark.place.column) + '+' + std::to_string(mark.place.length);
    all += (all.empty() ? "" : ", ") + (mark.part ? "(" + text + ")" : text);
  }
  return all;
}

} // namespace

TEST(SourceMarks, CoverAllPartsOfAName) {
  const StoreData data = stored();
  EXPECT_EQ(marked(data, "PAY:THIS-NAME-GOES-ON"),
            "D 0/7:12+5, (D 0/8:12+5), (D 0/9:12+7), W 0/11:28+17, R 0/13:17+7, (R 0/14:12+10)");
  EXPECT_EQ(marked(data, "PAY:IN-REC.IN-NAME"), "(D 0/5:40+2), R 0/11:17+7, W 0/14:26+7, D 1/2:14+8");
  EXPECT_EQ(marked(data, "PAY:OUT-REC.OUT-NAME"), "(D 0/6:40+3), W 0/11:46+4, (W 0/12:12+4), D 1/2:14+8");
}

TEST(SourceMarks, APlaceOfItsOwnIsNoPart) {
  StoreData data = stored();
  const auto& item = data.constructs[static_cast<std::size_t>(data.find("PAY:THIS-NAME-GOES-ON"))];
  data.furtherPlaces[0] = data.instances[item.firstInstance].place;
  for (PlaceRecord& place : data.furtherPlaces)
    place = data.furtherPlaces[0];
  EXPECT_EQ(marked(data, "PAY:THIS-NAME-GOES-ON"), "D 0/7:12+5, W 0/11:28+17, R 0/13:17+7");
}

TEST(SourceMarks, AnalysesOfTheEarlierFormatAreRead) {
  const StoreData data = readStore(TARNSIFT_SOURCE_DIR "/tests/orvane/golden/earlier.kva");
  EXPECT_EQ(marked(data, "OLD:A"), "D 0/5:11+1, R 0/8:17+1");
  EXPECT_EQ(marked(data, "OLD:B"), "D 0/6:11+1, W 0/8:22+1");
}
