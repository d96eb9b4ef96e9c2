// SORT and MERGE, of files and of tables
#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

void skipProcedures(StatementReader& r) {
  r.skip({Keyword::Procedure, Keyword::Is});
  r.advance();
  while (r.at(Keyword::Of) || r.at(Keyword::In))
    r.advance(2);
  if (r.accept(Keyword::Thru) || r.accept(Keyword::Through)) {
    r.advance();
    while (r.at(Keyword::Of) || r.at(Keyword::In))
      r.advance(2);
  }
}

void readKeys(StatementReader& r, const Operand& sorted) {
  r.skip({Keyword::Ascending, Keyword::Descending, Keyword::Key, Keyword::Is});
  while (r.atOperand()) {
    const std::uint32_t before = r.index();
    const Operand key = r.read(Access::read);
    r.relate(RelationKind::Key, key, sorted);
    if (r.index() == before) return;
  }
}

} // namespace

void readSort(StatementReader& r) {
  const std::uint32_t site = r.index();
  const int file = r.fileName();
  Operand sorted;
  if (file >= 0) {
    sorted = r.recordsOf(file, site);
  } else {
    r.moveTo(site);
    sorted = r.read(Access::both);
  }
  while (!r.atBoundary()) {
    if (r.at(Keyword::On) || r.at(Keyword::With)) {
      r.advance();
    } else if (r.at(Keyword::Ascending) || r.at(Keyword::Descending)) {
      readKeys(r, sorted);
    } else if (r.at(Keyword::Using) || r.at(Keyword::Giving)) {
      const bool isUsing = r.at(Keyword::Using);
      r.advance();
      while (!r.atBoundary() && r.token().kind == TokenKind::word && !r.at(Keyword::Giving) && !r.at(Keyword::Output)) {
        const std::uint32_t at = r.index();
        const Operand records = r.recordsOf(r.fileName(), at);
        if (r.index() == at) return;
        r.relate(RelationKind::Sort, isUsing ? records : sorted, isUsing ? sorted : records);
        r.relateLeaves(isUsing ? records : sorted, isUsing ? sorted : records);
      }
    } else if ((r.at(Keyword::Input) || r.at(Keyword::Output)) && r.keyword(1) == Keyword::Procedure) {
      r.advance();
      skipProcedures(r);
    } else if (r.at(Keyword::Duplicates) || r.at(Keyword::In) || r.at(Keyword::Order)) {
      r.advance();
    } else if (r.at(Keyword::Collating) || r.at(Keyword::Sequence)) {
      r.skip({Keyword::Collating, Keyword::Sequence, Keyword::Is});
      r.advance();
    } else {
      return;
    }
  }
}

} // namespace cobol
