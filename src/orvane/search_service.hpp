#pragma once

#include <functional>
#include <optional>
#include <string>

#include "orvane/base_folder.hpp"
#include "orvane/options.hpp"
#include "orvane/repository_file.hpp"
#include "tarnsift/session/workspace.hpp"

namespace orvane {

/// The search host: runs named criteria over the programs of a project and leaves the keys that match beside each
/// program's analysis file.
class SearchService : public tarnsift::SearchHost {
 public:
  SearchService(BaseFolder base, tarnsift::Ref<RepositoryFile> repository,
                tarnsift::Ref<tarnsift::RepositoryObject> project)
      : m_base(std::move(base)), m_repository(std::move(repository)), m_project(std::move(project)) {}

  void setScopeList(const std::string& keys) override { m_scope = keys; }
  void setDefaultSearchCriteriaName(const std::string& name) override { m_default = name; }
  void setGlobalSearch(bool global) override { m_global = global; }
  platform::Value FindConstructs(const tarnsift::Ref<tarnsift::StoreModel>& model, const std::string& listName,
                                 tarnsift::KVWorkSpace& workspace, bool flag, const std::string& text) override;
  std::string LastSearchCriteriaName() override { return m_last; }
  platform::Document Options() override { return m_results; }

  /// The project's options, where its filter and its saved criteria stand.
  std::function<platform::Document()> projectOptions;
  /// Programs that the search at hand looks through; nothing: all of the project.
  std::optional<std::size_t> scopeSize() const;
  /// What the analyst chooses, starting with the default; nothing: given up. Without it the default is taken.
  std::function<std::optional<std::string>(const std::string& defaultName)> chooseCriterion;
  /// A program whose analysis could not be searched, and why.
  std::function<void(const std::string&)> onProblem;

 private:
  bool inScope(const std::string& key) const;
  BaseFolder m_base;
  tarnsift::Ref<RepositoryFile> m_repository;
  tarnsift::Ref<tarnsift::RepositoryObject> m_project;
  std::string m_scope;
  std::string m_default;
  std::string m_last;
  bool m_global = false;
  platform::Document m_results;
};

} // namespace orvane
