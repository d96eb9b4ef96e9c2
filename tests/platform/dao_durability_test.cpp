#include "platform/program_file.hpp"

#include <platform/runtime/error.hpp>

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::ElementsAre;

namespace platform {

namespace {

/// Runs `work` in a process that is killed once it has said `ready`; the rest of the work goes on until the kill.
template<class Work>
void killInTheMidst(Work work) {
  dbEngine().settle(); // connections must not cross into another process
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    try {
      work([&] { static_cast<void>(!::write(pipe[1], "x", 1)); });
    } catch (...) {
    }
    ::_exit(1);
  }
  ::close(pipe[1]);
  char ready = 0;
  const ssize_t got = ::read(pipe[0], &ready, 1);
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  ::close(pipe[0]);
  ASSERT_EQ(got, 1) << "the process failed before it was ready";
}

std::string soundness(Database& database) {
  return linesOf(*database.OpenRecordset("select integrity_check as sound from pragma_integrity_check"), {"sound"})
      .front();
}

TEST(Durability, aKilledProcessLeavesItsFinishedRowsInASoundFile) {
  const ProgramFile program;
  killInTheMidst([&](auto ready) {
    const auto database = program.open();
    for (int i = 4;; ++i) {
      database->Execute("insert into Constructs (KVID, Status) values ('k" + std::to_string(i) + "', 1)");
      const auto table = database->OpenRecordset("Constructs");
      table->setIndex("ID");
      table->Seek("=", "k" + std::to_string(i));
      table->Edit();
      table->setField("Classification", "done");
      table->Update();
      if (i == 500) ready();
    }
  });
  EXPECT_TRUE(fileExists(program.path() + "-wal"));
  const auto database = program.open();
  EXPECT_EQ(soundness(*database), "ok");
  EXPECT_EQ(
      database
          ->OpenRecordset("select * from Constructs where Offset is null and Classification = 'done' and rowid <= 500")
          ->RecordCount(),
      497);
}

TEST(Durability, theNormalEndOfAProcessLeavesNoSideFiles) {
  const ProgramFile program;
  dbEngine().settle();
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    program.open()->Execute("update Constructs set Status = 2");
    std::exit(fileExists(program.path() + "-wal") ? 0 : 1);
  }
  int status = 1;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_THAT(walkFiles(program.folder().path()), ElementsAre("program.mdb"));
  EXPECT_EQ(program.open()->OpenRecordset("select * from Constructs where Status = 2")->RecordCount(), 3);
}

TEST(Durability, aWriteThatFindsNoRoomFailsAloneAndLeavesTheFileSound) {
  const ProgramFile program;
  const auto database = program.open();
  database->Execute("update Constructs set Status = 2 where KVID = 'k1'");
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small{60000, limit.rlim_max}; // stands for a full disk
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::string message = messageOf([&] {
    Savepoint whole(*database);
    database->Execute("update Constructs set Classification = ?", {std::string(200000, 'x')});
    whole.commit();
  });
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_THAT(message, testing::HasSubstr(program.path()));
  database->Execute("update Constructs set Status = 2 where KVID = 'k2'");
  EXPECT_EQ(soundness(*database), "ok");
  EXPECT_THAT(linesOf(*database->OpenRecordset("Constructs"), {"Status", "Classification"}),
              ElementsAre("2|-", "2|first", "1|second"));
}

TEST(Durability, aKilledUpgradeHasNotBegun) {
  const ProgramFile program;
  killInTheMidst([&](auto ready) {
    const auto database = program.open();
    Savepoint whole(*database);
    database->Execute("alter table Constructs add column [p_Status] Integer");
    database->Execute("update Constructs set [p_Status] = Status");
    database->Execute("alter table Constructs drop column Status");
    ready();
    ::pause();
  });
  const auto database = program.open();
  EXPECT_TRUE(database->hasField("Constructs", "Status"));
  EXPECT_FALSE(database->hasField("Constructs", "p_Status"));
}

TEST(Durability, aReplacementKeepsTheRowsOfTheOldFileUntilItIsComplete) {
  const ProgramFile program;
  killInTheMidst([&](auto ready) {
    const auto database = program.open();
    database->Execute("update Constructs set Status = 2");
    DatabaseBuilder builder(program.path());
    builder.database().Execute("create table T (A)");
    ready();
    ::pause();
  });
  {
    DatabaseBuilder builder(program.path());
    builder.database().Execute("create table T (A)");
  }
  EXPECT_EQ(program.open()->OpenRecordset("select * from Constructs where Status = 2")->RecordCount(), 3);
  DatabaseBuilder builder(program.path());
  builder.database().Execute("create table T (A)");
  builder.finish();
  EXPECT_TRUE(program.open()->hasTable("T"));
  EXPECT_FALSE(program.open()->hasTable("Constructs"));
}

} // namespace

} // namespace platform
