// MOVE, INITIALIZE
#include <vector>

#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

void readMoveCorresponding(StatementReader& r) {
  const Operand from = r.read(Access::read);
  r.accept(Keyword::To);
  while (r.atOperand()) {
    const Operand to = r.read(Access::write);
    if (!to) return;
    for (std::uint32_t i = 0; i < from.count; ++i) {
      for (std::uint32_t k = 0; k < to.count; ++k) {
        r.relations().addCorresponding(RelationKind::Move, r.candidate(from, i), r.candidate(to, k), from.token);
      }
    }
  }
}

} // namespace

void readMove(StatementReader& r) {
  if (r.at(Keyword::Corresponding) || r.at(Keyword::Corr)) {
    r.advance();
    readMoveCorresponding(r);
    return;
  }
  const TermRange from = r.primary();
  while (r.token().kind == TokenKind::number)
    r.advance(); // `1,5` where the decimal point is no comma
  if (!r.accept(Keyword::To)) return;
  while (r.atOperand()) {
    const Operand to = r.read(Access::write);
    if (!to) return;
    r.relateFlow(from, to);
  }
}

void readInitialize(StatementReader& r) {
  std::vector<Operand> items;
  while (r.atOperand()) {
    const Operand item = r.read(Access::write);
    if (!item) return;
    items.push_back(item);
  }
  while (!r.atBoundary()) {
    if (!r.accept(Keyword::By)) {
      r.advance(); // WITH FILLER, ALL TO VALUE, REPLACING category DATA
      continue;
    }
    const TermRange by = r.primary();
    for (const Operand& item : items)
      r.relateFlow(by, item);
  }
}

} // namespace cobol
