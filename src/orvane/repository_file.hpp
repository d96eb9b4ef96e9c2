#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/dao/dao.hpp"
#include "tarnsift/session/repository.hpp"

namespace orvane {

/// Types of repository objects.
inline constexpr const char* kProjectType = "FOLDER";  ///< a project
inline constexpr const char* kSourceType = "COBOL";    ///< a source program; carries the flag PROGRAMCODE
inline constexpr const char* kProgramType = "PROGRAM"; ///< the logical program of a source; refers to it by SID
/// Relation of a source to a project; its logical program is joined with it.
inline constexpr const char* kBelongsTo = "BelongsTo";

/// Makes an empty repository file; one that is there stays.
void createRepositoryFile(const std::string& path);

/// The repository of a base folder. Every change is written at once.
class RepositoryFile : public tarnsift::Repository {
 public:
  explicit RepositoryFile(const std::string& path);
  ~RepositoryFile() override;

  tarnsift::Ref<tarnsift::RepositorySchema> Schema() override;
  tarnsift::Ref<tarnsift::RepositoryCursor> SelectObjects(const std::string& type, const std::string& parentId,
                                                          const std::string& order) override;
  tarnsift::Ref<tarnsift::RepositoryObject> ObjectById(const std::string& id) override;
  tarnsift::Ref<tarnsift::RepositoryObject> FindByName(const std::string& type, const std::string& name,
                                                       int reserved) override;
  std::string FilePath() override;

  /// A new object of the type with its Name attribute.
  tarnsift::Ref<tarnsift::RepositoryObject> createObject(const std::string& type, const std::string& name);
  void removeObject(const std::string& id);
  /// The object of the type whose attribute has that value, letters without regard to case; empty without one.
  tarnsift::Ref<tarnsift::RepositoryObject> findByAttribute(const std::string& type, const std::string& attribute,
                                                            const std::string& value);
  /// All or nothing for what the work does.
  void together(const std::function<void()>& work);

  struct Data;

 private:
  std::shared_ptr<Data> m_data;
};

} // namespace orvane
