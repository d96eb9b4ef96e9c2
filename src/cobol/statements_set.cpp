// SET in all its forms: indexes, switches, conditions, pointers and addresses.
#include <vector>

#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

void addDynamicOverlay(StatementReader& r, const Operand& source, const Operand& record) {
  r.relate(RelationKind::Address, source, record);
  r.relateLeaves(source, record);
}

void setToAddress(StatementReader& r, const std::vector<Operand>& targets) {
  const Operand source = r.read(Access::read);
  for (const Operand& target : targets) {
    if (target.sort == Operand::Sort::addressOf) {
      addDynamicOverlay(r, source, target);
    } else {
      r.relate(RelationKind::Pointer, source, target);
    }
  }
}

/// SET condition TO TRUE writes the item that the condition belongs to without naming it.
void touchItem(StatementReader& r, const Operand& target) {
  for (std::uint32_t k = 0; k < target.count; ++k) {
    const Construct& condition = r.construct(r.candidate(target, k));
    if (condition.kind == Kind::condition && condition.parent >= 0) {
      r.touch(static_cast<std::uint32_t>(condition.parent), target.token, Access::implied);
    }
  }
}

/// Whether the SET that begins here has another word than a data name as its source or target.
Demand demandOfTargets(const StatementReader& r) {
  for (std::uint32_t ahead = 0;; ++ahead) {
    const Token& t = r.token(ahead);
    if (t.kind == TokenKind::period || t.kind == TokenKind::end || r.isVerb(t)) return Demand::dataName;
    const Keyword word = t.kind == TokenKind::word ? keywordOf(t.text) : Keyword::None;
    if (word == Keyword::To || word == Keyword::Up || word == Keyword::Down) {
      const Keyword source = r.keyword(ahead + 1);
      return source == Keyword::On || source == Keyword::Off ? Demand::declared : Demand::dataName;
    }
  }
}

void setUpOrDown(StatementReader& r, const std::vector<Operand>& targets) {
  r.advance();
  r.accept(Keyword::By);
  for (const Operand& target : targets)
    r.touch(target, Access::both);
  const TermRange by = r.expression();
  for (const Operand& target : targets)
    r.relateFlowAs(RelationKind::Addition, by, target);
}

void setTo(StatementReader& r, const std::vector<Operand>& targets) {
  for (const Operand& target : targets)
    r.touch(target, Access::write);
  if (r.at(Keyword::True) || r.at(Keyword::False)) {
    r.advance();
    for (const Operand& target : targets)
      touchItem(r, target);
    return;
  }
  if (r.at(Keyword::On) || r.at(Keyword::Off)) {
    r.advance();
    return;
  }
  if (r.accept(Keyword::Entry)) {
    if (r.atConstant()) {
      r.addPlace("CALL", r.text(r.token()), r.index());
      r.operand();
    } else {
      r.read(Access::read);
    }
    return;
  }
  if (r.at(Keyword::Address) && r.keyword(1) == Keyword::Of) return setToAddress(r, targets);
  const TermRange source = r.expression();
  for (const Operand& target : targets) {
    if (target.sort == Operand::Sort::addressOf) {
      r.relateAll(RelationKind::Pointer, source, target);
    } else {
      r.relateFlow(source, target);
    }
  }
}

} // namespace

void readSet(StatementReader& r) {
  if (r.at(Keyword::Environment) || r.at(Keyword::Locale) || r.at(Keyword::Last)) {
    r.generic();
    return;
  }
  std::vector<Operand>& targets = r.targets;
  while (!r.atBoundary()) {
    targets.clear();
    const Demand demand = demandOfTargets(r);
    while (r.atOperand() || (demand == Demand::declared && !r.at(Keyword::To) && !r.atBoundary())) {
      const std::uint32_t before = r.index();
      const Operand target = r.operand(demand);
      if (target.isItem() || target.sort == Operand::Sort::addressOf) targets.push_back(target);
      if (r.index() == before) r.advance();
    }
    if (r.at(Keyword::Up) || r.at(Keyword::Down)) {
      setUpOrDown(r, targets);
    } else if (r.accept(Keyword::To)) {
      setTo(r, targets);
    } else {
      for (const Operand& target : targets)
        r.touch(target, Access::write);
      return;
    }
  }
}

} // namespace cobol
