#include <gtest/gtest.h>

#include <fstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/command.hpp"

namespace {

const char* const kProgram =
    "IDENTIFICATION DIVISION.\nPROGRAM-ID. ONE.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\nCOPY GONE.\n"
    "01 A PIC X.\n01 B PIC X.\nPROCEDURE DIVISION.\n    MOVE A TO B.\n    STOP RUN.\n";

} // namespace

class Trouble : public CommandTest {
 protected:
  void project(int programs = 1) {
    for (int i = 0; i < programs; ++i)
      write("src/P" + std::to_string(i) + ".cbl", fixedForm(kProgram));
    good("init");
    good("add --project p src");
  }
  void expectOneLine(const Result& result, int status, const std::string& part) {
    EXPECT_EQ(result.status, status) << result.error;
    EXPECT_NE(result.error.find(part), std::string::npos) << result.error;
    EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
    EXPECT_TRUE(result.error.starts_with("tarnsift: ")) << result.error;
  }
};

TEST_F(Trouble, WrongUsageIsStatusTwoInOneLine) {
  project();
  expectOneLine(run("nonsense"), 2, "subcommand");
  expectOneLine(run("filter --to working"), 2, "--like");
  expectOneLine(run("filter --like '[A' --to working"), 2, "[A");
  expectOneLine(run("filter Use:Everything --to working"), 2, "Use:Unused");
  expectOneLine(run("filter --like A --to somewhere"), 2, "somewhere");
  expectOneLine(run("impact src --like '*' --depth some"), 2, "--depth");
  expectOneLine(run("verify --set dialect=klingon"), 2, "ibm, gnu, mf");
  expectOneLine(run("programs --project q"), 2, "there are: p");
  good("add --project q src");
  expectOneLine(run("programs"), 2, "p, q");
}

TEST_F(Trouble, SourcesThatCannotBeAnalysedStayOutWithTheReasonAndTheRestGoesOn) {
  project();
  write("src/TEXT.cbl", "Dear colleague,\nthis is a letter.\n");
  write("src/BINARY.cbl", std::string("\x7f"
                                      "ELF\0\1\2\3\xff\xfe",
                                      10) +
                              std::string(4000, '\x90'));
  write("src/LOCKED.cbl", fixedForm(kProgram));
  ::chmod(m_place.file("src/LOCKED.cbl").c_str(), 0);
  const Result result = good("verify");
  EXPECT_NE(result.out.find("copybooks not found: GONE"), std::string::npos)
      << "a missing copybook is recorded, the program verified";
  EXPECT_NE(result.error.find("TEXT: not verified: "), std::string::npos) << result.error;
  EXPECT_NE(result.error.find("BINARY: not verified: "), std::string::npos);
  if (::geteuid() != 0) {
    EXPECT_NE(result.error.find("LOCKED: not verified: "), std::string::npos);
  }
  EXPECT_EQ(good("programs --json --program P0").objects().at(0)["verified"], true);
}

TEST_F(Trouble, NoVerifiedProgramIsAClearError) {
  project();
  expectOneLine(run("filter --like A --to working"), 1, "no verified program");
  write("src/P0.cbl", "no COBOL");
  const Result result = run("verify");
  EXPECT_EQ(result.status, 1);
}

TEST_F(Trouble, ADamagedDatabaseOrAnalysisIsToldAndMendedByTheNextVerification) {
  project(3);
  good("verify");
  good("filter --like A --to affected");
  std::string database, analysis;
  for (const auto& file : platform::walkFiles(m_place.file("Analysis"))) {
    if (file.starts_with("P0") && file.ends_with(".mdb")) database = m_place.file("Analysis/" + file);
    if (file.starts_with("P1") && file.ends_with(".kva")) analysis = m_place.file("Analysis/" + file);
  }
  ASSERT_FALSE(database.empty());
  platform::WriteFileAtomically(database, std::string(5000, 'x'));
  platform::WriteFileAtomically(analysis, platform::readText(analysis).substr(0, 700));
  const Result looking = run("datanames --json");
  EXPECT_EQ(looking.status, 1);
  EXPECT_EQ(looking.objects().size(), 2U) << "P2 is still shown";
  const Result filtering = run("filter --like B --to affected");
  EXPECT_NE(filtering.error.find("P0"), std::string::npos) << filtering.error;
  good("verify --force");
  good("filter --like B --to affected");
}

TEST_F(Trouble, DamagedProjectFilesAreNamed) {
  project();
  good("verify");
  good("filter --like A --to working");
  const std::string options = m_place.file("Projects/p/Options.Project.xml");
  const std::string kept = platform::readText(options);
  platform::WriteFileAtomically(options, kept.substr(0, kept.size() / 2));
  expectOneLine(run("filter --like A --to working"), 1, "Options.Project.xml");
  EXPECT_EQ(platform::readText(options), kept.substr(0, kept.size() / 2)) << "a damaged document is not overwritten";
  platform::WriteFileAtomically(options, kept);
  const std::string found = m_place.file("Projects/p/TARNSIFT/FoundItems.txt");
  const std::string line = platform::readText(found);
  platform::WriteFileAtomically(found, line + line);
  expectOneLine(run("filter --like A --to working"), 1, "FoundItems.txt");
  platform::removeAll(found);
  good("filter --like B --to working");
}

TEST_F(Trouble, ASecondWriterIsRefusedWithTheHolderAndReadersGoOn) {
  project();
  good("verify");
  const std::string lock = m_place.file("Projects/p/.lock");
  const int held = ::open(lock.c_str(), O_RDWR | O_CREAT, 0644);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  ASSERT_EQ(::ftruncate(held, 0), 0);
  ASSERT_EQ(::pwrite(held, "process 4711 since 2024-01-01 10:00:00", 38, 0), 38);
  expectOneLine(run("filter --like A --to working"), 1, "process 4711 since 2024-01-01");
  good("programs");
  ::close(held);
  good("filter --like A --to working");
  const int base = ::open(m_place.file(".lock").c_str(), O_RDWR | O_CREAT, 0644);
  ASSERT_EQ(::flock(base, LOCK_EX), 0);
  expectOneLine(run("verify"), 1, "in use");
  expectOneLine(run("filter --like A --to working"), 1, "in use");
  ::close(base);
}

TEST_F(Trouble, AKilledVerificationOrFilterIsGoneOnWith) {
  project(60);
  for (const int milliseconds : {5, 20, 40}) {
    runAndKill("verify --force", milliseconds);
    good("verify");
  }
  for (const int milliseconds : {10, 30, 60}) {
    runAndKill("filter --like A --to affected", milliseconds);
    runAndKill("filter --like A --to delete", milliseconds);
  }
  good("filter --like A --to affected");
  std::int64_t listed = 0;
  for (const auto& program : good("programs --json").objects())
    listed += program["affected"].get<std::int64_t>();
  EXPECT_EQ(listed, 60);
  EXPECT_EQ(good("datanames --status affected --json").objects().size(), 60U)
      << "rows and counts agree after the kills";
  for (const auto& file : platform::walkFiles(m_place.file("Analysis")))
    EXPECT_TRUE(file.ends_with(".kva") || file.ends_with(".mdb") || file.ends_with(".kvm"))
        << file << " was left behind";
}

TEST_F(Trouble, AFullDiskLeavesNothingHalfWritten) {
  std::string items;
  for (int i = 0; i < 3000; ++i)
    items += "01 ITEM-" + std::to_string(i) + " PIC X(8).\n";
  std::string text = kProgram;
  text.insert(text.find("01 A"), items);
  project();
  write("src/P0.cbl", fixedForm(text));
  // Files may not grow beyond 256 KiB in this shell: verification cannot write its database.
  const std::string shell = "cd '" + folder + "' && (trap '' XFSZ; ulimit -f 512; '" TARNSIFT_COMMAND "' verify) >'" +
                            m_place.file(".out") + "' 2>&1";
  EXPECT_NE(std::system(shell.c_str()), 0);
  EXPECT_NE(platform::readText(m_place.file(".out")).find("not verified"), std::string::npos)
      << platform::readText(m_place.file(".out"));
  EXPECT_TRUE(platform::walkFiles(m_place.file("Analysis")).empty());
  EXPECT_NE(good("verify").out.find("verified 1"), std::string::npos);
}

TEST_F(Trouble, AReportThatCannotBeWrittenLeavesTheOldOne) {
  project();
  good("verify");
  good("filter --like A --to affected");
  expectOneLine(run("report code -o nowhere/out.html"), 1, "nowhere/out.html");
  expectOneLine(run("report affected --format csv -o /dev/full"), 1, "/dev/full");
  good("report code -o out.html");
  const std::string before = platform::readText(m_place.file("out.html"));
  EXPECT_GT(before.size(), 500U);
}
