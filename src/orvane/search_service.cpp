#include "orvane/search_service.hpp"

#include "orvane/named_criteria.hpp"
#include "orvane/program_store.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

std::vector<std::string> matchesOf(const StoreData& data, const Criterion& matches) {
  std::vector<std::string> kvids;
  for (std::uint32_t construct = 0; construct < data.constructs.size(); ++construct)
    if (matches(data, construct)) kvids.emplace_back(data.text(data.constructs[construct].kvid));
  return kvids;
}

} // namespace

std::optional<std::size_t> SearchService::scopeSize() const {
  if (m_scope.empty()) return std::nullopt;
  return platform::splitAt(m_scope, '|').size();
}

bool SearchService::inScope(const std::string& key) const {
  if (m_scope.empty()) return true;
  const auto keys = platform::splitAt(m_scope, '|');
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

platform::Value SearchService::FindConstructs(const tarnsift::Ref<tarnsift::StoreModel>&, const std::string& listName,
                                              tarnsift::KVWorkSpace&, bool, const std::string&) {
  const std::optional<std::string> chosen = chooseCriterion ? chooseCriterion(m_default) : m_default;
  m_last = chosen.value_or(m_default);
  if (!chosen || chosen->empty()) return false;
  const Criterion matches = projectOptions ? projectCriterion(projectOptions(), *chosen) : criterionNamed(*chosen);

  platform::Document results;
  platform::Node root = results.createElement("SEARCH");
  results.setDocumentElement(root);
  platform::Node model = root.appendChild(results.createElement("MODELS")).appendChild(results.createElement("MODEL"));
  model.setAttribute("Name", kModelName);
  platform::Node list = model.appendChild(results.createElement("MATCHES"));
  list.setAttribute("ListName", listName);
  const std::string owner = m_project->Attribute("Name").asText();
  for (auto programs = m_repository->SelectObjects(kSourceType, m_project->Id(), ""); !programs->AtEnd();
       programs->MoveNext()) {
    const auto program = programs->Current();
    const std::string analysis = program->Attribute("Kelvane").asText();
    if (analysis.empty() || !program->Attribute("DataRelations").asBool() || !inScope(program->Id())) continue;
    try {
      const std::string path = m_base.native(analysis);
      const std::vector<std::string> found = matchesOf(readStore(path), matches);
      if (!found.empty()) writeMatches(path, listName, owner, found);
      platform::Node object = list.appendChild(results.createElement("OBJECT"));
      object.setAttribute("ObjID", program->Id());
      object.setAttribute("NewCount", std::to_string(found.size()));
    } catch (const platform::FileError& error) {
      if (onProblem) onProblem(program->Attribute("Name").asText() + ": not searched: " + error.what());
    }
  }
  m_results = results;
  return true;
}

} // namespace orvane
