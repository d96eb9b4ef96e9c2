#include <chrono>
#include <iostream>
#include <sstream>

#include <fmt/format.h>

#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {
namespace {

constexpr int kMany = 100000;

/// A program of so many names in the Working list, shuffled so that no order helps.
Program programOf(int names) {
  Program program{.id = "A", .constructs = ""};
  for (int i = 0; i < names; ++i) {
    const std::string number = std::to_string(static_cast<std::int64_t>(i) * 7919 % names);
    program.constructs += "k" + number + " NAME-" + number + " " + std::to_string(i * 4) + " 4 W note\n";
  }
  return program;
}

class Bulk {
 public:
  explicit Bulk(int names) : count(names) {
    host.add(programOf(names));
    host.setOption("//GROUP[@NAME='Search']/BOOL[@NAME='OverrideStatus']", "true");
    for (int i = 0; i < names; ++i)
      host.search.matches["A"].push_back("k" + std::to_string(i));
  }
  void selectAll() { host.press("Ctrl+A"); }
  void remove() {
    host.screen.answers = {platform::Answer::Ok};
    host.press("Del");
  }
  const int count;
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST(BulkLists, AHundredThousandNamesMoveAndGoWithTrueCounts) {
  Bulk bulk(kMany);
  FakeHost& host = bulk.host;
  host.run();
  ASSERT_EQ(host.counts(), "A 100000 0 0\n");
  host.mark(0, {"k0", "k99999"});
  host.press("F8");
  EXPECT_EQ(host.counts(), "A 99998 0 2\n");
  bulk.window.lvList[0]->setSelectedItem(
      &bulk.window.lvList[0]->ListItems.Item(bulk.window.lvList[0]->ListItems.Count()));
  bulk.selectAll();
  host.press("F6");
  EXPECT_EQ(host.counts(), "A 0 99998 2\n");
  EXPECT_EQ(bulk.window.lvList[0]->SelectedItem(), nullptr);
  EXPECT_EQ(bulk.window.lvList[1]->ListItems.Count(), 99998u);
  bulk.window.tsLists.select(2);
  bulk.selectAll();
  bulk.window.lvList[1]->ListItems.Item("k500").setSelected(false);
  bulk.remove();
  EXPECT_EQ(host.messages(), std::vector<std::string>{"1||You are about to delete 99997 dataname(s). Continue?"});
  EXPECT_EQ(host.state(), "A 0 1 2\n  A k500 NAME-500: note\n  C k0 NAME-0: note\n  C k99999 NAME-99999: note\n");
  EXPECT_EQ(bulk.window.lvList[1]->SelectedItem()->Key(), "k500");
}

// Prints times; run with --gtest_also_run_disabled_tests.
TEST(BulkLists, DISABLED_TimesGrowWithTheNames) {
  std::cout << fmt::format("{:>8}{:>10}{:>10}{:>10}{:>10}{:>10}{:>10}{:>10}  ms\n", "names", "load", "sort", "sel. all",
                           "move", "sorted m.", "filter", "delete");
  for (const int names : {1000, 10000, kMany}) {
    Bulk bulk(names);
    FakeHost& host = bulk.host;
    std::string line = fmt::format("{:>8}", names);
    const auto timed = [&](const std::function<void()>& step) {
      const auto start = std::chrono::steady_clock::now();
      step();
      line += fmt::format("{:>10.1f}",
                          std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    };
    timed([&] { host.run(); });
    bulk.window.tsLists.select(1);
    timed([&] { bulk.window.lvList[0]->ColumnClick.raise(1); });
    timed([&] { bulk.selectAll(); });
    timed([&] { host.press("F6"); });
    // From the other end, with the focus on the last row.
    bulk.window.tsLists.select(2);
    auto& affected = bulk.window.lvList[1]->ListItems;
    bulk.window.lvList[1]->setSelectedItem(&affected.Item(affected.Count()));
    bulk.selectAll();
    timed([&] { host.press("F8"); });
    timed([&] { host.choose("mnuFileSearchTo", 0); });
    ASSERT_EQ(host.counts(), fmt::format("A {} 0 0\n", names));
    bulk.window.tsLists.select(1);
    bulk.selectAll();
    timed([&] { bulk.remove(); });
    ASSERT_EQ(host.counts(), "A 0 0 0\n");
    std::cout << line << std::endl;
  }
}

} // namespace
} // namespace tarnsift_test
