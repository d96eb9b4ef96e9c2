#pragma once

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "orvane/options.hpp"
#include "orvane/projects.hpp"
#include "orvane/sources.hpp"
#include "orvane/verification.hpp"
#include "platform/files/files.hpp"
#include "tarnsift/store/program_database.hpp"

namespace orvane {

/// A small COBOL program with those entries of working storage and statements.
inline std::string program(const std::string& name, const std::string& items, const std::string& statements = "") {
  return "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. " + name + ".\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n" + items +
         "       PROCEDURE DIVISION.\n" + statements + "           GOBACK.\n";
}

/// A base folder with the project P over a folder of sources of its own.
class Portfolio {
 public:
  Portfolio() : m_base(BaseFolder::create(m_folder.file("base"))), m_repository(new RepositoryFile(m_base.repositoryFile())) {
    std::filesystem::create_directories(sources() + "/copy");
    m_project = createProject(m_base, *m_repository, "P");
  }
  ~Portfolio() {
    m_repository = {};
    platform::dbEngine().settle();
  }

  std::string sources() const { return m_folder.file("src"); }
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(sources() + "/" + name, std::ios::binary) << text;
  }
  void remove(const std::string& name) const { std::filesystem::remove(sources() + "/" + name); }

  SourcesFound add() { return add({sources()}, {sources() + "/copy"}); }
  SourcesFound add(const std::vector<std::string>& paths, const std::vector<std::string>& copybookFolders, TakeSources how = TakeSources::link) {
    const platform::Ref<OptionDocument> document(new OptionDocument(optionFile(m_base.projectFolder("P"))));
    return addSources(m_base, *m_repository, m_project, *document, paths, copybookFolders, how);
  }
  platform::Document options() const {
    const platform::Ref<OptionDocument> document(new OptionDocument(optionFile(m_base.projectFolder("P"))));
    return document->Document();
  }
  void setOption(const std::string& name, const std::string& value) const {
    const platform::Ref<OptionDocument> document(new OptionDocument(optionFile(m_base.projectFolder("P"))));
    platform::Document options = document->Document();
    setAnalyserOption(options, name, value);
    document->Save();
  }
  VerifyResult verify(const VerifySettings& settings = {.jobs = 2}) { return verifyProject(m_base, *m_repository, "P", settings); }
  /// "written unchanged failed", then the failures.
  std::string outcome(const VerifySettings& settings = {.jobs = 2}) {
    const VerifyResult result = verify(settings);
    std::string text = std::to_string(result.written) + " written, " + std::to_string(result.unchanged) + " unchanged";
    for (const auto& failure : result.failed) text += "; " + failure.program + ": " + failure.reason.substr(failure.reason.find(": ") + 2);
    return text;
  }

  std::string attribute(const std::string& name, const std::string& attribute) const {
    return m_repository->findByAttribute(kSourceType, "Name", name)->Attribute(attribute).asText();
  }
  std::string analysisFile(const std::string& name) const { return m_base.native(attribute(name, "Kelvane")); }
  std::string databaseFile(const std::string& name) const { return tarnsift::DatabasePath(analysisFile(name)); }
  std::vector<std::string> query(const std::string& name, const std::string& sql, const std::vector<std::string>& fields) const {
    const auto database = platform::dbEngine().OpenDatabase(databaseFile(name));
    std::vector<std::string> lines;
    for (const auto rows = database->OpenRecordset(sql); !rows->Eof(); rows->MoveNext()) {
      std::string line;
      for (const auto& field : fields) line += (line.empty() ? "" : " ") + (rows->Field(field).isNull() ? "-" : rows->Field(field).asText());
      lines.push_back(line);
    }
    return lines;
  }
  /// Puts a dataname of the program into a list of the project.
  void decide(const std::string& name, const std::string& kvid, int status, const std::string& comment) const {
    const auto database = platform::dbEngine().OpenDatabase(databaseFile(name));
    if (!database->hasField("Constructs", "P_Status")) {
      database->Execute("alter table Constructs add column [P_Status] Integer");
      database->Execute("alter table Constructs add column [P_Classification] varchar(255)");
    }
    database->Execute("update Constructs set [P_Status] = ?, [P_Classification] = ? where KVID = ?", {status, comment, kvid});
  }
  std::vector<std::string> decisions(const std::string& name) const {
    return query(name, "select KVID, P_Status, P_Classification from Constructs where P_Status is not null", {"KVID", "P_Status", "P_Classification"});
  }
  std::vector<std::string> filesOfAnalysis() const {
    return platform::walkFiles(m_base.analysisFolder());
  }

  const BaseFolder& base() const { return m_base; }
  RepositoryFile& repository() { return *m_repository; }
  platform::Ref<tarnsift::RepositoryObject> project() const { return m_project; }
  std::vector<std::string> names(const std::string& type = kSourceType) {
    std::vector<std::string> all;
    for (auto members = m_repository->SelectObjects(type, m_project->Id(), "Name"); !members->AtEnd(); members->MoveNext())
      all.push_back(members->Current()->Attribute("Name").asText());
    return all;
  }

 private:
  platform::TemporaryFolder m_folder;
  BaseFolder m_base;
  platform::Ref<RepositoryFile> m_repository;
  platform::Ref<tarnsift::RepositoryObject> m_project;
};

} // namespace orvane
