#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "platform/dao/dao.hpp"
#include "platform/runtime/object.hpp"

/// The host's model of what its analysis found in one program.
namespace tarnsift {

using platform::Object;
using platform::Ref;

class StoreConstruct;

/// Occurrences of constructs.
class InstanceCursor : public Object {
 public:
  virtual bool AtEnd() = 0;
  virtual Ref<StoreConstruct> Current() = 0;
  virtual void MoveNext() = 0;
  virtual std::size_t Count() = 0;
};

/// A construct, or one occurrence of it, and where it stands.
class StoreConstruct : public Object {
 public:
  virtual std::string FileId() = 0;
  virtual std::string FileName() = 0; ///< path relative to the base folder, backslashes
  virtual std::int64_t Line() = 0;    ///< from 1
  virtual std::int64_t Column() = 0;  ///< from 1
  /// "Instances": its usages.
  virtual Ref<InstanceCursor> Related(const std::string& relation) = 0;
  virtual std::string ColumnText(const std::string& column) = 0;
};

class SourceFile : public Object {
 public:
  virtual std::string Id() = 0;
  virtual std::string Path() = 0; ///< relative to the base folder, backslashes
};

class SourceFiles : public Object {
 public:
  virtual std::size_t Count() = 0;
  virtual Ref<SourceFile> Item(std::size_t index) = 0; ///< from 1
};

class StoreModel : public Object {
 public:
  virtual std::string Name() = 0;
  /// "Integer" marks a number column; any other name a text column.
  virtual std::string ColumnType(const std::string& column) = 0;
};

class MatchList : public Object {
 public:
  virtual std::unique_ptr<platform::Recordset> OpenRecordset() = 0; ///< with the column KVID
};

class MatchLists : public Object {
 public:
  virtual Ref<MatchList> Open(const std::string& listName, const std::string& ownerName, const std::string& text) = 0;
};

class AnalysisStore : public Object {
 public:
  virtual std::shared_ptr<platform::Database> Database() = 0;
  virtual Ref<StoreModel> Model() = 0;
  virtual Ref<StoreConstruct> ObjectById(const std::string& id) = 0; ///< throws for an unknown id
  virtual Ref<SourceFiles> Files() = 0;
  /// Everything of a kind word: "VAR" the usages of all constructs, "FILE", "PARA", "LIT", "COPY", "CALL".
  virtual Ref<InstanceCursor> SelectByKind(const std::string& nameFilter, const std::string& kindWord) = 0;
  virtual Ref<tarnsift::MatchLists> MatchLists() = 0;
  virtual void Close() = 0;
};

class ProgramStore : public Object {
 public:
  /// `path` is native and absolute; `storeClass` is what RepositoryAccess.StoreClassOf gave. Throws when the store
  /// cannot be read, saying what to do.
  virtual Ref<AnalysisStore> Open(const std::string& path, const std::string& storeClass) = 0;
};

} // namespace tarnsift
