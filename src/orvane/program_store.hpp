#pragma once

#include <memory>

#include "orvane/base_folder.hpp"
#include "orvane/store_format.hpp"
#include "tarnsift/session/analysis_store.hpp"

namespace orvane {

/// Opens the analysis of programs: analysis file and database of one generation.
class ProgramStores : public tarnsift::ProgramStore {
 public:
  explicit ProgramStores(BaseFolder base) : m_base(std::move(base)) {}
  tarnsift::Ref<tarnsift::AnalysisStore> Open(const std::string& path, const std::string& storeClass) override;

 private:
  BaseFolder m_base;
};

/// A construct of a store, or one occurrence of it.
class StoredConstruct : public tarnsift::StoreConstruct {
 public:
  virtual std::uint32_t construct() const = 0; ///< index into StoreData::constructs; UINT32_MAX: a place of none
};

/// The store over an analysis file in memory; the host's own parts read the records directly.
class StoredAnalysis : public tarnsift::AnalysisStore {
 public:
  StoredAnalysis(std::string path, StoreData data)
      : m_path(std::move(path)), m_data(std::make_shared<StoreData>(std::move(data))) {}

  std::shared_ptr<platform::Database> Database() override;
  tarnsift::Ref<tarnsift::StoreModel> Model() override;
  tarnsift::Ref<tarnsift::StoreConstruct> ObjectById(const std::string& id) override;
  tarnsift::Ref<tarnsift::SourceFiles> Files() override;
  tarnsift::Ref<tarnsift::InstanceCursor> SelectByKind(const std::string& nameFilter,
                                                       const std::string& kindWord) override;
  tarnsift::Ref<tarnsift::MatchLists> MatchLists() override;
  void Close() override { m_database.reset(); }

  const StoreData& data() const { return *m_data; }

 private:
  std::string m_path;
  std::shared_ptr<const StoreData> m_data;
  std::shared_ptr<platform::Database> m_database;
};

/// Name of the language model.
inline constexpr const char* kModelName = "COBOL";

/// The text of an analysis column of a construct; "" for an unknown column and for what the construct does not have.
std::string columnText(const StoreData& data, std::uint32_t construct, std::string_view column);

/// The keys that a search found in a program, beside its analysis file.
std::string matchFile(const std::string& analysisFile);
void writeMatches(const std::string& analysisFile, const std::string& listName, const std::string& owner,
                  const std::vector<std::string>& kvids);
std::vector<std::string> readMatches(const std::string& analysisFile, const std::string& listName,
                                     const std::string& owner);

} // namespace orvane
