#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cobol/analysis.hpp"

/// A program in fixed form, taken through all stages. Positions in the facts are line and column inside the procedure
/// text given, both from 1; positions elsewhere are left out.
struct ProcedureFacts {
  cobol::Analysis analysis;

  /// Every instance as `NAME R 1:6` in text order, declarations left out, joined by ", ".
  std::string instances() const;
  /// Every relationship as `Move A -> B`, sorted by kind and names, those of declarations left out, joined by ", ".
  std::string relations() const;
  std::string diagnostics() const;
};

/// `procedure` stands in area B behind PROCEDURE DIVISION; lines that begin with `^` stand in area A.
ProcedureFacts factsOf(std::string_view data, std::string_view procedure);
/// The same for a whole source text, in fixed form.
ProcedureFacts factsOfSource(std::string_view source);

/// One statement and what it must give; wants are compared whole.
struct StatementCase {
  std::string_view statement;
  std::string_view instances;
  std::string_view relations;
};
/// Runs a table of statements over the same data division.
void expectFacts(std::string_view data, const std::vector<StatementCase>& cases);
