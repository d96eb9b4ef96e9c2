#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kAffected = 1;

class Derive : public ::testing::Test {
 protected:
  Derive() {
    host.add({.id = "A", .constructs = "k1 X 0 4 A\n k2 Y 0 4 W\n"});
    host.add({.id = "B", .constructs = "k1 X 0 4 -\n"});
    host.add({.id = "C", .constructs = "k1 X 0 4 A\n k2 Y 0 4 A\n k3 Z 0 4 A\n k4 Q 0 4 A\n"});
    host.add({.id = "D", .constructs = "k1 X 0 4 A\n", .type = "ASM"}); // its type knows no size
    host.newProject = "New";
    host.run();
    host.takeLog();
  }
  std::string from(int list) {
    host.choose("mnuFileCreateFrom", list);
    return host.takeLog();
  }
  FakeHost host;
};

TEST_F(Derive, JoinsTheProgramsOfTheListAsksForTheSizesAndWritesThem) {
  host.window().lvPrograms.ListItems.Item("C").setSelected(true); // which plays no part
  EXPECT_EQ(from(kAffected), "ask name\nfind FOLDER New\ncreate New\nfind FOLDER New\n"
                             "join A BelongsTo New (busy)\njoin C BelongsTo New (busy)\njoin D BelongsTo New (busy)\n"
                             "sizes of found constructs for frmMain 2 3 4\n"
                             "begin A (busy)\nset ChangeMagnitude S (busy)\ncommit A (busy)\n"
                             "begin C (busy)\nset ChangeMagnitude XL (busy)\ncommit C (busy)\n");
  EXPECT_EQ(host.window().MousePointer, platform::kPointerDefault);
  EXPECT_THAT(host.messages(), IsEmpty());
  host.newProject = "Other";
  EXPECT_NE(from(0).find("join A BelongsTo Other (busy)\nsizes of found constructs for frmMain 1 1 1\n"),
            std::string::npos)
      << "the list of the entry that was chosen, and a dialog of its own";
}

TEST_F(Derive, WhatStopsIt) {
  EXPECT_EQ(from(2), "");
  EXPECT_THAT(host.messages(), ElementsAre("48|Tarnsift|Selected lists are empty."));
  host.newProject = "";
  EXPECT_EQ(from(kAffected), "ask name\n");
  EXPECT_THAT(host.messages(), IsEmpty());
  host.newProject = "P";
  EXPECT_EQ(from(kAffected), "ask name\nfind FOLDER P\n");
  EXPECT_THAT(host.messages(), ElementsAre("48|Tarnsift|Project P already exists."));
  host.newProject = "New";
  host.createsProjects = false;
  EXPECT_EQ(from(kAffected), "ask name\nfind FOLDER New\ncreate New\n");
  EXPECT_THAT(host.messages(), ElementsAre("16|Tarnsift|Cannot create project New"));
  host.createsProjects = true;
  host.confirmSizes = false;
  const std::string cancelled = from(kAffected);
  EXPECT_NE(cancelled.find("join C BelongsTo New"), std::string::npos);
  EXPECT_EQ(cancelled.find("begin"), std::string::npos) << "the project stands without sizes";
  EXPECT_EQ(host.window().MousePointer, platform::kPointerDefault);
  EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(Derive, ProgramsThatCannotBeJoinedOrFoundAreSkippedAndStillCount) {
  host.unjoinable = {"C"};
  host.lostPrograms = {"A"};
  EXPECT_EQ(from(kAffected), "ask name\nfind FOLDER New\ncreate New\nfind FOLDER New\n"
                             "join C BelongsTo New (busy)\njoin D BelongsTo New (busy)\n"
                             "sizes of found constructs for frmMain 2 3 4\n"
                             "begin C (busy)\nset ChangeMagnitude XL (busy)\ncommit C (busy)\n");
  EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(Derive, SizesByTheProposalOrTheAnalystsLimits) {
  struct Case {
    std::array<const char*, 3> counts; ///< of A, B and C
    std::optional<std::array<std::int32_t, 3>> limits;
    const char* proposed;
    const char* sizes;
  };
  const Case kCases[] = {
      {{"3", "10", "50"}, {}, "4 27 50", "S M XL "},
      {{"7", "7", "0"}, {}, "7 7 7", "XL XL "},
      {{"7", "0", "0"}, {}, "7 7 7", "XL "},
      {{"5", "6", "0"}, {}, "6 6 6", "S XL "},
      {{"1", "2", "4"}, {}, "2 3 4", "S M XL "},
      {{"1", "3", "4"}, {}, "2 3 4", "S L XL "},
      {{"1", "3", "4"}, {{2, 3, 5}}, "2 3 4", "S L L "},
      {{"1", "3", "4"}, {{9, 3, 0}}, "2 3 4", "S S S "}, // taken as they come back
      {{"1000000", "1000001", "2000000"}, {}, "1000000 1500000 2000000", "M M XL "},
  };
  int number = 0;
  for (const Case& example : kCases) {
    host.newProject = "N" + std::to_string(++number);
    host.newLimits = example.limits;
    for (std::size_t i = 0; i < 3; ++i)
      host.window().lvPrograms.ListItems.Item(i + 1).setSubItems(2, example.counts[i]);
    host.window().lvPrograms.ListItems.Item("D").setSubItems(2, "    0");
    const std::string log = from(kAffected);
    EXPECT_NE(log.find(std::string("frmMain ") + example.proposed + "\n"), std::string::npos) << log;
    std::string sizes;
    for (std::size_t at = 0; (at = log.find("set ChangeMagnitude ", at)) != std::string::npos;) {
      at += 20;
      sizes += log.substr(at, log.find(' ', at) + 1 - at);
    }
    EXPECT_EQ(sizes, example.sizes) << "case " << number;
  }
}

} // namespace
} // namespace tarnsift_test
