#include <gtest/gtest.h>

#include <fmt/format.h>

#include "app/command.hpp"
#include "platform/runtime/text.hpp"

namespace {

// A caller, a copybook that both share, and a program that has nothing to do with accounts.
const char* const kRecord =
    "01 ACCT-REC.\n   05 ACCT-NO PIC 9(8).\n   05 ACCT-NO-X REDEFINES ACCT-NO PIC X(8).\n   05 ACCT-NAME PIC X(20).\n";
const char* const kPay = "IDENTIFICATION DIVISION.\nPROGRAM-ID. PAY.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n"
                         "COPY ACCTREC.\n01 WS-KEY PIC 9(8).\n01 WS-LAST PIC 9(8).\n01 WS-OTHER PIC X(20).\n"
                         "PROCEDURE DIVISION.\nMAIN.\n    MOVE ACCT-NO TO WS-KEY.\n    IF WS-KEY = WS-LAST\n       "
                         "DISPLAY WS-LAST\n    END-IF.\n"
                         "    MOVE ACCT-NAME TO WS-OTHER.\n    STOP RUN.\n";
const char* const kPlain =
    "IDENTIFICATION DIVISION.\nPROGRAM-ID. PLAIN.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n01 N PIC 9.\n"
    "PROCEDURE DIVISION.\n    ADD 1 TO N.\n    STOP RUN.\n";

} // namespace

class Road : public CommandTest {
 protected:
  void SetUp() override {
    write("src/PAY.cbl", fixedForm(kPay));
    write("src/PLAIN.cbl", fixedForm(kPlain));
    write("copy/ACCTREC.cpy", fixedForm(kRecord));
  }
  void project() {
    good("init");
    good("add --project accounts src --copybooks copy");
    good("verify");
  }
  // "NAME status comment" of each name in a list.
  std::string lists() {
    std::string text;
    for (const auto& name : good("datanames --status any --json").objects())
      text += fmt::format("{} {} {}\n", name["name"].get<std::string>(), name["status"].get<std::string>(),
                          name["comment"].is_null() ? "-" : name["comment"].get<std::string>());
    return text;
  }
};

TEST_F(Road, ImpactFollowsTheValueAndWritesTheReport) {
  const Result result = good("impact src --copybooks copy --like ACCT-NO -o out.html --project accounts");
  EXPECT_EQ(result.out, "verified 2, unchanged 0, not verified 0; 24 lines, 8 datanames, 4 relationships\n"
                        "Program          Datanames  Affected  Affected usages  Usages(%)  Size  Reached by\n"
                        "---------------  ---------  --------  ---------------  ---------  ----  ----------\n"
                        "PAY                      7         4                5      71.4%  XL    names\n"
                        "---------------  ---------  --------  ---------------  ---------  ----  ----------\n"
                        "1 of 2 programs          8         4                5      62.5%\n"
                        "names like ACCT-NO, widened by 3 round(s) of synonyms\n"
                        "report: out.html\n");
  const std::string report = platform::readText(m_place.file("out.html"));
  EXPECT_NE(report.find("<b>           MOVE ACCT-NO TO WS-KEY.</b>"), std::string::npos);
  EXPECT_EQ(report.find("PLAIN"), std::string::npos);
  EXPECT_EQ(good("-C tarnsift-base datanames --status affected --json").objects().size(), 4U);
  // The second run reuses base, project and analyses and finds the same.
  const Result again = good("impact src --copybooks copy --like ACCT-NO -o again.html --project accounts");
  EXPECT_NE(again.out.find("verified 0, unchanged 2"), std::string::npos);
  EXPECT_NE(again.out.find("PAY                      7         4"), std::string::npos);
}

TEST_F(Road, DepthEndsTheWalk) {
  good("impact src --copybooks copy --like ACCT-NO --depth 1 -C base --project accounts");
  folder += "/base";
  EXPECT_EQ(lists(), "ACCT-NO affected matches 'Names:ACCT-NO' search criteria\n"
                     "ACCT-NO-X affected redef of ACCT-NO\n"
                     "WS-KEY affected Move of ACCT-NO\n");
}

TEST_F(Road, FilterAndSynonymsFillTheListsStepByStep) {
  project();
  EXPECT_EQ(good("filter --like '*ACCT*' --unlike '*-REC' --to working").out,
            "Working 3 (+3), Affected 0 (+0), Clean 0 (+0); 1 of 2 program(s) changed\n");
  good("filter --like ACCT-NAME --to delete");
  good("filter 'Declaration:Size 8' --to affected"); // does not override what is sorted
  good("synonyms --in working --to clean");
  EXPECT_EQ(lists(), "ACCT-NO working matches 'Names:*ACCT* but not *-REC' search criteria\n"
                     "ACCT-NO-X working matches 'Names:*ACCT* but not *-REC' search criteria\n"
                     "WS-KEY affected matches 'Declaration:Size 8' search criteria\n"
                     "WS-LAST affected matches 'Declaration:Size 8' search criteria\n");
  EXPECT_EQ(
      good("filter --like NOTHING --to working").out,
      "None of the lists was changed.\nWorking 2 (+0), Affected 2 (+0), Clean 0 (+0); 0 of 2 program(s) changed\n");
  const auto programs = good("programs --json").objects();
  EXPECT_EQ(programs.at(0)["working"], 2);
  EXPECT_EQ(programs.at(0)["affected"], 2);
}

TEST_F(Road, AProgramSelectionLimitsWritingCommandsAndMustMatch) {
  project();
  good("filter --like '*' --to working --program 'PL*'");
  EXPECT_EQ(lists(), "N working matches 'Names:*' search criteria\n");
  const Result none = run("filter --like '*' --to working --program ZZ");
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.error, "tarnsift: no verified program matches 'ZZ'\n");
}

TEST_F(Road, ReportsComeInThreeFormatsFromTheSameRecords) {
  project();
  good("filter --like 'ACCT-N*' --to affected");
  EXPECT_EQ(good("report affected --format csv").out,
            "Program,Dataname,Comment,File,Line,Column\r\n"
            "PAY,ACCT-NO,matches 'Names:ACCT-N*' search criteria,copy\\ACCTREC.cpy,2,14\r\n"
            "PAY,ACCT-NO-X,matches 'Names:ACCT-N*' search criteria,copy\\ACCTREC.cpy,3,14\r\n"
            "PAY,ACCT-NAME,matches 'Names:ACCT-N*' search criteria,copy\\ACCTREC.cpy,4,14\r\n");
  const auto rows = good("report possible --format json").objects();
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0]["status"], "Affected");
  EXPECT_EQ(rows[0]["line"], 2);
  const auto code = good("report code --format json").objects();
  std::string marked;
  for (const auto& line : code)
    if (line["marked"].get<bool>())
      marked += fmt::format("{}:{}\n", line["file"].get<std::string>(), line["line"].get<int>());
  EXPECT_EQ(marked, "src\\PAY.cbl:11\nsrc\\PAY.cbl:15\ncopy\\ACCTREC.cpy:2\ncopy\\ACCTREC.cpy:4\n");
  const std::string file = good("report affected").out;
  EXPECT_TRUE(file.ends_with("Output/accounts Affected Datanames.html\n")) << file;
}

TEST_F(Road, ReportsSpeakTheLanguageAskedFor) {
  project();
  good("filter --like ACCT-NO --to affected --language ko");
  good("filter --like ACCT-NAME --to affected --language ja");
  EXPECT_EQ(good("report affected --format csv --language ja").out,
            "プログラム,データ名,コメント,ファイル,行,桁\r\n"
            "PAY,ACCT-NO,검색 조건 'Names:ACCT-NO'에 일치,copy\\ACCTREC.cpy,2,14\r\n"
            "PAY,ACCT-NAME,検索条件 'Names:ACCT-NAME' に一致,copy\\ACCTREC.cpy,4,14\r\n");
  EXPECT_EQ(good("--language ko report possible --format json").objects().at(0)["status"], "영향 있음")
      << "keys stay as they are";
  EXPECT_TRUE(good("report affected --language ja").out.ends_with("Output/accounts 影響を受けるデータ名.html\n"));
  EXPECT_EQ(run("report affected --language de").status, 2);
}

TEST_F(Road, AReportOnStandardOutputIsAppendedToWhatStandsThere) {
  project();
  good("filter --like ACCT-NO --to affected");
  write("all.csv", "before\n");
  good("report affected --format csv >>all.csv && echo behind >>all.csv && true");
  const std::string all = platform::readText(m_place.file("all.csv"));
  EXPECT_TRUE(all.starts_with("before\nProgram,")) << all;
  EXPECT_TRUE(all.ends_with(",2,14\r\nbehind\n")) << all;
}

TEST_F(Road, DecisionsOutliveAChangedSource) {
  project();
  good("filter --like 'WS-*' --to clean");
  // A line goes in, and a name goes out of the data division but is still used; then it goes out of the text as well.
  std::string changed = kPay;
  changed.replace(changed.find("01 WS-OTHER"), 0, "01 WS-NEW PIC X.\n");
  changed.replace(changed.find("01 WS-LAST PIC 9(8).\n"), 21, "");
  write("src/PAY.cbl", fixedForm(changed));
  const std::string first = good("verify").out;
  EXPECT_NE(first.find("verified 1, unchanged 1"), std::string::npos);
  EXPECT_NE(first.find("decisions carried 2, moved 1, archived 0, restored 0\n"), std::string::npos) << first;
  const std::string comment = " clean matches 'Names:WS-*' search criteria\n";
  EXPECT_EQ(lists(), "WS-KEY" + comment + "WS-OTHER" + comment + "WS-LAST" + comment);
  for (auto at = changed.find("WS-LAST"); at != std::string::npos; at = changed.find("WS-LAST"))
    changed.replace(at, 7, "WS-NEW");
  write("src/PAY.cbl", fixedForm(changed));
  EXPECT_NE(good("verify").out.find("archived 1, restored 0; 'tarnsift carried' lists"), std::string::npos);
  EXPECT_EQ(lists(), "WS-KEY" + comment + "WS-OTHER" + comment);
  const auto left = good("carried --json").objects();
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0]["name"], "WS-LAST");
  EXPECT_EQ(left[0]["status"], "clean");
  EXPECT_TRUE(std::string(left[0]["when"]).starts_with("20")) << left[0];
  write("src/PAY.cbl", fixedForm(kPay));
  EXPECT_NE(good("verify").out.find("archived 0, restored 1\n"), std::string::npos);
  EXPECT_EQ(good("carried").out, "nothing was left behind\n");
  EXPECT_EQ(lists(), "WS-KEY" + comment + "WS-LAST" + comment + "WS-OTHER" + comment)
      << "what was decided comes back with the name";
}

TEST_F(Road, ARenamedNameTakesTheDecisionOnceThatIsAccepted) {
  project();
  good("filter --like WS-LAST --to clean");
  write("src/PAY.cbl", fixedForm(platform::replaceAll(kPay, "WS-LAST", "WS-FINAL")));
  good("verify");
  const auto left = good("carried --json").objects();
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0]["proposed"], "PAY:WS-FINAL");
  EXPECT_EQ(lists(), "");
  const Result none = run("carried --accept 'OTHER*'");
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.error, "tarnsift: no proposal of this project matches\n");
  good("move --to working WS-FINAL");
  const Result refused = run("carried --accept ws-last");
  EXPECT_EQ(refused.status, 1);
  EXPECT_NE(refused.error.find("PAY:WS-FINAL was decided on its own"), std::string::npos) << refused.error;
  EXPECT_EQ(lists(), "WS-FINAL working -\n");
  good("delete --yes WS-FINAL");
  EXPECT_EQ(good("carried --accept").out, "accepted 1 decision(s)\n");
  EXPECT_EQ(lists(), "WS-FINAL clean matches 'Names:WS-LAST' search criteria\n");
  EXPECT_EQ(good("carried").out, "nothing was left behind\n");
}

TEST_F(Road, LookingShowsUsesAndRelations) {
  project();
  std::string uses;
  for (const auto& use : good("usages ws-key --json").objects())
    uses +=
        fmt::format("{}:{} {}\n", use["line"].get<int>(), use["column"].get<int>(), use["access"].get<std::string>());
  EXPECT_EQ(uses, "11:28 write\n12:15 read\n");
  std::string pairs;
  for (const auto& pair : good("relations --json WS-KEY").objects())
    pairs += fmt::format("{} {} {}\n", pair["from_name"].get<std::string>(), pair["kind"].get<std::string>(),
                         pair["to_name"].get<std::string>());
  EXPECT_EQ(pairs, "ACCT-NO Move WS-KEY\nWS-KEY Comparison WS-LAST\n");
  const auto slots = good("datanames --like 'WS-KEY' --json").objects();
  EXPECT_EQ(slots.at(0)["position"], 0);
  EXPECT_EQ(slots.at(0)["size"], 8);
  EXPECT_TRUE(slots.at(0)["status"].is_null());
}

TEST_F(Road, WhatTheAnalyserRemarkedIsKeptAndCounted) {
  write("src/ODD.cbl", fixedForm("IDENTIFICATION DIVISION.\nPROGRAM-ID. ODD.\nDATA DIVISION.\nWORKING-STORAGE "
                                 "SECTION.\nCOPY NOWHERE.\n01 A PIC X.\n"
                                 "PROCEDURE DIVISION.\n    MOVE MISSING-NAME TO A.\n    STOP RUN.\n"));
  good("init");
  good("add --project accounts src --copybooks copy");
  const std::string out = good("verify").out;
  EXPECT_NE(out.find("warnings and errors: CopyMissing 1, Unresolved 1; 'tarnsift diagnostics' lists them\n"),
            std::string::npos)
      << out;
  const std::string text = good("diagnostics --program ODD").out;
  EXPECT_NE(text.find("ODD.cbl:5:"), std::string::npos) << text;
  EXPECT_NE(text.find("MISSING-NAME"), std::string::npos) << text;
  const auto programs = good("diagnostics --json").objects();
  ASSERT_EQ(programs.size(), 3U);
  EXPECT_EQ(programs[0]["program"], "ODD");
  EXPECT_EQ(programs[0]["statements"], 2);
  EXPECT_EQ(programs[0]["understood"], 2);
  ASSERT_EQ(programs[0]["diagnostics"].size(), 2U);
  EXPECT_EQ(programs[0]["diagnostics"][0]["code"], "CopyMissing");
  EXPECT_EQ(programs[0]["diagnostics"][0]["line"], 5);
  EXPECT_TRUE(programs[1]["diagnostics"].empty());
}

TEST_F(Road, TheDialectCanBeSetInShort) {
  write(
      "src/BIN.cbl",
      fixedForm("IDENTIFICATION DIVISION.\nPROGRAM-ID. BIN.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n01 P POINTER.\n"
                "PROCEDURE DIVISION.\n    STOP RUN.\n"));
  project();
  EXPECT_EQ(good("datanames --like P --json").objects().at(0)["size"], 4);
  good("verify --dialect gnu");
  EXPECT_EQ(good("datanames --like P --json").objects().at(0)["size"], 8);
  EXPECT_EQ(run("verify --dialect cobol").status, 2);
}
