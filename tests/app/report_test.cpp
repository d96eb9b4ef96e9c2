#include <gtest/gtest.h>

#include <fmt/format.h>

#include "app/command.hpp"
#include "orvane/repository_file.hpp"
#include "orvane/zip_reader.hpp"
#include "platform/runtime/text.hpp"

namespace {

const char* const kPay = "IDENTIFICATION DIVISION.\nPROGRAM-ID. PAY.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n"
                         "01 ACCT-NO PIC 9(8).\n01 ACCT-NAME PIC X(20).\n01 WS-KEY PIC 9(8).\n01 WS-OTHER PIC X(20).\n"
                         "PROCEDURE DIVISION.\nMAIN.\n    MOVE ACCT-NO TO WS-KEY.\n    DISPLAY ACCT-NO.\n"
                         "    MOVE ACCT-NAME TO WS-OTHER.\n    STOP RUN.\n";
const char* const kPlain =
    "IDENTIFICATION DIVISION.\nPROGRAM-ID. PLAIN.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n01 N PIC 9.\n"
    "PROCEDURE DIVISION.\n    ADD 1 TO N.\n    STOP RUN.\n";

} // namespace

class Reports : public CommandTest {
 protected:
  void project() {
    write("src/PAY.cbl", fixedForm(kPay));
    write("src/PLAIN.cbl", fixedForm(kPlain));
    good("init");
    good("add --project accounts src");
    good("verify");
    good("filter --like ACCT-NO --to affected");
    good("filter --like WS-KEY --to working");
  }
  void setSize(const std::string& program, const char* size) {
    const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(m_place.file("Orvane.db")));
    const auto object = repository->FindByName(orvane::kSourceType, program, 0);
    object->BeginUpdate();
    object->SetAttribute("ChangeMagnitude", size);
    object->CommitUpdate();
  }
  // A program with so many names, all affected, that its reports take some hundred kilobytes.
  void largeProject() {
    std::string text = kPay;
    std::string items;
    for (int i = 0; i < 3000; ++i)
      items += fmt::format("01 ITEM-{} PIC X(8).\n", i);
    text.insert(text.find("01 ACCT-NO"), items);
    write("src/PAY.cbl", fixedForm(text));
    good("init");
    good("add --project accounts src");
    good("verify");
    good("filter --like 'ITEM-*' --to affected");
  }
  std::vector<std::string> filesIn(const std::string& name) { return platform::walkFiles(m_place.file(name)); }
};

TEST_F(Reports, EveryKindComesInEveryFormat) {
  project();
  for (const std::string kind : {"affected", "possible", "clean", "code", "metrics", "effort"}) {
    for (const std::string format : {"html", "csv", "json", "xlsx"}) {
      const std::string file = "out/" + kind + "." + format;
      platform::createFolders(m_place.file("out"));
      EXPECT_EQ(good("report " + kind + " --format " + format + " -o " + file).out, file + "\n");
      const std::string text = platform::readText(m_place.file(file));
      const std::string start = format == "html"   ? "<html>"
                                : format == "csv"  ? "Program,"
                                : format == "xlsx" ? "PK"
                                : kind == "clean"  ? ""
                                                   : "{\"program\":\"PAY\"";
      EXPECT_TRUE(text.starts_with(start)) << file << ": " << text.substr(0, 100);
    }
  }
  EXPECT_EQ(filesIn("out").size(), 24U) << "nothing else is left there";
  EXPECT_TRUE(good("report metrics --format xlsx").out.ends_with("Output/accounts Metrics Report.xlsx\n"));
  EXPECT_TRUE(good("report effort").out.ends_with("Output/accounts Effort.html\n"));
  const std::string piped = good("report effort --format xlsx -o -").out;
  write("piped.xlsx", piped);
  EXPECT_EQ(orvane::ZipReader(m_place.file("piped.xlsx")).names(),
            orvane::ZipReader(m_place.file("out/effort.xlsx")).names());
  EXPECT_EQ(run("report metrics --format pdf").status, 2);
}

// PAY: 1 of 4 names, 2 of 5 usages.
TEST_F(Reports, MetricsAndEffortSayTheSameShares) {
  project();
  EXPECT_EQ(good("report metrics --format json").out,
            "{\"program\":\"PAY\",\"declaration_share\":25.0,\"usage_share\":40.0}\n"
            "{\"program\":\"PLAIN\",\"declaration_share\":0.0,\"usage_share\":0.0}\n");
  EXPECT_EQ(good("report metrics --format csv --language ja --program 'PA*'").out,
            "プログラム,宣言(%),使用箇所(%)\r\nPAY,25.0,40.0\r\n");
  setSize("PAY", "L");
  EXPECT_EQ(
      good("report effort --format csv").out,
      "Program,Change size,Working,Affected,Clean,Declarations,Declarations(%),Affected usages,Usages,Usages(%)\r\n"
      "PAY,L,1,1,0,4,25.0,2,5,40.0\r\nPLAIN,,0,0,0,1,0.0,0,1,0.0\r\n");
  const auto objects = good("report effort --format json").objects();
  ASSERT_EQ(objects.size(), 3U);
  EXPECT_EQ(objects[0].dump(),
            "{\"affected\":1,\"affected_usages\":2,\"clean\":0,\"datanames\":4,\"declaration_share\":"
            "25.0,\"program\":\"PAY\",\"size\":\"L\",\"usage_share\":40.0,\"usages\":5,\"working\":1}");
  EXPECT_EQ(objects[2]["summary"]["L"]["affected_usages"], 2);
  EXPECT_EQ(objects[2]["summary"]["none"]["programs"], 1);
  EXPECT_EQ(objects[2]["summary"]["total"]["declaration_share"], 20.0);
}

TEST_F(Reports, TheEffortSheetOnlyLooksAndLeavesOutWhatItCannotRead) {
  write("src/PAY.cbl", fixedForm(kPay));
  write("src/PLAIN.cbl", fixedForm(kPlain));
  good("init");
  good("add --project accounts src");
  good("verify");
  EXPECT_TRUE(good("report effort --format csv --program PAY").out.ends_with("\r\nPAY,,0,0,0,4,0.0,0,5,0.0\r\n"))
      << "a project whose window was never open";
  for (const auto& file : filesIn("Analysis"))
    if (file.starts_with("PLAIN") && file.ends_with(".kva")) write("Analysis/" + file, "damaged");
  const auto result = run("report effort --format csv");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.error.find("tarnsift: PLAIN: not in the report: "), std::string::npos) << result.error;
  EXPECT_NE(result.out.find("PAY,"), std::string::npos);
  EXPECT_EQ(result.out.find("PLAIN,"), std::string::npos);
}

TEST_F(Reports, AFolderInTheWayIsOneClearErrorAndNothingIsLeft) {
  project();
  platform::createFolders(m_place.file("out/there"));
  for (const std::string format : {"html", "csv", "json", "xlsx"}) {
    const auto result = run("report metrics --format " + format + " -o out/there");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "tarnsift: out/there: is a folder; name a file\n");
  }
  EXPECT_TRUE(filesIn("out").empty());
}

TEST_F(Reports, AFullDiskIsOneClearErrorAndTheOldFileStays) {
  largeProject();
  // Records fit below the limit; the page, and the workbook before it is packed, do not.
  for (const std::string format : {"html", "xlsx"}) {
    write("out/names." + format, "before");
    const std::string shell = "cd '" + folder + "' && (trap '' XFSZ; ulimit -f 1024; XDG_CONFIG_HOME='" +
                              m_place.file(".config") + "' '" TARNSIFT_COMMAND "' report affected --format " + format +
                              " -o out/names." + format + ") >.out 2>&1";
    EXPECT_NE(std::system(shell.c_str()), 0) << format;
    const std::string error = platform::readText(m_place.file(".out"));
    EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 1) << error;
    EXPECT_NE(error.find(format == "html" ? "out/names.html: the report could not be written" : "the disk is full"),
              std::string::npos)
        << error;
    EXPECT_EQ(platform::readText(m_place.file("out/names." + format)), "before");
  }
  EXPECT_EQ(filesIn("out").size(), 2U);
  EXPECT_EQ(run("report affected --format xlsx -o /dev/full").status, 1);
  good("report affected --format xlsx -o out/names.xlsx");
  EXPECT_GT(platform::readText(m_place.file("out/names.xlsx")).size(), 10000U);
}

TEST_F(Reports, ALinkLeadsToTheNewReport) {
  project();
  write("real.csv", "before");
  ASSERT_EQ(std::system(("ln -s real.csv '" + m_place.file("link.csv") + "'").c_str()), 0);
  good("report clean --format csv -o link.csv");
  EXPECT_TRUE(platform::readText(m_place.file("real.csv")).starts_with("Program,"));
}
