#include "platform/runtime/application.hpp"
#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

const Program kA{.id = "A", .constructs = "k1 CUST-NO 0 4 W first\n k2 CUST-KEY 4 6 A\n k3 CUST-NAME 4 6 -\n"};
const Program kB{.id = "B", .constructs = "k1 TOTAL 0 4 C done\n k2 COUNT 4 4 C\n"};

TEST(Session, RunFillsTheWindowWithTheProgramsAndTheirListsAndGivesZero) {
  FakeHost host;
  host.add(kA);
  host.add(kB);
  EXPECT_EQ(host.run(), 0);
  EXPECT_EQ(host.state(),
            "A 1 1 0\n  W k1 CUST-NO: first\n  A k2 CUST-KEY\nB 0 0 2\n  C k1 TOTAL: done\n  C k2 COUNT\n");
  EXPECT_EQ(host.window().LoadedProgram, "A");
  EXPECT_EQ(host.window().Caption, "Tarnsift - Orvane (P) ");
  EXPECT_TRUE(host.window().Enabled());
  EXPECT_EQ(host.window().MousePointer, platform::kPointerDefault);
  EXPECT_EQ(platform::App().HelpFile, "tarnsift.help");
  EXPECT_EQ(host.window().menu("mnuHelpWindow").Caption + "|" + host.window().menu("mnuHelpAbout").Caption,
            "Tarnsift Help|&About The Product");
  EXPECT_EQ(host.captions,
            (std::map<std::string, std::string>{{"Programs", "Programs - 2 item(s)"},
                                                {"Lists", "Lists"},
                                                {"Synonyms", "Synonyms for variable 'CUST-NO' - 0 item(s)"},
                                                {"Source", "Source"}}));
  EXPECT_THAT(host.messages(), ElementsAre());
}

TEST(Session, TheHostIsAskedInOrder) {
  FakeHost host;
  host.add(kA);
  host.run();
  EXPECT_EQ(host.takeLog(),
            "reports to \\Output\n"
            "no redraw\nInitiate frmMain\nlog attached\nobject '' FE\ncontrol KVWS\nsource KVSource 'COBOL source'\n"
            "split root 2 2 7200 '' 'Source'\nsplit unnamed 1 2 7620 'Programs' ''\nsplit unnamed 2 2 4800 'Lists' "
            "'Synonyms'\n"
            "redraw\narrange\n"
            "sort lvList 0\nsort lvList 1\nsort lvList 2\nsort lvList 3\nsort lvPrograms -1\n");
}

TEST(Session, OnlyALayoutBehindTheSignatureIsTaken) {
  const std::string byDefault = "split root 2 2 7200 '' 'Source'\nsplit unnamed 1 2 7620 'Programs' ''\nsplit unnamed "
                                "2 2 4800 'Lists' 'Synonyms'\n";
  const std::pair<std::string, std::string> kCases[] = {
      {"", byDefault},
      {"mPrograms, Lists, Source, Synonyms|x", byDefault},
      {" mPrograms, Lists, Synonyms, Source|x", byDefault},
      {"mPrograms, Lists, Synonyms, Source|x;y", "layout '|x;y'\n"},
      {"mPrograms, Lists, Synonyms, Sourcedamaged", "layout 'damaged'\n" + byDefault},
  };
  for (const auto& [stored, expected] : kCases) {
    FakeHost host;
    if (!stored.empty()) host.settings["Tarnsift|Settings|MainSplitter"] = stored;
    host.run();
    const std::string behind = host.log.substr(host.log.find("COBOL source'\n") + 14);
    EXPECT_EQ(behind.substr(0, behind.find("redraw\n")), expected) << stored;
  }
}

TEST(Session, OnlyVerifiedProgramsOfProgramTypesAreShown) {
  FakeHost host;
  host.add(kA);
  Program without = kB;
  without.dataRelations = false;
  host.add(without);
  host.add({.id = "GONE", .constructs = ""});
  platform::removeAll(host.path("Analysis/GONE.kva"));
  host.add({.id = "COPY", .constructs = "", .type = "COPYBOOK"});
  host.add({.id = "OTHER", .constructs = "", .projects = {"Q"}});
  host.add({.id = "ASM1", .constructs = "", .type = "ASM"});
  std::string steps;
  auto& bar = host.window().pbProgress;
  std::string last;
  bar.Changed.connect([&] {
    const std::string now = host.window().cbCoolBar.band("Progress").Caption + " " + std::to_string(bar.Value()) + "/" +
                            std::to_string(bar.Max);
    if (bar.Visible() && now != last) steps += now + "\n";
    last = now;
  });
  host.run();
  bar.Changed.clear();
  EXPECT_EQ(host.counts(), "A 1 1 0\nASM1 0 0 0\n");
  EXPECT_EQ(host.window().lvPrograms.ListItems.Item("ASM1").SubItems(2), "         0");
  EXPECT_NE(steps.find("Linking COBOL programs:... 3/3\n"), std::string::npos)
      << "a program that is left out advances the progress:\n"
      << steps;
}

TEST(Session, WithoutAVerifiedProgramTheWindowStaysOpenAndEmpty) {
  FakeHost host;
  EXPECT_EQ(host.run(), 0);
  EXPECT_THAT(
      host.messages(),
      ElementsAre("48|Tarnsift|You have no verified program in this project. Probably you need to re-verify the "
                  "programs with proper verification options set."));
  EXPECT_EQ(host.captions["Programs"], "Programs - 0 item(s)");
  EXPECT_TRUE(host.window().Loaded() && host.window().Enabled());
  EXPECT_FALSE(host.window().menu("mnuFileSynonyms").Enabled || host.window().menu("mnuFileSearch").Enabled);
  EXPECT_FALSE(host.window().tbToolbar.Button("Search").Enabled || host.window().tbToolbar.Button("Synonyms").Enabled);
}

TEST(Session, AProgramWithADamagedDatabaseIsLeftOutAndTheLogSaysWhy) {
  FakeHost host;
  host.add(kA);
  host.add(kB);
  host.writeFile("Analysis/A.mdb", "this is no database, and it is long enough to be looked at");
  host.run();
  EXPECT_EQ(host.state(), "B 0 0 2\n  C k1 TOTAL: done\n  C k2 COUNT\n");
  EXPECT_TRUE(host.activity.starts_with("A: left out, verify it again: ")) << host.activity;
}

TEST(Session, AHiddenReportHasNoEntryInTheToolbar) {
  FakeHost host;
  host.window().menu("mnuFileReportType", 6).setVisible(false);
  host.run();
  std::string entries;
  for (const auto& entry : host.window().tbToolbar.Button("Report").ButtonMenus)
    entries += entry.Text + "|";
  host.window().menu("mnuFileReportType", 6).setVisible(true);
  EXPECT_EQ(entries, "&Affected Datanames|&Possible Datanames|&Clean Datanames|-|Affected Co&de|");
}

TEST(Session, CloseSavesTheLayoutAndTheCountsAndGivesTheHostBack) {
  FakeHost host;
  host.add(kA);
  host.run();
  host.takeLog();
  EXPECT_TRUE(host.close());
  EXPECT_EQ(host.takeLog(), "Terminate\nsource detached\nworkspace closed\nsplitter released\n");
  EXPECT_EQ(host.settings["Tarnsift|Settings|MainSplitter"], "mPrograms, Lists, Synonyms, Source as it stood");
  EXPECT_EQ(platform::readText(host.path("Projects/P/TARNSIFT/FoundItems.txt")),
            "A\t         1\t         1\t         0\n");
  const auto& session = tarnsift::globals();
  EXPECT_TRUE(!session.Frontend && !session.ProjectObject && !session.OptionsRoot && session.FolderNames.Count() == 0);
  EXPECT_TRUE(session.Closing);
  EXPECT_EQ(host.window().LoadedProgram, "");
}

TEST(Session, ADisabledWindowRefusesToCloseWithoutAMessage) {
  FakeHost host;
  host.run();
  host.messages();
  host.takeLog();
  host.window().setEnabled(false);
  host.choose("mnuFileClose");
  EXPECT_FALSE(host.close());
  EXPECT_TRUE(host.window().Loaded());
  EXPECT_FALSE(tarnsift::globals().Closing);
  EXPECT_THAT(host.messages(), ElementsAre());
  host.window().setEnabled(true);
  host.choose("mnuFileClose");
  EXPECT_FALSE(host.window().Loaded());
}

// The session of the host cannot be told as ended when its counts are not saved.
TEST(Session, ACloseThatCannotWriteTheCountsKeepsTheSession) {
  FakeHost host;
  host.add(kA);
  host.run();
  platform::removeAll(host.path("Projects/P"));
  host.choose("mnuFileClose");
  EXPECT_TRUE(host.window().Loaded() && host.attached);
  EXPECT_EQ(host.messages().size(), 1u);
  platform::createFolder(host.path("Projects/P"));
  EXPECT_TRUE(host.close());
}

TEST(Session, AFailureAtAnyStepIsToldOnceAndLeavesNoWindow) {
  for (const char* member : {"ProjectObject", "GetOrvaneName", "Initiate", "Log", "GlobalOptions", "ProjectOptions"}) {
    FakeHost host;
    host.add(kA);
    host.failingMembers = {member};
    EXPECT_EQ(host.run(), 0) << member;
    EXPECT_THAT(host.messages(),
                ElementsAre("16|Tarnsift|Unsuccessful Tarnsift termination\r" + std::string(member) + " failed"));
    EXPECT_FALSE(host.window().Loaded()) << member;
    EXPECT_FALSE(tarnsift::globals().Frontend) << member << ": the host is still held";
    EXPECT_FALSE(host.attached) << member;
    EXPECT_TRUE(host.settings.empty() && !platform::folderExists(host.path("Projects/P/TARNSIFT"))) << member;
  }
}

TEST(Session, TwoProjectsWithTheSameEscapedNameEndTheStart) {
  FakeHost host;
  const std::string name(48, 'x');
  host.projects = {"P", name + "1", name + "2"};
  host.run();
  EXPECT_THAT(host.messages(), ElementsAre(::testing::StartsWith("16|Tarnsift|Unsuccessful Tarnsift termination\r")));
  EXPECT_FALSE(host.window().Loaded());
}

TEST(Session, ASecondRunAfterTheCloseOpensTheSameWindowAnew) {
  {
    FakeHost host;
    host.add(kA);
    host.run();
    host.window().tsLists.select(2);
    host.close();
  }
  FakeHost host("Q");
  host.run();
  EXPECT_EQ(host.counts() + host.entries(), "") << "nothing of the last project is shown in an empty one";
  host.add({.id = "B", .constructs = "k1 TOTAL 0 4 C done\n", .projects = {"Q"}});
  host.run();
  EXPECT_EQ(host.state(), "B 0 0 1\n  C k1 TOTAL: done\n");
  EXPECT_EQ(host.window().Caption, "Tarnsift - Orvane (Q) ");
  EXPECT_EQ(host.window().ActiveList, 0);
  EXPECT_EQ(host.window().tsLists.SelectedItem(), 1u);
  EXPECT_FALSE(tarnsift::globals().Closing);
}

TEST(Session, ASecondRunOnTheOpenWindowStartsItAgain) {
  FakeHost host;
  host.add(kA);
  host.run();
  host.add(kB);
  EXPECT_EQ(host.run(), 0);
  EXPECT_EQ(host.state(),
            "A 1 1 0\n  W k1 CUST-NO: first\n  A k2 CUST-KEY\nB 0 0 2\n  C k1 TOTAL: done\n  C k2 COUNT\n");
  // Events are answered once.
  host.window().ProjectOptions->FLO_Saved.raise();
  host.click("B");
  EXPECT_EQ(host.entries(), "  C k1 TOTAL: done\n  C k2 COUNT\n");
}

} // namespace
} // namespace tarnsift_test
