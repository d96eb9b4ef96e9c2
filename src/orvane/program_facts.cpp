#include "orvane/program_facts.hpp"

#include <fmt/format.h>

#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"
#include "tarnsift/store/program_database.hpp"

namespace orvane {

std::vector<ProgramFacts> programsOf(const BaseFolder& base, RepositoryFile& repository, const std::string& project,
                                     const std::string& pattern) {
  const auto folder = repository.FindByName(kProjectType, project, 0);
  std::vector<ProgramFacts> programs;
  for (auto cursor = repository.SelectObjects(kSourceType, folder->Id(), "Name"); !cursor->AtEnd();
       cursor->MoveNext()) {
    const auto object = cursor->Current();
    ProgramFacts facts;
    facts.id = object->Id();
    facts.name = object->Attribute("Name").asText();
    if (!pattern.empty() && !platform::like(platform::upper(facts.name), platform::upper(pattern))) continue;
    facts.source = object->Attribute("Source").asText();
    const std::string analysis = object->Attribute("Kelvane").asText();
    if (!analysis.empty()) facts.analysisFile = base.native(analysis);
    facts.verified = object->Attribute("DataRelations").asBool() && platform::fileExists(facts.analysisFile);
    facts.reason = object->Attribute("Reason").asText();
    if (!facts.verified && facts.reason.empty()) facts.reason = "not verified yet";
    facts.size = object->Attribute("ChangeMagnitude").asText();
    facts.files = object->Attribute("Files").asInteger();
    facts.lines = object->Attribute("Lines").asInteger();
    programs.push_back(std::move(facts));
  }
  if (programs.empty() && !pattern.empty())
    throw platform::Error(fmt::format("no program of project {} matches '{}'", project, pattern));
  return programs;
}

Decisions decisionsOf(const ProgramFacts& program, const std::string& project) {
  Decisions decisions;
  const auto database = platform::dbEngine().OpenDatabase(tarnsift::DatabasePath(program.analysisFile));
  const std::string status = tarnsift::statusColumnOf(project);
  const std::string comment = tarnsift::classificationColumnOf(project);
  if (!database->hasField("Constructs", status)) return decisions;
  const auto rows = database->OpenRecordset("select KVID, " + status + ", " + comment + " from Constructs where " +
                                            status + " is not null or " + comment + " is not null");
  for (; !rows->Eof(); rows->MoveNext()) {
    Decision decision{std::nullopt, rows->Field(comment).asText()};
    if (const auto value = rows->Field(status); !value.isNull()) decision.status = static_cast<int>(value.asInteger());
    decisions.emplace(rows->Field("KVID").asText(), std::move(decision));
  }
  return decisions;
}

std::array<std::int64_t, 3> countsOf(const ProgramFacts& program, const std::string& project) {
  std::array<std::int64_t, 3> counts{};
  const auto database = platform::dbEngine().OpenDatabase(tarnsift::DatabasePath(program.analysisFile));
  const std::string status = tarnsift::statusColumnOf(project);
  if (!database->hasField("Constructs", status)) return counts;
  const auto rows = database->OpenRecordset("select " + status + " as list, Count(*) as cnt from Constructs where " +
                                            status + " is not null group by " + status);
  for (; !rows->Eof(); rows->MoveNext())
    counts.at(static_cast<std::size_t>(rows->Field("list").asInteger())) = rows->Field("cnt").asInteger();
  return counts;
}

} // namespace orvane
