#include "procedure_facts.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "cobol/analyse.hpp"

namespace {

constexpr std::uint32_t kMargin = 11; ///< columns in front of area B

std::string joined(const std::vector<std::string>& lines) {
  std::string all;
  for (const std::string& line : lines)
    all += (all.empty() ? "" : ", ") + line;
  return all;
}

std::string inColumns(std::string_view text, std::uint32_t column) {
  std::istringstream lines{std::string(text)};
  std::string out;
  for (std::string line; std::getline(lines, line);) {
    const bool areaA = line.starts_with('^');
    out += std::string(areaA ? 7 : column, ' ') + line.substr(areaA ? 1 : 0) + '\n';
  }
  return out;
}

std::uint32_t procedureLine(const cobol::Analysis& analysis) {
  std::uint32_t line = 0;
  for (const auto& place : analysis.places) {
    if (place.name == "HERE") line = place.at.line;
  }
  return line;
}

} // namespace

std::string ProcedureFacts::instances() const {
  const std::uint32_t before = procedureLine(analysis);
  std::vector<std::string> lines;
  for (const cobol::Instance& i : analysis.instances) {
    if (i.access == cobol::Access::declare) continue;
    std::string line = analysis.constructs[i.construct].name + ' ' + static_cast<char>(i.access);
    if (i.at.line > before)
      line += ' ' + std::to_string(i.at.line - before) + ':' + std::to_string(i.at.column - kMargin);
    lines.push_back(line);
  }
  return joined(lines);
}

std::string ProcedureFacts::relations() const {
  using enum cobol::RelationKind;
  std::vector<std::string> lines;
  for (const cobol::Relationship& r : analysis.relationships) {
    if (r.kind == Condition || r.kind == Redefinition || r.kind == Renaming) continue;
    if (r.kind == Index && analysis.constructs[r.from].kind == cobol::Kind::index) continue;
    const std::string_view kind = cobol::relationKinds()[static_cast<std::size_t>(r.kind)].name;
    lines.push_back(std::string(kind) + ' ' + analysis.constructs[r.from].name + " -> " +
                    analysis.constructs[r.to].name);
  }
  std::sort(lines.begin(), lines.end());
  return joined(lines);
}

std::string ProcedureFacts::diagnostics() const {
  std::vector<std::string> lines;
  for (const auto& d : analysis.diagnostics)
    lines.push_back(std::string(cobol::nameOf(d.code)) + ' ' + d.text);
  return joined(lines);
}

ProcedureFacts factsOfSource(std::string_view source) {
  return {cobol::analyse(source, cobol::Options{}, {})};
}

ProcedureFacts factsOf(std::string_view data, std::string_view procedure) {
  std::string source = inColumns("^IDENTIFICATION DIVISION.\n^PROGRAM-ID. P.\n^DATA DIVISION.\n", 7);
  source += inColumns(data, 7) + inColumns("^PROCEDURE DIVISION.\n^HERE.\n", 7) + inColumns(procedure, kMargin);
  return factsOfSource(source);
}

void expectFacts(std::string_view data, const std::vector<StatementCase>& cases) {
  for (const StatementCase& one : cases) {
    SCOPED_TRACE(one.statement);
    const ProcedureFacts facts = factsOf(data, one.statement);
    EXPECT_EQ(facts.instances(), one.instances);
    EXPECT_EQ(facts.relations(), one.relations);
  }
}
