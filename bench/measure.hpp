#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <sched.h>

namespace bench {

/// Median seconds of three runs; of one when the first takes long.
double seconds(const std::function<void()>& work);
/// Seconds of one run.
double secondsOnce(const std::function<void()>& work);
double median(std::vector<double> values);

/// While it lives, this thread and what it starts, other programs too, share one core.
class OneCore {
 public:
  OneCore();
  ~OneCore();
  OneCore(const OneCore&) = delete;
  OneCore& operator=(const OneCore&) = delete;

 private:
  cpu_set_t m_before{};
};

/// Runs a shell command with its output thrown away. Gives its exit status.
int shell(const std::string& command);
/// Whether a program of that name is on the path.
bool isInstalled(const std::string& program);

/// The largest memory that `work` needs in a process of its own, in MiB; what this process holds already counts too.
double peakMemory(const std::function<void()>& work);

} // namespace bench
