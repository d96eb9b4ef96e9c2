#include "desktop/start/analysis_job.hpp"

#include "orvane/projects.hpp"
#include "orvane/sources.hpp"
#include "platform/dao/dao.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace desktop {

AnalysisJob::AnalysisJob(AnalysisRequest request) : m_request(std::move(request)), m_thread([this] { work(); }) {}

AnalysisJob::~AnalysisJob() {
  m_cancel = true;
  m_thread.join();
}

AnalysisJob::State AnalysisJob::state() const {
  const std::lock_guard guard(m_lock);
  return m_state;
}

void AnalysisJob::work() {
  std::string error;
  try {
    run();
  } catch (const std::exception& failure) {
    error = failure.what();
  }
  platform::ignoring([] { platform::dbEngine().settle(); });
  const std::lock_guard guard(m_lock);
  m_state.error = std::move(error);
  m_state.finished = true;
}

std::vector<std::string> AnalysisJob::takeSources(const orvane::BaseFolder& base, orvane::RepositoryFile& repository) {
  const auto names = orvane::projectNames(repository);
  const auto known = std::find_if(names.begin(), names.end(), [this](const std::string& name) {
    return platform::equalsIgnoringCase(name, m_request.project);
  });
  const std::string project = known != names.end() ? *known : m_request.project;
  if (known == names.end()) orvane::createProject(base, repository, project);
  orvane::OptionDocument options(orvane::optionFile(base.projectFolder(project)));
  return orvane::addSources(base, repository, repository.FindByName(orvane::kProjectType, project, 0), options,
                            m_request.sources, m_request.copybookFolders)
      .problems;
}

void AnalysisJob::run() {
  const bool isNew = !m_request.sources.empty();
  const orvane::BaseFolder base =
      isNew ? orvane::BaseFolder::create(m_request.base) : orvane::BaseFolder::open(m_request.base);
  const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
  std::vector<std::string> problems;
  if (isNew) problems = takeSources(base, *repository);
  const std::string project = orvane::chooseProject(*repository, m_request.project);
  orvane::VerifySettings settings;
  settings.cancel = &m_cancel;
  settings.progress = [this](const orvane::VerifyProgress& step) {
    const std::lock_guard guard(m_lock);
    m_state.done = step.done;
    m_state.total = step.total;
    m_state.program = step.program;
  };
  orvane::VerifyResult result = orvane::verifyProject(base, *repository, project, settings);
  result.problems.insert(result.problems.begin(), problems.begin(), problems.end());
  const std::lock_guard guard(m_lock);
  m_state.result = std::move(result);
  m_state.base = base.path();
  m_state.project = project;
}

} // namespace desktop
