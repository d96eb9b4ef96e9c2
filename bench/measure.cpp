#include "bench/measure.hpp"

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/runtime/error.hpp"

namespace bench {

namespace {
constexpr double kLong = 20;
constexpr std::size_t kRuns = 3;
} // namespace

double seconds(const std::function<void()>& work) {
  std::vector<double> all;
  do {
    all.push_back(secondsOnce(work));
  } while (all.size() < kRuns && all.front() < kLong);
  return median(std::move(all));
}

double secondsOnce(const std::function<void()>& work) {
  using Clock = std::chrono::steady_clock;
  const auto begin = Clock::now();
  work();
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

OneCore::OneCore() {
  if (::sched_getaffinity(0, sizeof m_before, &m_before) != 0) throw platform::Error("the cores cannot be asked for");
  std::size_t first = 0;
  while (!CPU_ISSET(first, &m_before))
    ++first;
  cpu_set_t one;
  CPU_ZERO(&one);
  CPU_SET(first, &one);
  if (::sched_setaffinity(0, sizeof one, &one) != 0) throw platform::Error("a core cannot be chosen");
}

OneCore::~OneCore() {
  ::sched_setaffinity(0, sizeof m_before, &m_before);
}

int shell(const std::string& command) {
  const int status = std::system(("{ " + command + "; } >/dev/null 2>&1 </dev/null").c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128;
}

bool isInstalled(const std::string& program) {
  return shell("command -v " + program) == 0;
}

double peakMemory(const std::function<void()>& work) {
  const pid_t child = ::fork();
  if (child < 0) throw platform::Error("no process could be started");
  if (child == 0) {
    work();
    ::_exit(0);
  }
  int status = 0;
  rusage used{};
  ::wait4(child, &status, 0, &used);
  if (status != 0) throw platform::Error("the measured process failed");
  return static_cast<double>(used.ru_maxrss) / 1024;
}

} // namespace bench
