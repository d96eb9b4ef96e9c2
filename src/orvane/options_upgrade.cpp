#include "orvane/options_upgrade.hpp"

#include <memory>

#include "orvane/host.hpp"
#include "orvane/host_objects.hpp"
#include "orvane/object_cursor.hpp"
#include "orvane/product.hpp"
#include "platform/files/files.hpp"

namespace orvane {

namespace {

using platform::Document;
using platform::Ref;
using tarnsift::RepositoryObject;
using Outcome = OptionUpgrade::Outcome;

/// The repository with only those of its projects that this process holds.
class HeldProjects final : public tarnsift::Repository {
 public:
  HeldProjects(Ref<tarnsift::Repository> repository, std::vector<Ref<RepositoryObject>> held)
      : m_repository(std::move(repository)), m_held(std::move(held)) {}
  Ref<tarnsift::RepositorySchema> Schema() override { return m_repository->Schema(); }
  Ref<tarnsift::RepositoryCursor> SelectObjects(const std::string& type, const std::string& parentId,
                                                const std::string& order) override {
    if (type == kProjectType) return new ObjectCursor(m_held);
    return m_repository->SelectObjects(type, parentId, order);
  }
  Ref<RepositoryObject> ObjectById(const std::string& id) override { return m_repository->ObjectById(id); }
  Ref<RepositoryObject> FindByName(const std::string& type, const std::string& name, int reserved) override {
    return m_repository->FindByName(type, name, reserved);
  }
  std::string FilePath() override { return m_repository->FilePath(); }

 private:
  Ref<tarnsift::Repository> m_repository;
  std::vector<Ref<RepositoryObject>> m_held;
};

/// A project on its way.
struct Work {
  Ref<RepositoryObject> object;
  std::string file;
  std::unique_ptr<FolderLock> lock;
  bool older = false; ///< without pages when the work began
  std::string before;
  OptionUpgrade result;
};

bool hasPages(const Document& document) {
  return static_cast<bool>(document.selectSingleNode("//CASE[@ID='Tarnsift']/LIST[@NAME='Pages']"));
}

// What cannot be done with one project is that project's result; the others go on.
template<typename Step>
void step(Work& work, Step&& run) {
  try {
    run();
  } catch (const platform::Error& error) {
    work.result.outcome = Outcome::left;
    work.result.reason = error.what();
  }
}

std::vector<Work> holdAll(const BaseFolder& base, RepositoryFile& repository) {
  std::vector<Work> all;
  for (auto projects = repository.SelectObjects(kProjectType, "", ""); !projects->AtEnd(); projects->MoveNext()) {
    Work work;
    work.object = projects->Current();
    work.result.project = work.object->Attribute("Name").asText();
    work.file = optionFile(base.projectFolder(work.result.project));
    if (!platform::fileExists(work.file)) {
      work.result.outcome = Outcome::missing;
    } else {
      step(work, [&] {
        work.lock = std::make_unique<FolderLock>(projectLockFile(base, work.result.project),
                                                 FolderLock::Mode::exclusive, "project " + work.result.project);
        const Document document = Document::load(work.file);
        work.older = !hasPages(document);
        work.before = document.text();
      });
    }
    all.push_back(std::move(work));
  }
  return all;
}

struct HostObjects {
  HostObjects(const BaseFolder& base, const Ref<tarnsift::Repository>& repository) {
    registerHostObjects(base, repository, {});
  }
  ~HostObjects() { unregisterHostObjects(); }
  HostObjects(const HostObjects&) = delete;
  HostObjects& operator=(const HostObjects&) = delete;
};

void runComponent(const BaseFolder& base, const Ref<RepositoryFile>& repository, const std::vector<Work>& all) {
  std::vector<Ref<RepositoryObject>> held;
  for (const Work& work : all)
    if (work.lock) held.push_back(work.object);
  const HostObjects registered(base, new HeldProjects(repository, std::move(held)));
  platform::Value dummy;
  createFromComponent("Tarnsift.UprgadeOptions")->Invoke("Upgrade", {&dummy, 1});
}

void complete(Work& work) {
  Document document = Document::load(work.file);
  const std::string upgraded = document.text();
  mergeOntoTemplate(document);
  const std::string whole = document.text();
  if (whole != upgraded) document.save(work.file);
  if (whole != work.before) work.result.outcome = work.older ? Outcome::upgraded : Outcome::completed;
}

} // namespace

std::vector<OptionUpgrade> upgradeOptions(const BaseFolder& base, const Ref<RepositoryFile>& repository) {
  const FolderLock lock(baseLockFile(base), FolderLock::Mode::shared, "the base folder " + base.path());
  std::vector<Work> all = holdAll(base, *repository);
  runComponent(base, repository, all);
  std::vector<OptionUpgrade> results;
  for (Work& work : all) {
    if (work.result.outcome == Outcome::current) step(work, [&] { complete(work); });
    results.push_back(std::move(work.result));
  }
  return results;
}

} // namespace orvane
