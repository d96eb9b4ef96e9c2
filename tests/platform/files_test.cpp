#include "platform/ordinary_user.hpp"
#include "platform/program_file.hpp"

#include <platform/runtime/error.hpp>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>

using testing::ElementsAre;
using testing::HasSubstr;

namespace platform {

namespace {

TEST(NativePath, joinsBackslashPathsBelowTheirBase) {
  const struct {
    std::string base, path, native;
  } cases[] = {
      {"/base", "Projects\\p\\TARNSIFT\\FoundItems.txt", "/base/Projects/p/TARNSIFT/FoundItems.txt"},
      {"/base/", "\\a\\\\b", "/base/a/b"},
      {"/base", "a/b\\.\\c.cbl", "/base/a/b/c.cbl"},
      {"/base", "..\\x", "/base/../x"},
      {"/", "a", "/a"},
      {"", "a\\b", "a/b"},
      {"/base", "", "/base"},
  };
  for (const auto& [base, path, native] : cases)
    EXPECT_EQ(nativePath(base, path), native) << path;
  EXPECT_EQ(nativePath("/base\\Analysis\\x.mdb"), "/base/Analysis/x.mdb");
}

TEST(NativePath, looksUpNamesWithoutRegardToCaseWhereAsked) {
  const TemporaryFolder folder;
  createFolders(folder.file("Src/Copy"));
  WriteFileAtomically(folder.file("Src/Copy/CUST.cpy"), "");
  WriteFileAtomically(folder.file("Src/Copy/cust.CPY"), "");
  const auto found = [&](std::string_view path) { return nativePath(folder.path(), path, CaseRule::ignore); };
  EXPECT_EQ(found("src\\COPY\\Cust.cpy"), folder.file("Src/Copy/CUST.cpy"));
  EXPECT_EQ(found("src\\COPY\\cust.CPY"), folder.file("Src/Copy/cust.CPY")) << "the exact name comes first";
  EXPECT_EQ(found("src\\none\\x"), folder.file("Src/none/x"));
  EXPECT_EQ(nativePath(folder.path(), "src"), folder.file("src"));
}

TEST(Folders, areMadeOneLevelAtATimeOrAllAtOnce) {
  const TemporaryFolder folder;
  EXPECT_THAT(messageOf([&] { createFolder(folder.file("a/b")); }), HasSubstr("a/b: No such file or directory"));
  createFolder(folder.file("a"));
  EXPECT_THAT(messageOf([&] { createFolder(folder.file("a")); }), HasSubstr("File exists"));
  createFolders(folder.file("a/b/c"));
  createFolders(folder.file("a/b/c"));
  WriteFileAtomically(folder.file("f"), "");
  EXPECT_THROW(createFolders(folder.file("f")), FileError);
  EXPECT_THROW(createFolders(folder.file("f/g")), FileError);
  EXPECT_TRUE(folderExists(folder.file("a/b/c")) && !fileExists(folder.file("a")) && !folderExists(folder.file("f")));
  removeAll(folder.file("a"));
  removeAll(folder.file("a"));
  EXPECT_FALSE(folderExists(folder.file("a")));
}

TEST(Folders, areWalkedInOrderWithoutHiddenNamesAndWithoutCircles) {
  const TemporaryFolder folder;
  createFolders(folder.file("b/c"));
  createFolders(folder.file(".git"));
  for (const char* name : {"z", "b/y", "b/c/x", ".git/config", "a"})
    WriteFileAtomically(folder.file(name), "");
  std::filesystem::create_symlink("..", folder.file("b/up"));
  std::filesystem::create_symlink("nowhere", folder.file("dead"));
  EXPECT_THAT(walkFiles(folder.path()), ElementsAre("a", "b/c/x", "b/y", "z"));
  EXPECT_THAT(messageOf([&] { walkFiles(folder.file("none")); }), HasSubstr("none: No such file"));
}

TEST(Reading, givesBytesLinesAndClearErrors) {
  const TemporaryFolder folder;
  const std::string bytes("one\r\ntwo\0x\n\nlast", 16);
  WriteFileAtomically(folder.file("f"), bytes);
  EXPECT_EQ(readText(folder.file("f")), bytes);
  EXPECT_EQ(readText(folder.file("f"), 16), bytes);
  EXPECT_THAT(messageOf([&] { readText(folder.file("f"), 15); }), HasSubstr("larger than 15 bytes"));

  LineReader lines(folder.file("f"));
  std::vector<std::string> read;
  while (const auto line = lines.next())
    read.push_back(*line);
  EXPECT_THAT(read, ElementsAre("one", std::string("two\0x", 5), "", "last"));

  for (const auto& [name, reason] : {std::pair{"none", "No such file or directory"}, std::pair{"", "Is a directory"}}) {
    EXPECT_THAT(messageOf([&] { readText(folder.file(name)); }), HasSubstr(reason));
    EXPECT_THAT(messageOf([&] { LineReader reader(folder.file(name)); }), HasSubstr(reason));
  }
  EXPECT_GT(readText("/proc/self/status").size(), 100U) << "a file that tells no size";
}

TEST(Reading, tellsAMissingRight) {
  const TemporaryFolder folder;
  WriteFileAtomically(folder.file("secret"), "x");
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(folder.file("secret").c_str(), 0000), 0);
  const OrdinaryUser user;
  const std::string reading = messageOf([&] { readText(folder.file("secret")); });
  const std::string lines = messageOf([&] { LineReader reader(folder.file("secret")); });
  EXPECT_THAT(reading, HasSubstr("secret: Permission denied"));
  EXPECT_EQ(lines, reading);
}

TEST(WriteFileAtomically, replacesAFileWholeAndKeepsItsRights) {
  const TemporaryFolder folder;
  WriteFileAtomically(folder.file("f"), "old");
  ASSERT_EQ(::chmod(folder.file("f").c_str(), 0640), 0);
  WriteFileAtomically(folder.file("f"), std::string(100000, 'n'));
  EXPECT_EQ(readText(folder.file("f")), std::string(100000, 'n'));
  std::filesystem::create_symlink("f", folder.file("link"));
  WriteFileAtomically(folder.file("link"), "through the link");
  EXPECT_EQ(readText(folder.file("f")), "through the link");
  removeAll(folder.file("link"));
  struct stat status {};
  ASSERT_EQ(::stat(folder.file("f").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640U);
  EXPECT_THAT(walkFiles(folder.path()), ElementsAre("f"));
  EXPECT_LT(std::chrono::system_clock::now() - modificationTime(folder.file("f")), std::chrono::minutes(1));
}

TEST(WriteFileAtomically, leavesTheOldFileAndNothingElseOnFailure) {
  const TemporaryFolder folder;
  WriteFileAtomically(folder.file("f"), "old");
  EXPECT_THAT(messageOf([&] { WriteFileAtomically(folder.file("none/f"), "x"); }), HasSubstr("none/f: No such file"));
  EXPECT_THAT(messageOf([&] { WriteFileAtomically(folder.path(), "x"); }), HasSubstr("Is a directory"));

  // A limit on the size of files stands for the full disk: the write fails half way.
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small{10000, limit.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::string message = messageOf([&] { WriteFileAtomically(folder.file("f"), std::string(50000, 'n')); });
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_THAT(message, HasSubstr("f: File too large"));
  EXPECT_EQ(readText(folder.file("f")), "old");
  EXPECT_THAT(walkFiles(folder.path()), ElementsAre("f"));
}

TEST(WholeFile, takesItsPlaceAtTheEndOrNotAtAll) {
  const TemporaryFolder folder;
  WriteFileAtomically(folder.file("f"), "old");
  {
    WholeFile file(folder.file("f"));
    file.write(std::string(200000, 'n'));
    EXPECT_EQ(readText(folder.file("f")), "old");
  }
  EXPECT_THAT(walkFiles(folder.path()), ElementsAre("f"));
  WholeFile file(folder.file("f"));
  file.write(std::string(70000, 'n'));
  file.write("end");
  file.finish();
  EXPECT_EQ(readText(folder.file("f")), std::string(70000, 'n') + "end");
  EXPECT_THAT(walkFiles(folder.path()), ElementsAre("f"));
  EXPECT_THAT(messageOf([&] { WholeFile(folder.file("none/f")); }), HasSubstr("none/f: No such file"));
}

} // namespace

} // namespace platform
