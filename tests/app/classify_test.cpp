#include <gtest/gtest.h>

#include <fmt/format.h>

#include "app/command.hpp"

namespace {

const char* const kOne = "IDENTIFICATION DIVISION.\nPROGRAM-ID. ONE.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n"
                         "01 A-REC.\n   05 A-KEY PIC 9(4).\n   05 A-KEY-X REDEFINES A-KEY PIC X(4).\n   05 A-OLD PIC "
                         "X.\n01 B-KEY PIC 9(4).\n01 C-KEY PIC 9(4).\n"
                         "01 B-REC.\n   05 A-OLD PIC X.\n"
                         "PROCEDURE DIVISION.\n    MOVE A-KEY TO B-KEY.\n    IF B-KEY = C-KEY\n       DISPLAY C-KEY\n  "
                         "  END-IF.\n    STOP RUN.\n";

} // namespace

class Classify : public CommandTest {
 protected:
  void SetUp() override {
    write("src/ONE.cbl", fixedForm(kOne));
    std::string two = kOne;
    two.replace(two.find("ONE"), 3, "TWO");
    write("src/TWO.cbl", fixedForm(two));
    good("init");
    good("add --project p src");
    good("verify");
  }
  // Names in the lists of one program, with their comments; then its counts.
  std::string lists(const std::string& program) {
    std::string text;
    for (const auto& name : good("datanames --status any --json --program " + program).objects())
      text += fmt::format("{} {} [{}]\n", name["kvid"].get<std::string>().substr(4), name["status"].get<std::string>(),
                          name["comment"].is_null() ? "" : name["comment"].get<std::string>());
    for (const auto& counts : good("programs --json --program " + program).objects())
      text += fmt::format("{} {} {}\n", counts["working"].get<int>(), counts["affected"].get<int>(),
                          counts["clean"].get<int>());
    return text;
  }
};

TEST_F(Classify, AWholeClassificationCanBeScripted) {
  good("move --to affected A-KEY B-KEY --program ONE");
  good("move --to working --like 'A-OLD' 'C-*'");
  EXPECT_EQ(lists("ONE"), "A-REC.A-KEY affected []\nA-REC.A-OLD working []\nB-KEY affected []\nC-KEY working "
                          "[]\nB-REC.A-OLD working []\n3 2 0\n");
  EXPECT_EQ(lists("TWO"), "A-REC.A-OLD working []\nC-KEY working []\nB-REC.A-OLD working []\n3 0 0\n");
  good("comment B-KEY --program ONE --text ' key & \"more\" '");
  good("move --to clean --kvid ONE:B-REC.A-OLD ONE:B-KEY");
  EXPECT_EQ(lists("ONE"), "A-REC.A-KEY affected []\nA-REC.A-OLD working []\nB-KEY clean [ key & \"more\" ]\nC-KEY "
                          "working []\nB-REC.A-OLD clean []\n2 1 2\n");
  good("delete --yes A-OLD");
  EXPECT_EQ(lists("ONE"), "A-REC.A-KEY affected []\nB-KEY clean [ key & \"more\" ]\nC-KEY working []\n1 1 1\n");
  good("unused --from working");
  good("move --to working A-REC --program TWO");
  EXPECT_EQ(good("unused --from working --program TWO").out,
            "Working 2 (-1), Affected 1 (+0), Clean 1 (+0); 1 of 2 program(s) changed\n")
      << "C-KEY is used, the record is not; ONE keeps its C-KEY";
}

TEST_F(Classify, ANameInNoListKeepsItsCommentWhenItIsPlaced) {
  good("comment C-KEY --program ONE --text waiting");
  EXPECT_EQ(lists("ONE"), "0 0 0\n");
  good("move --to clean C-KEY --program ONE");
  EXPECT_EQ(lists("ONE"), "C-KEY clean [waiting]\n0 0 1\n");
}

TEST_F(Classify, DeleteAsksOnceAndRefusesWithoutATerminal) {
  good("move --to working B-KEY C-KEY");
  const Result refused = run("delete B-KEY C-KEY");
  EXPECT_EQ(refused.status, 2);
  EXPECT_EQ(refused.error, "tarnsift: delete would take 4 name(s) out of their lists; say --yes\n");
  EXPECT_EQ(lists("ONE"), "B-KEY working []\nC-KEY working []\n2 0 0\n");
  EXPECT_EQ(good("delete --yes B-KEY C-KEY").out, "deleted 4 name(s) in 2 program(s)\n");
  EXPECT_EQ(run("delete --yes NOBODY").error, "tarnsift: no verified program has a dataname NOBODY\n");
}

TEST_F(Classify, ClearReachesTheProgramsInScope) {
  good("filter --like '?-KEY' --to working");
  good("filter --like 'A-OLD' --to clean");
  good("clear --list working --program ONE");
  EXPECT_EQ(lists("ONE"), "A-REC.A-OLD clean [matches 'Names:A-OLD' search criteria]\nB-REC.A-OLD clean [matches "
                          "'Names:A-OLD' search criteria]\n0 0 2\n");
  EXPECT_EQ(good("programs --json --program TWO").objects().at(0)["working"], 3);
  good("clear");
  EXPECT_EQ(lists("ONE") + lists("TWO"), "0 0 0\n0 0 0\n");
}

TEST_F(Classify, SynonymsAreShownWithTheirNotesAndChangeNothing) {
  good("move --to affected C-KEY --program ONE");
  std::string relatives;
  for (const auto& row : good("synonyms-of B-KEY --program ONE --json").objects())
    relatives += fmt::format("{} {} {}\n", row["name"].get<std::string>(), row["status"].dump(),
                             row["comment"].get<std::string>());
  EXPECT_EQ(relatives, "C-KEY \"affected\" \nA-KEY null Move of B-KEY\n")
      << "a stored comment stands alone, also an empty one";
  EXPECT_EQ(lists("ONE"), "C-KEY affected []\n0 1 0\n");
  EXPECT_NE(good("synonyms-of A-KEY --program ONE").out.find("redef of A-KEY"), std::string::npos);
}

TEST_F(Classify, ColumnsAreChosenByName) {
  good("columns --tick Picture size");
  std::string shown;
  for (const auto& column : good("columns --json").objects())
    if (column["shown"].get<bool>())
      shown += column["column"].get<std::string>() + ":" + column["type"].get<std::string>() + " ";
  EXPECT_EQ(shown, "Picture:String Size:Integer ");
  good("move --to working --like '*KEY*'"); // the lists carry the columns while they move
  EXPECT_EQ(run("columns --tick Colour").status, 2);
}

TEST_F(Classify, OddTextsAreStoredAsTheyAre) {
  good("add --project \"q [x].y & z!\" src");
  good("verify --project \"q [x].y & z!\"");
  const std::string project = " --project \"q [x].y & z!\" ";
  for (const std::string& text :
       {std::string("   "), std::string("a'b\"\"c]["), std::string("\xE9\x8A\x80\xE8\xA1\x8C"), std::string(255, 'x'),
        std::string(10000, 'y')}) {
    write("text", text);
    good("comment B-KEY --program ONE --text \"$(cat text)\"" + project);
    good("move --to working B-KEY --program ONE" + project);
    EXPECT_EQ(good("datanames --json --program ONE --status any" + project).objects().at(0)["comment"], text);
    good("move --to clean B-KEY --program ONE" + project);
    EXPECT_EQ(good("datanames --json --program ONE --status clean" + project).objects().at(0)["comment"], text);
  }
  EXPECT_EQ(good("datanames --json --status any --project p").objects().size(), 0U)
      << "the other project is not touched";
}
