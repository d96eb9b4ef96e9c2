// ADD, SUBTRACT, MULTIPLY, DIVIDE, COMPUTE
#include <vector>

#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

/// The operands in front of TO, FROM, BY or INTO, as one run of terms.
TermRange operands(StatementReader& r) {
  TermRange all{};
  bool first = true;
  while (r.atOperand()) {
    const std::uint32_t before = r.index();
    const TermRange one = r.primary();
    if (first) all.begin = one.begin;
    all.end = one.end;
    first = false;
    if (r.index() == before) break;
  }
  return all;
}

/// Receivers, each perhaps with ROUNDED; not yet touched.
std::vector<Operand> receivers(StatementReader& r) {
  std::vector<Operand> all;
  while (r.atOperand()) {
    const std::uint32_t before = r.index();
    all.push_back(r.operand());
    if (r.accept(Keyword::Rounded)) {
      if (r.accept(Keyword::Mode)) {
        r.accept(Keyword::Is);
        r.advance();
      }
    }
    if (r.index() == before) break;
  }
  return all;
}

void touchAll(StatementReader& r, const std::vector<Operand>& all, Access access) {
  for (const Operand& one : all)
    r.touch(one, access);
}

void corresponding(StatementReader& r, Keyword connective) {
  const Operand from = r.read(Access::read);
  if (!r.accept(connective)) return;
  const Operand to = r.read(Access::both);
  r.accept(Keyword::Rounded);
  for (std::uint32_t i = 0; i < from.count; ++i) {
    for (std::uint32_t k = 0; k < to.count; ++k) {
      r.relations().addCorresponding(RelationKind::Addition, r.candidate(from, i), r.candidate(to, k), from.token);
    }
  }
}

void addOrSubtract(StatementReader& r, Keyword connective) {
  if (r.at(Keyword::Corresponding) || r.at(Keyword::Corr)) {
    r.advance();
    corresponding(r, connective);
    return;
  }
  const TermRange added = operands(r);
  std::vector<Operand> second;
  if (r.accept(connective)) second = receivers(r);
  if (!r.accept(Keyword::Giving)) {
    touchAll(r, second, Access::both);
    for (const Operand& to : second)
      r.relateFlowAs(RelationKind::Addition, added, to);
    return;
  }
  touchAll(r, second, Access::read);
  const std::vector<Operand> results = receivers(r);
  touchAll(r, results, Access::write);
  for (const Operand& to : results) {
    r.relateFlowAs(RelationKind::Addition, added, to);
    for (const Operand& operand : second)
      r.relate(RelationKind::Addition, operand, to);
  }
}

void relateComputed(StatementReader& r, TermRange from, const std::vector<Operand>& second, const Operand& to) {
  r.relateFlowAs(RelationKind::Computation, from, to);
  for (const Operand& operand : second)
    r.relate(RelationKind::Computation, operand, to);
}

} // namespace

void readAdd(StatementReader& r) {
  addOrSubtract(r, Keyword::To);
}

void readSubtract(StatementReader& r) {
  addOrSubtract(r, Keyword::From);
}

void readMultiply(StatementReader& r) {
  const TermRange factor = operands(r);
  if (!r.accept(Keyword::By)) return;
  const std::vector<Operand> second = receivers(r);
  if (!r.accept(Keyword::Giving)) {
    touchAll(r, second, Access::both);
    for (const Operand& to : second)
      r.relateFlowAs(RelationKind::Computation, factor, to);
    return;
  }
  touchAll(r, second, Access::read);
  const std::vector<Operand> results = receivers(r);
  touchAll(r, results, Access::write);
  for (const Operand& to : results)
    relateComputed(r, factor, second, to);
}

void readDivide(StatementReader& r) {
  const TermRange first = operands(r);
  if (!r.at(Keyword::Into) && !r.at(Keyword::By)) return;
  r.advance();
  const std::vector<Operand> second = receivers(r);
  if (!r.accept(Keyword::Giving)) {
    touchAll(r, second, Access::both);
    for (const Operand& to : second)
      r.relateFlowAs(RelationKind::Computation, first, to);
    return;
  }
  touchAll(r, second, Access::read);
  std::vector<Operand> results = receivers(r);
  if (r.accept(Keyword::Remainder)) {
    for (const Operand& remainder : receivers(r))
      results.push_back(remainder);
  }
  touchAll(r, results, Access::write);
  for (const Operand& to : results)
    relateComputed(r, first, second, to);
}

void readCompute(StatementReader& r) {
  const std::vector<Operand> targets = receivers(r);
  if (!r.acceptSymbol('=') && !r.accept(Keyword::Equal) && !r.accept(Keyword::Equals)) return;
  touchAll(r, targets, Access::write);
  const TermRange value = r.expression();
  for (const Operand& to : targets)
    r.relateFlow(value, to);
}

} // namespace cobol
