#include "platform/ordinary_user.hpp"
#include "platform/program_file.hpp"

#include <platform/runtime/error.hpp>

#include <sys/stat.h>

#include <atomic>
#include <thread>

using testing::ElementsAre;
using testing::HasSubstr;

namespace platform {

namespace {

TEST(DBEngine, refusesWhatIsNoDatabaseAtOnceAndCreatesNothing) {
  const TemporaryFolder folder;
  WriteFileAtomically(folder.file("text.mdb"), std::string(2000, 'x'));
  WriteFileAtomically(folder.file("short.mdb"), "SQLite");
  WriteFileAtomically(folder.file("empty.mdb"), "");
  createFolder(folder.file("folder.mdb"));
  const struct {
    std::string name, reason;
  } cases[] = {{"text.mdb", "is not a database file"},    {"short.mdb", "is not a database file"},
               {"empty.mdb", "is not a database file"},   {"folder.mdb", "is not a database file"},
               {"none.mdb", "No such file or directory"}, {"none/x.mdb", "No such file or directory"}};
  for (const auto& [name, reason] : cases) {
    EXPECT_THAT(messageOf([&] { dbEngine().OpenDatabase(folder.file(name)); }), HasSubstr(name + ": ")) << name;
    EXPECT_THAT(messageOf([&] { dbEngine().OpenDatabase(folder.file(name)); }), HasSubstr(reason)) << name;
  }
  EXPECT_THAT(walkFiles(folder.path()), ElementsAre("empty.mdb", "short.mdb", "text.mdb"));
}

TEST(DBEngine, tellsADamagedAReadOnlyAndALockedFileApart) {
  const ProgramFile program;
  std::string bytes = readText(program.path());
  std::fill(bytes.begin() + 100, bytes.end(), '\x7f');
  WriteFileAtomically(program.folder().file("damaged.mdb"), bytes);
  EXPECT_THAT(
      messageOf([&] { dbEngine().OpenDatabase(program.folder().file("damaged.mdb"))->OpenRecordset("Constructs"); }),
      HasSubstr("is damaged"));

  ASSERT_EQ(::chmod(program.folder().path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(program.path().c_str(), 0444), 0);
  {
    const OrdinaryUser user;
    EXPECT_THAT(messageOf([&] { program.open(); }), HasSubstr("is read-only"));
  }
  ASSERT_EQ(::chmod(program.path().c_str(), 0644), 0);

  dbEngine().setBusyTimeout(std::chrono::milliseconds(20));
  {
    const auto holder = program.open();
    const auto other = program.open();
    const Savepoint held(*holder);
    EXPECT_THAT(messageOf([&] { other->Execute("update Constructs set Status = 1"); }),
                HasSubstr("is locked by another"));
    EXPECT_EQ(other->OpenRecordset("Constructs")->RecordCount(), 3) << "readers go on";
  }
  dbEngine().setBusyTimeout(std::chrono::milliseconds(5000));
}

TEST(DBEngine, givesTwoConnectionsThatAreIndependentAndTakesThemBack) {
  const ProgramFile program;
  dbEngine().settle();
  const std::size_t before = dbEngine().openConnections();
  {
    const auto first = program.open();
    const auto second = program.open();
    EXPECT_EQ(dbEngine().openConnections(), before + 2);
    const Savepoint open(*first);
    first->Execute("update Constructs set Status = 2");
    EXPECT_TRUE(second->OpenRecordset("select * from Constructs where Status = 2")->Eof());
  }
  { const auto again = program.open(); }
  EXPECT_EQ(dbEngine().openConnections(), before + 2);
  dbEngine().Idle(1);
  EXPECT_EQ(dbEngine().openConnections(), before + 2);
  dbEngine().Idle(8);
  EXPECT_EQ(dbEngine().openConnections(), before);
}

TEST(DBEngine, keepsARecordsetAliveBeyondItsDatabase) {
  const ProgramFile program;
  const auto rows = program.open()->OpenRecordset("Constructs");
  dbEngine().settle();
  EXPECT_EQ(linesOf(*rows, {"KVID"}).size(), 3U);
}

TEST(DBEngine, leavesCleanFilesAndKeepsAtMost64Open) {
  const TemporaryFolder folder;
  for (int i = 0; i < 70; ++i) {
    const std::string path = folder.file(std::to_string(i) + ".mdb");
    makeProgramFile(path);
    dbEngine().OpenDatabase(path)->Execute("update Constructs set Status = 1");
  }
  EXPECT_EQ(dbEngine().openConnections(), 64U);
  dbEngine().settle();
  EXPECT_EQ(walkFiles(folder.path()).size(), 70U) << "side files are left";
}

TEST(DBEngine, releasesAFileAndSeesThatAnotherWasPutInItsPlace) {
  const ProgramFile program;
  {
    const auto used = program.open();
    EXPECT_THAT(messageOf([&] { dbEngine().release(program.path()); }), HasSubstr("still in use"));
    used->Execute("update Constructs set Status = 2");
  }
  dbEngine().release(program.path());
  EXPECT_THAT(walkFiles(program.folder().path()), ElementsAre("program.mdb"));

  { const auto idle = program.open(); }
  const std::string other = program.folder().file("other.mdb");
  makeProgramFile(other);
  renameFile(other, program.path()); // as another process does
  EXPECT_TRUE(program.open()->OpenRecordset("select * from Constructs where Status = 2")->Eof());
}

TEST(DBEngine, servesThreadsThatEachOpenTheirOwn) {
  const ProgramFile program;
  std::vector<std::thread> threads;
  std::atomic<int> failures{0};
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 20; ++i) {
        if (!ignoring([&] { program.open()->Execute("update Constructs set Offset = Offset + 1 where KVID = 'k1'"); }))
          ++failures;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_THAT(linesOf(*program.open()->OpenRecordset("select Offset from Constructs where KVID = 'k1'"), {"Offset"}),
              ElementsAre("80"));
}

} // namespace

} // namespace platform
