#include <gtest/gtest.h>

#include <fmt/format.h>

#include "app/command.hpp"
#include "platform/dao/dao.hpp"

class Derived : public CommandTest {
 protected:
  void SetUp() override {
    good("init");
    good("add --project bank '" TARNSIFT_SOURCE_DIR "/samples/bank/cobol' --copybooks '" TARNSIFT_SOURCE_DIR
         "/samples/bank/copy'");
    good("verify --dialect ibm --set format=fixed");
    good("filter --like '*ACCT*' --to affected");
  }
  void TearDown() override { platform::dbEngine().settle(); }
  // Status and comment of every construct of every program in the project bank.
  std::string decisions() const {
    std::string all;
    for (const auto& file : platform::walkFiles(m_place.file("Analysis"))) {
      if (!file.ends_with(".mdb")) continue;
      const auto database = platform::dbEngine().OpenDatabase(m_place.file("Analysis/" + file));
      const auto rows = database->OpenRecordset(
          "select KVID, [bank_Status] as list, [bank_Classification] as comment from Constructs order by KVID");
      for (; !rows->Eof(); rows->MoveNext())
        all += rows->Field("KVID").asText() + "|" + rows->Field("list").asText() + "|" +
               rows->Field("comment").asText() + "\n";
    }
    platform::dbEngine().settle();
    return all;
  }
  // "PROGRAM count size", those with a size, in the project.
  std::vector<std::string> sizes(const std::string& project) const {
    std::vector<std::string> all;
    for (const auto& program : good("programs --json --project " + project).objects())
      if (!program["size"].is_null())
        all.push_back(program["program"].get<std::string>() + " " + program["size"].get<std::string>());
    return all;
  }
};

TEST_F(Derived, HoldsTheProgramsOfTheListWithEmptyLists) {
  const std::string before = decisions();
  std::vector<std::string> affected;
  for (const auto& program : good("programs --json").objects())
    if (program["affected"].get<int>() > 0) affected.push_back(program["program"]);
  const auto summary = good("derive --from affected --name ' phase 1 ' --json").objects();
  ASSERT_EQ(summary.size(), 4U);
  std::size_t sized = 0;
  for (const auto& size : summary)
    sized += size["programs"].get<std::size_t>();
  EXPECT_EQ(sized, affected.size());

  good("report code --project 'phase 1'"); // a session makes its columns
  EXPECT_NE(good("verify --project 'phase 1'").out.find(fmt::format("verified 0, unchanged {}", affected.size())),
            std::string::npos)
      << "read with the same options";
  std::vector<std::string> members;
  for (const auto& program : good("programs --json --project 'phase 1'").objects()) {
    members.push_back(program["program"]);
    EXPECT_EQ(program["working"].get<int>() + program["affected"].get<int>() + program["clean"].get<int>(), 0);
    EXPECT_FALSE(program["size"].is_null()) << program["program"];
  }
  EXPECT_EQ(members, affected) << "verification brings no program in that is not a member";
  good("filter --like '*RATE*' --to working --project 'phase 1'");
  EXPECT_EQ(decisions(), before) << "the origin's lists stay as they are";
}

TEST_F(Derived, ASecondDerivationOverwritesTheSizesOnly) {
  EXPECT_EQ(good("derive --from affected --name one --limits 0,0,1000").out,
            "Size  Below  Programs\n----  -----  --------\nS         0         0\nM         0         0\n"
            "L      1000        13\nXL                  0\n");
  const std::string before = decisions();
  EXPECT_EQ(sizes("bank"), sizes("one"));
  const auto first = sizes("one");
  EXPECT_TRUE(std::all_of(first.begin(), first.end(), [](const auto& line) { return line.ends_with(" L"); }));
  good("derive --from affected --name two --project bank --limits 1000,1000,1000");
  const auto second = sizes("one");
  EXPECT_EQ(second.size(), first.size());
  EXPECT_TRUE(std::all_of(second.begin(), second.end(), [](const auto& line) { return line.ends_with(" S"); }));
  EXPECT_EQ(decisions(), before);
}

TEST_F(Derived, RefusesInOneLineAndLeavesNothing) {
  good("derive --from affected --name taken");
  const std::string start(48, 'n');
  good("add --project " + start + "1 '" TARNSIFT_SOURCE_DIR "/samples/bank/cobol/BKS100.cbl'");
  const auto files = platform::walkFiles(m_place.file("Projects"));
  struct Case {
    std::string arguments;
    int status;
    const char* part;
  };
  for (const auto& [arguments, status, part] :
       std::vector<Case>{{"--from affected --name TAKEN", 1, "there is a project 'taken' already"},
                         {"--from affected --name " + start + "2", 1, "too like that of project"},
                         {"--from affected --name '  '", 2, "needs a name"},
                         {"--from affected --name \"it's\"", 2, "quotes"},
                         {"--from affected --name a/b", 2, "cannot be a folder's"},
                         {"--from affected --name " + std::string(201, 'x'), 2, "longer than 200 bytes"},
                         {"--from clean --name new", 1, "Selected lists are empty."},
                         {"--from all --name new", 2, "is no list"},
                         {"--from affected --name new --limits 5,20", 2, "three numbers"},
                         {"--from affected --name new --limits 5,x,20", 2, "'x' is no limit"},
                         {"--from affected --name new --limits 5,-1,20", 2, "'-1' is no limit"},
                         {"--from affected --name new --limits 5,20,9999999999", 2, "is no limit"},
                         {"--from affected --name new --limits 20,5,50", 2, "do not ascend"}}) {
    const Result result = run("derive --project bank " + arguments);
    EXPECT_EQ(result.status, status) << arguments;
    EXPECT_NE(result.error.find(part), std::string::npos) << result.error;
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
  }
  EXPECT_EQ(platform::walkFiles(m_place.file("Projects")), files);
  EXPECT_NE(run("programs --project new").error.find("there is no project 'new'"), std::string::npos);
}

TEST_F(Derived, OlderOptionDocumentsAreUpgradedAndTroubleIsNamed) {
  good("derive --from affected --name two");
  EXPECT_NE(good("upgrade-options").out.find("bank     up to date"), std::string::npos);
  write("Projects/bank/Options.Project.xml", "<OPTIONS><CASE ID='Tarnsift'><BOOL NAME='ApplySelected' "
                                             "VALUE='false'/></CASE></OPTIONS>");
  write("Projects/two/Options.Project.xml", "no document");
  const Result result = run("upgrade-options");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.out.find("bank     upgraded"), std::string::npos) << result.out;
  EXPECT_NE(result.error.find("tarnsift: two: left as it was: "), std::string::npos) << result.error;
  EXPECT_EQ(platform::readText(m_place.file("Projects/two/Options.Project.xml")), "no document");
}
