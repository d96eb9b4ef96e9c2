#include "orvane/portfolio.hpp"

#include <csignal>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "orvane/host.hpp"
#include "orvane/lock.hpp"
#include "orvane/program_files.hpp"
#include "orvane/store_format.hpp"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace orvane {

namespace {

namespace fs = std::filesystem;
using platform::Ref;

const std::string kCustomer =
    "       01 CUST.\n          05 CUST-NO PIC 9(4).\n          05 CUST-NAME PIC X(20).\n       01 WS-NO PIC 9(4).\n";

TEST(Verification, writesTheAnalysisAndADatabaseOfTheSameGeneration) {
  Portfolio portfolio;
  portfolio.write("pay.cbl", program("PAY", kCustomer, "           MOVE CUST-NO TO WS-NO.\n"));
  EXPECT_THAT(portfolio.add().added, ElementsAre("PAY"));
  EXPECT_EQ(portfolio.outcome(), "1 written, 0 unchanged");
  EXPECT_EQ(portfolio.filesOfAnalysis().size(), 2U) << "no side files, no leftovers";
  EXPECT_THAT(portfolio.query("PAY", "Constructs", {"KVID", "Name", "Offset", "Size", "Kind", "Level"}),
              testing::IsSupersetOf({"PAY:CUST CUST 0 24 group 1", "PAY:CUST.CUST-NAME CUST-NAME 4 20 item 5"}));
  EXPECT_THAT(portfolio.query("PAY", "Relationships", {"RelID", "KVID1", "KVID2"}),
              testing::Contains("Move PAY:CUST.CUST-NO PAY:WS-NO"));
  const StoreData data = readStore(portfolio.analysisFile("PAY"));
  EXPECT_EQ(portfolio.query("PAY", "Host", {"Generation"}),
            std::vector{std::to_string(static_cast<std::int64_t>(data.generation))});
  EXPECT_EQ(portfolio.attribute("PAY", "Source"), "Sources\\src\\pay.cbl");
  EXPECT_EQ(portfolio.attribute("PAY", "DataRelations"), "1");
  EXPECT_EQ(portfolio.names(kProgramType), std::vector<std::string>{"PAY"});
}

TEST(Verification, looksACopybookUpAgainAsItIsWritten) {
  Portfolio portfolio;
  portfolio.write("copy/REC.cpy", "       01 C1 PIC X.\n");
  portfolio.write("copy/Rec.cpy", "       01 C2 PIC X.\n");
  portfolio.write("a.cbl", program("A", "       COPY \"Rec.cpy\".\n"));
  portfolio.add();
  EXPECT_EQ(portfolio.outcome(), "1 written, 0 unchanged");
  EXPECT_THAT(portfolio.query("A", "Constructs", {"KVID"}), ElementsAre("A:C2"));
  EXPECT_EQ(portfolio.outcome(), "0 written, 1 unchanged");
}

TEST(Verification, skipsProgramsOfWhichNothingChanged) {
  struct Change {
    std::string what;
    std::function<void(Portfolio&)> apply;
    std::string expected;
  };
  const std::vector<Change> changes = {
      {"nothing", [](Portfolio&) {}, "0 written, 2 unchanged"},
      {"touched only", [](Portfolio& p) { p.write("b.cbl", program("B", "       01 B1 PIC X.\n")); },
       "0 written, 2 unchanged"},
      {"the source", [](Portfolio& p) { p.write("b.cbl", program("B", "       01 B2 PIC X.\n")); },
       "1 written, 1 unchanged"},
      {"a copybook", [](Portfolio& p) { p.write("copy/acust.cpy", "       01 C2 PIC X.\n"); },
       "1 written, 1 unchanged"},
      {"a copybook appears", [](Portfolio& p) { p.write("copy/LATER.cpy", "       01 C3 PIC X.\n"); },
       "1 written, 1 unchanged"},
      {"a copybook in front of another", [](Portfolio& p) { p.write("copy/ACUST", "       01 C4 PIC X.\n"); },
       "1 written, 1 unchanged"},
      {"a copybook is gone",
       [](Portfolio& p) {
         p.remove("copy/ACUST");
         p.remove("copy/acust.cpy");
       },
       "1 written, 1 unchanged"},
      {"a copybook that nobody copies", [](Portfolio& p) { p.write("copy/OTHER.cpy", "       01 C5 PIC X.\n"); },
       "0 written, 2 unchanged"},
      {"an option", [](Portfolio& p) { p.setOption("dialect", "mf"); }, "2 written, 0 unchanged"},
      {"the analysis file is damaged", [](Portfolio& p) { fs::resize_file(p.analysisFile("A"), 50); },
       "1 written, 1 unchanged"},
      {"the database is gone",
       [](Portfolio& p) {
         p.verify();
         platform::dbEngine().settle();
         fs::remove(p.databaseFile("B"));
       },
       "1 written, 1 unchanged"},
      {"a new program", [](Portfolio& p) { p.write("sub.cob", program("SUB", "")); }, "1 written, 2 unchanged"},
  };
  Portfolio portfolio;
  portfolio.write("a.cbl", program("A", "           COPY ACUST.\n           COPY LATER.\n"));
  portfolio.write("b.cbl", program("B", "       01 B1 PIC X.\n"));
  portfolio.write("copy/acust.cpy", "       01 C1 PIC X.\n");
  portfolio.add();
  EXPECT_EQ(portfolio.outcome(), "2 written, 0 unchanged");
  for (const Change& change : changes) {
    change.apply(portfolio);
    EXPECT_EQ(portfolio.outcome(), change.expected) << change.what;
    EXPECT_EQ(portfolio.verify().written, 0U) << "a second time after: " << change.what;
  }
  EXPECT_EQ(portfolio.outcome({.jobs = 1, .force = true}), "3 written, 0 unchanged");
}

TEST(Verification, tellsWhyAProgramStaysOut) {
  Portfolio portfolio;
  portfolio.write("good.cbl", program("GOOD", "           COPY NOWHERE.\n       01 X PIC X.\n"));
  portfolio.write("binary.cbl", std::string("\x7f\0\0ELF\0\0", 8) + std::string(500, '\1'));
  portfolio.write("readme", "Notes about\nthe programs.\n");
  portfolio.write("locked.cbl", program("LOCKED", ""));
  portfolio.write("gone.cbl", program("GONE", ""));
  portfolio.add();
  portfolio.remove("gone.cbl");
  portfolio.remove("locked.cbl");
  fs::create_symlink("/proc/self/mem", portfolio.sources() + "/locked.cbl"); // a file that even root cannot read
  const VerifyResult result = portfolio.verify();
  EXPECT_EQ(result.written, 1U);
  EXPECT_THAT(result.missingCopybooks, ElementsAre(std::pair("NOWHERE", 1U)));
  EXPECT_EQ(result.diagnostics.at("CopyMissing"), 1U);
  std::vector<std::string> reasons;
  for (const auto& failure : result.failed)
    reasons.push_back(failure.program + " " + failure.reason);
  EXPECT_THAT(reasons, ElementsAre(HasSubstr("binary.cbl: is a binary file"),
                                   HasSubstr("gone.cbl: the source file is gone"), HasSubstr("LOCKED cannot read"),
                                   HasSubstr("readme: nothing in it says that it is a COBOL program")));
  EXPECT_EQ(portfolio.attribute("BINARY", "DataRelations"), "0");
  EXPECT_THAT(portfolio.attribute("GONE", "Reason"), HasSubstr("is gone"));
  EXPECT_EQ(portfolio.attribute("GOOD", "Reason"), "");
}

TEST(Verification, keepsWhatItHasOfAProgramThatFailsForAWhile) {
  Portfolio portfolio;
  portfolio.write("a.cbl", program("A", kCustomer));
  portfolio.add();
  portfolio.verify();
  portfolio.decide("A", "A:CUST.CUST-NO", 1, "number");
  const std::string modified = portfolio.attribute("A", "Modified");
  portfolio.write("a.cbl", "no program any more\n");
  EXPECT_THAT(portfolio.outcome(), HasSubstr("0 written, 0 unchanged; A: nothing in it"));
  EXPECT_EQ(portfolio.attribute("A", "DataRelations"), "0");
  EXPECT_EQ(portfolio.attribute("A", "Modified"), modified);
  EXPECT_THAT(portfolio.decisions("A"), ElementsAre("A:CUST.CUST-NO 1 number"));
  portfolio.remove("a.cbl");
  EXPECT_THAT(portfolio.outcome(), HasSubstr("is gone"));
  portfolio.write("a.cbl", program("A", kCustomer));
  EXPECT_EQ(portfolio.outcome(), "1 written, 0 unchanged");
  EXPECT_EQ(portfolio.attribute("A", "DataRelations"), "1");
  EXPECT_EQ(portfolio.attribute("A", "Reason"), "");
  EXPECT_THAT(portfolio.decisions("A"), ElementsAre("A:CUST.CUST-NO 1 number"));
}

TEST(Verification, givesTheSameAnalysisFilesWithOneThreadAndWithFour) {
  Portfolio portfolio;
  portfolio.write("copy/CUST.cpy", kCustomer);
  for (int i = 0; i < 12; ++i)
    portfolio.write("p" + std::to_string(i) + ".cbl",
                    program("P" + std::to_string(i), "       COPY CUST.\n", "           MOVE CUST-NO TO WS-NO.\n"));
  portfolio.add();
  const auto contents = [&] {
    std::map<std::string, std::string> all;
    for (const auto& name : portfolio.names())
      all[name] = platform::readText(portfolio.analysisFile(name));
    return all;
  };
  portfolio.verify({.jobs = 1});
  const auto one = contents();
  EXPECT_EQ(portfolio.outcome({.jobs = 4, .force = true}), "12 written, 0 unchanged");
  EXPECT_EQ(contents(), one);
}

TEST(Verification, stopsBetweenProgramsAndRefusesABaseFolderInUse) {
  Portfolio portfolio;
  for (int i = 0; i < 6; ++i)
    portfolio.write("p" + std::to_string(i) + ".cbl", program("P" + std::to_string(i), kCustomer));
  portfolio.add();
  std::atomic<bool> cancel = false;
  std::vector<std::size_t> steps;
  const VerifyResult stopped = portfolio.verify({.jobs = 1,
                                                 .progress =
                                                     [&](const VerifyProgress& step) {
                                                       steps.push_back(step.done);
                                                       cancel = true;
                                                     },
                                                 .cancel = &cancel});
  EXPECT_TRUE(stopped.cancelled);
  EXPECT_EQ(stopped.written, steps.size());
  EXPECT_EQ(portfolio.verify().written + stopped.written, 6U);
  const FolderLock window(baseLockFile(portfolio.base()), FolderLock::Mode::shared, "base");
  EXPECT_THAT([&] { portfolio.verify(); }, testing::ThrowsMessage<platform::Error>(HasSubstr("is in use by another")))
      << "not by the verification that has ended";
}

TEST(Verification, leavesNothingHalfWrittenOnAFullDisk) {
  Portfolio portfolio;
  portfolio.write("a.cbl", program("A", kCustomer));
  portfolio.add();
  portfolio.verify();
  const std::string comment(1'000'000, 'c'); // makes the database larger than the analysis file
  portfolio.decide("A", "A:CUST.CUST-NO", 1, comment);
  platform::dbEngine().settle();
  std::string many;
  for (int i = 0; i < 3000; ++i)
    many += "       01 ITEM-" + std::to_string(i) + " PIC X(4).\n";
  portfolio.write("b.cbl", program("B", kCustomer + many));
  portfolio.add();
  portfolio.verify();
  const rlim_t analysisSize = platform::fileSize(portfolio.analysisFile("B"));
  portfolio.write("a.cbl", program("A", kCustomer + many));
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
  for (const rlim_t room : {analysisSize / 2, analysisSize + 100'000}) { // in the analysis file, in the database
    const rlimit small{room, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string outcome = portfolio.outcome();
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_THAT(outcome, HasSubstr("0 written, 1 unchanged; A: ")) << room;
    EXPECT_EQ(portfolio.filesOfAnalysis().size(), 4U);
    EXPECT_THAT(portfolio.decisions("A"), ElementsAre("A:CUST.CUST-NO 1 " + comment));
    platform::dbEngine().settle();
  }
  std::signal(SIGXFSZ, ignored);
  EXPECT_EQ(portfolio.outcome(), "1 written, 1 unchanged");
  EXPECT_THAT(portfolio.decisions("A"), ElementsAre("A:CUST.CUST-NO 1 " + comment));
}

TEST(Verification, replacesNoDatabaseThatItCannotRead) {
  Portfolio portfolio;
  portfolio.write("a.cbl", program("A", kCustomer));
  portfolio.add();
  portfolio.verify();
  const std::string database = portfolio.databaseFile("A");
  platform::dbEngine().settle();
  std::ofstream(database, std::ios::binary) << "somebody's notes, no database";
  EXPECT_THAT(portfolio.outcome({.force = true}), HasSubstr("0 written, 0 unchanged; A: is not a database"));
  EXPECT_EQ(platform::readText(database), "somebody's notes, no database");
  fs::remove(database);
  EXPECT_EQ(portfolio.outcome(), "1 written, 0 unchanged");
}

TEST(Verification, goesOnWhereAKilledRunEnded) {
  Portfolio portfolio;
  const auto text = [](int i, const std::string& extra) {
    return program("P" + std::to_string(i), kCustomer + extra, "           MOVE CUST-NO TO WS-NO.\n");
  };
  constexpr int kPrograms = 40;
  for (int i = 0; i < kPrograms; ++i)
    portfolio.write("p" + std::to_string(i) + ".cbl", text(i, ""));
  portfolio.add();
  portfolio.verify();
  for (int i = 0; i < kPrograms; ++i)
    portfolio.decide("P" + std::to_string(i), "P" + std::to_string(i) + ":CUST.CUST-NO", 1, "kept");
  for (int i = 0; i < kPrograms; ++i)
    portfolio.write("p" + std::to_string(i) + ".cbl", text(i, "       01 MORE PIC X.\n"));
  platform::dbEngine().settle();

  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const BaseFolder base = BaseFolder::open(portfolio.base().path());
    const Ref<RepositoryFile> repository(new RepositoryFile(base.repositoryFile()));
    std::size_t done = 0;
    verifyProject(base, *repository, "P", {.jobs = 2, .progress = [&](const VerifyProgress&) {
                                             if (++done == kPrograms / 3) ::kill(::getpid(), SIGKILL);
                                           }});
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  ASSERT_TRUE(WIFSIGNALED(status));
  std::ofstream(portfolio.base().analysisFolder() + "/P1-2.mdb.1-1.new") << "half";

  const VerifyResult result = portfolio.verify();
  EXPECT_EQ(result.written + result.unchanged, kPrograms);
  EXPECT_GT(result.written, 0U);
  EXPECT_GT(result.unchanged, 0U);
  EXPECT_EQ(portfolio.filesOfAnalysis().size(), 2U * kPrograms);
  for (const std::string& name : portfolio.names()) {
    EXPECT_THAT(portfolio.decisions(name), ElementsAre(name + ":CUST.CUST-NO 1 kept"));
    const StoreData data = readStore(portfolio.analysisFile(name));
    EXPECT_GE(data.find(name + ":MORE"), 0);
    EXPECT_EQ(portfolio.query(name, "Host", {"Generation"}),
              std::vector{std::to_string(static_cast<std::int64_t>(data.generation))});
  }
}

} // namespace
} // namespace orvane
