// MOVE, INITIALIZE
#include <vector>

#include "cobol/picture.hpp"
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

bool isCategory(Keyword word) {
  switch (word) {
  case Keyword::Alphabetic:
  case Keyword::Alphanumeric:
  case Keyword::AlphanumericEdited:
  case Keyword::Numeric:
  case Keyword::NumericEdited:
  case Keyword::National:
  case Keyword::Dbcs:
  case Keyword::Egcs:
    return true;
  default:
    return false;
  }
}

/// Whether INITIALIZE with that category reaches the elementary item; what cannot be told is reached.
bool isOfCategory(const Construct& item, Keyword category) {
  if (item.kind == Kind::undeclared) return true;
  if (item.picture.empty()) return category == Keyword::Numeric || category == Keyword::None;
  const Picture picture = readPicture(item.picture, {});
  if (!picture.isValid || category == Keyword::None) return true;
  switch (picture.kind) {
  case PictureClass::numeric:
    return (item.flags & ConstructFlag::blankWhenZero) != 0 ? category == Keyword::NumericEdited
                                                            : category == Keyword::Numeric;
  case PictureClass::numericEdited:
    return category == Keyword::NumericEdited;
  case PictureClass::national:
    return category == Keyword::National;
  case PictureClass::dbcs:
    return category == Keyword::Dbcs || category == Keyword::Egcs;
  case PictureClass::alphanumeric:
    break;
  default:
    return true;
  }
  if (item.picture.find_first_of("B0/") != std::string::npos && item.picture.find('(') == std::string::npos)
    return category == Keyword::AlphanumericEdited || category == Keyword::Alphabetic;
  if (item.picture.find_first_of("X9") == std::string::npos) return category == Keyword::Alphabetic;
  return category == Keyword::Alphanumeric || category == Keyword::AlphanumericEdited;
}

/// INITIALIZE … REPLACING goes to each elementary item of the category; FILLER, redefinitions, indexes and pointers
/// stay.
void replaceWithin(StatementReader& r, TermRange by, const Operand& item, Keyword category) {
  std::vector<std::uint32_t> open;
  for (std::uint32_t k = 0; k < item.count; ++k)
    open.push_back(r.candidate(item, k));
  const std::size_t named = open.size();
  for (std::size_t next = 0; next < open.size(); ++next) {
    const Construct& c = r.construct(open[next]);
    if (next >= named && (c.redefines >= 0 || (c.kind == Kind::filler && !c.isGroup()))) continue;
    for (int child = c.firstChild; child >= 0; child = r.construct(static_cast<std::uint32_t>(child)).nextSibling)
      open.push_back(static_cast<std::uint32_t>(child));
    if (c.isGroup() || c.usage == "INDEX" || c.usage.find("POINTER") != std::string::npos) continue;
    if (isOfCategory(c, category)) r.relateFlow(by, r.operandOf(open[next], item.token));
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
  Keyword category = Keyword::None;
  while (!r.atBoundary()) {
    if (isCategory(r.keyword())) category = r.keyword();
    if (!r.accept(Keyword::By)) {
      r.advance(); // WITH FILLER, ALL TO VALUE, REPLACING category DATA
      continue;
    }
    const TermRange by = r.primary();
    for (const Operand& item : items)
      replaceWithin(r, by, item, category);
  }
}

} // namespace cobol
