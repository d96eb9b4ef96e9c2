#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "orvane/verification.hpp"

namespace desktop {

/// What to analyse. Without sources the project is there and is verified again.
struct AnalysisRequest {
  std::string base; ///< native; made when missing
  std::string project;
  std::vector<std::string> sources; ///< folders and files, native
  std::vector<std::string> copybookFolders;
};

/// Makes a base folder and a project, takes the sources in and verifies them, on a thread of its own. Whatever ends it,
/// the base folder is consistent and the next run goes on from there.
class AnalysisJob {
 public:
  explicit AnalysisJob(AnalysisRequest request);
  /// Cancels and waits for the programs in work.
  ~AnalysisJob();
  AnalysisJob(const AnalysisJob&) = delete;
  AnalysisJob& operator=(const AnalysisJob&) = delete;

  struct State {
    std::size_t done = 0, total = 0; ///< programs; no total before they are known
    std::string program;             ///< the last one that was done
    bool finished = false;
    std::string base, project;   ///< as they are called there, once finished without an error
    std::string error;           ///< what ended it, one line
    orvane::VerifyResult result; ///< once finished without an error
  };
  State state() const;
  /// Begins no further program.
  void cancel() { m_cancel = true; }
  bool cancelled() const { return m_cancel; }
  const AnalysisRequest& request() const { return m_request; }

 private:
  void work();
  void run();
  std::vector<std::string> takeSources(const orvane::BaseFolder& base, orvane::RepositoryFile& repository);
  const AnalysisRequest m_request;
  std::atomic<bool> m_cancel = false;
  mutable std::mutex m_lock;
  State m_state;
  std::thread m_thread; ///< last: it uses the others
};

} // namespace desktop
