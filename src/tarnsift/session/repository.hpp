#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/runtime/object.hpp"
#include "platform/runtime/value.hpp"

/// What the component asks of the host's repository. The host implements these interfaces and registers its global
/// objects under the names of their classes before it calls anything.
namespace tarnsift {

using platform::Object;
using platform::Ref;
using platform::Value;

/// A kind of object: "FOLDER" (a project), "PROGRAM", the types of source programs.
class RepositoryType : public Object {
 public:
  virtual std::string Name() = 0;
  virtual std::int64_t Flags() = 0;
  virtual std::string DisplayName() = 0;
  /// Whether objects of this type have the attribute.
  virtual bool AttributeDefinition(const std::string& name) = 0;
  /// The text that ProgramStore.Open takes for programs of this type.
  virtual std::string StoreClass() = 0;
};

class RepositoryObject : public Object {
 public:
  virtual std::string Id() = 0;
  virtual Ref<RepositoryType> Type() = 0;
  virtual std::string DisplayName() = 0;
  /// By name without regard to case; Null when it was never set. "Modified" is in microseconds since 1970 UTC.
  virtual Value Attribute(const std::string& name) = 0;
  virtual bool IsMemberOf(const std::string& folderId) = 0;
  /// Joins this object to another. Throws when they cannot be joined.
  virtual void AddRelation(const std::string& relation, const Ref<RepositoryObject>& object) = 0;
  virtual void BeginUpdate() = 0;
  virtual void SetAttribute(const std::string& name, const Value& value) = 0;
  virtual void CommitUpdate() = 0;
};

class RepositoryCursor : public Object {
 public:
  virtual bool AtEnd() = 0;
  virtual Ref<RepositoryObject> Current() = 0;
  virtual void MoveNext() = 0;
  virtual std::size_t Count() = 0;
};

class RepositorySchema : public Object {
 public:
  virtual std::vector<Ref<RepositoryType>> ObjectTypes() = 0;
  /// Bit mask of a named flag, e.g. "PROGRAMCODE"; 0 for an unknown name.
  virtual std::int64_t TypeFlags(const std::string& name) = 0;
};

class Repository : public Object {
 public:
  virtual Ref<RepositorySchema> Schema() = 0;
  /// Objects of a type: all, or those that belong to the parent; `order` names the attribute they are ordered by, ""
  /// none.
  virtual Ref<RepositoryCursor> SelectObjects(const std::string& type, const std::string& parentId,
                                              const std::string& order) = 0;
  /// Empty when there is no such object.
  virtual Ref<RepositoryObject> ObjectById(const std::string& id) = 0;
  /// Throws when there is none of that name.
  virtual Ref<RepositoryObject> FindByName(const std::string& type, const std::string& name, int reserved) = 0;
  virtual std::string FilePath() = 0;
};

class RepositoryAccess : public Object {
 public:
  virtual Ref<tarnsift::Repository> Repository() = 0;
  /// The text that ProgramStore.Open takes for that program.
  virtual std::string StoreClassOf(const std::string& id) = 0;
};

} // namespace tarnsift
