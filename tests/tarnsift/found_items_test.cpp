#include "tarnsift/fake_host.hpp"

#include "tarnsift/store/found_items.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

constexpr const char* kFile = "Projects/P/TARNSIFT/FoundItems.txt";

std::int64_t microseconds(std::chrono::system_clock::time_point time) {
  return std::chrono::duration_cast<std::chrono::microseconds>(time.time_since_epoch()).count();
}

// The database of A says 1 0 0, that of B 0 1 0: any other count is from the file.
class FoundItemsFile : public ::testing::Test {
 protected:
  FoundItemsFile() {
    host.add({.id = "A", .constructs = "k1 CUST-NO 0 4 W\n"});
    host.add({.id = "B", .constructs = "k1 TOTAL 0 4 A\n"});
    platform::createFolder(host.path("Projects/P/TARNSIFT"));
  }
  std::string countsWith(const std::string& text) {
    host.writeFile(kFile, text);
    host.run();
    return host.counts();
  }
  FakeHost host;
};

TEST_F(FoundItemsFile, CountsComeFromItForTheProgramsThatItHas) {
  EXPECT_EQ(countsWith("a\t         7\t8\t 9\nZ\t1\t1\t1\n"), "A 7 8 9\nB 0 1 0\n");
  EXPECT_EQ(host.window().lvPrograms.ListItems.Item("A").SubItems(3), "         9");
}

TEST_F(FoundItemsFile, MissingFieldsAreEmptyCounts) {
  countsWith("A\t7\nB");
  const auto& row = host.window().lvPrograms.ListItems.Item("A");
  EXPECT_EQ(row.SubItems(1) + "|" + row.SubItems(2) + "|" + row.SubItems(3), "         7|          |          ");
  EXPECT_EQ(host.window().lvPrograms.ListItems.Item("B").SubItems(1), "          ");
}

TEST_F(FoundItemsFile, AnEmptyFileIsAnEmptyCache) {
  EXPECT_EQ(countsWith(""), "A 1 0 0\nB 0 1 0\n");
}

TEST_F(FoundItemsFile, LinesMayEndInTheOtherPlatformsWay) {
  EXPECT_EQ(countsWith("A\t7\t8\t9\r\n"), "A 7 8 9\nB 0 1 0\n");
}

TEST_F(FoundItemsFile, AProgramThatWasModifiedLaterIsCountedAnew) {
  host.writeFile(kFile, "A\t7\t8\t9\nB\t7\t8\t9\n");
  const std::int64_t date = microseconds(platform::modificationTime(host.path(kFile)));
  host.programs[0].modified = date + 1;
  host.programs[1].modified = date;
  host.run();
  EXPECT_EQ(host.counts(), "A 1 0 0\nB 7 8 9\n");
}

TEST_F(FoundItemsFile, ARepeatedIdEndsTheStart) {
  countsWith("A\t1\t1\t1\na\t2\t2\t2\n");
  EXPECT_THAT(host.messages(), ElementsAre(StartsWith("16|Tarnsift|Unsuccessful Tarnsift termination\r")));
  EXPECT_FALSE(host.window().Loaded());
  EXPECT_EQ(platform::readText(host.path(kFile)), "A\t1\t1\t1\na\t2\t2\t2\n") << "a failed session leaves the file";
}

TEST_F(FoundItemsFile, WhatTheSessionShowedComesBackInTheOrderOfThePane) {
  EXPECT_EQ(countsWith("A\t123\t0\t12345678901\nGONE\t1\t1\t1\n"), "A 123 0 12345678901\nB 0 1 0\n");
  host.window().lvPrograms.sortBy(1, true);
  host.close();
  EXPECT_EQ(platform::readText(host.path(kFile)),
            "B\t         0\t         1\t         0\nA\t       123\t         0\t12345678901\n");
  host.run();
  EXPECT_EQ(host.counts(), "A 123 0 12345678901\nB 0 1 0\n");
}

TEST_F(FoundItemsFile, NoDatabaseIsOpenedForAProgramThatItHas) {
  host.writeFile("Analysis/B.mdb", "no database at all");
  EXPECT_EQ(countsWith("B\t1\t2\t3\n"), "A 1 0 0\nB 1 2 3\n");
}

} // namespace
} // namespace tarnsift_test
