#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "bench/analyse.hpp"
#include "platform/dao/dao.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/memory.hpp"

namespace {

constexpr std::uint64_t kLines = 2'000'000;

} // namespace

// tarnsift_bench [--profile] FOLDER…: repeats the programs below the folders until there are 2,000,000 lines (or
// TARNSIFT_BENCH_LINES). Exit status 1 when an aim was missed. With --profile only one analysis of each program.
int main(int argc, char** argv) {
  platform::keepFreedMemory(); // as the product does
  std::vector<std::string> sources(argv + 1, argv + argc);
  const bool profiled = std::erase(sources, "--profile") > 0;
  if (sources.empty()) {
    fmt::print(stderr, "tarnsift_bench: name folders of COBOL programs\n");
    return 2;
  }
  try {
    const char* const wanted = std::getenv("TARNSIFT_BENCH_LINES");
    const platform::TemporaryFolder folder;
    const auto corpus =
        bench::makeCorpus(sources, folder.file("corpus"), wanted ? std::strtoull(wanted, nullptr, 10) : kLines);
    if (profiled) {
      bench::analyseOnce(corpus);
      return 0;
    }
    const bool met = bench::benchAnalyse(corpus, folder.path());
    platform::dbEngine().settle();
    return met ? 0 : 1;
  } catch (const std::exception& error) {
    fmt::print(stderr, "tarnsift_bench: {}\n", error.what());
    return 2;
  }
}
