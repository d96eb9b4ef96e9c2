// OPEN, CLOSE, READ, RETURN, WRITE, REWRITE, RELEASE, START, DELETE, ACCEPT, DISPLAY, RECEIVE, SEND
#include <algorithm>
#include <vector>

#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

/// ADVANCING n LINES, LINE n COLUMN m and the like: items are read, mnemonics passed over.
void readPhrases(StatementReader& r) {
  while (!r.atBoundary()) {
    if (r.atOperand()) {
      const std::uint32_t before = r.index();
      r.read(Access::read, Demand::declared);
      if (r.index() == before) r.advance();
    } else {
      r.advance();
    }
  }
}

/// `KEY IS k`: k steers which record of the file is meant.
void readKey(StatementReader& r, const Operand& records) {
  r.accept(Keyword::Is);
  if (!r.atOperand()) return;
  const TermRange key = r.primary();
  r.relateAll(RelationKind::Key, key, records);
}

} // namespace

void readOpenOrClose(StatementReader& r) {
  while (!r.atBoundary())
    r.advance(); // only files and how they are opened
}

void readRead(StatementReader& r) {
  const std::uint32_t site = r.index();
  const int file = r.fileName();
  const Operand records = r.recordsOf(file, site);
  while (!r.atBoundary()) {
    if (r.accept(Keyword::Into)) {
      const Operand target = r.read(Access::write);
      r.relate(RelationKind::Read, records, target);
      r.relateLeaves(records, target);
    } else if (r.accept(Keyword::Key)) {
      readKey(r, records);
    } else if (r.at(Keyword::Next) || r.at(Keyword::Previous) || r.at(Keyword::Record) || r.at(Keyword::With) ||
               r.at(Keyword::No) || r.at(Keyword::Kept) || r.at(Keyword::Lock) || r.at(Keyword::Ignoring) ||
               r.at(Keyword::Wait) || r.at(Keyword::First) || r.at(Keyword::Last)) {
      r.advance();
    } else {
      return;
    }
  }
}

void readWrite(StatementReader& r) {
  Operand record;
  const bool byFile = r.accept(Keyword::File); // WRITE FILE f: no token names a record
  if (byFile) {
    const std::uint32_t site = r.index();
    record = r.recordsOf(r.fileName(), site);
  } else {
    record = r.operand();
  }
  r.accept(Keyword::Record);
  const bool from = r.accept(Keyword::From);
  r.touch(record, byFile ? Access::implied : from ? Access::both : Access::read);
  if (from) {
    const TermRange source = r.primary();
    r.relateAll(RelationKind::Write, source, record);
    for (std::uint32_t i = source.begin; i < source.end; ++i)
      r.relateLeaves(r.term(i).operand, record);
  }
  readPhrases(r); // BEFORE/AFTER ADVANCING
}

void readStart(StatementReader& r) {
  const std::uint32_t site = r.index();
  const Operand records = r.recordsOf(r.fileName(), site);
  while (!r.atBoundary()) {
    if (r.at(Keyword::Length)) { // WITH LENGTH n: how much of the key counts
      r.advance();
      r.primary();
    } else if (r.atOperand()) {
      r.relateAll(RelationKind::Key, r.primary(), records);
    } else {
      r.advance(); // KEY IS, the operator
    }
  }
}

void readDelete(StatementReader& r) {
  r.skip({Keyword::File});
  r.fileName();
  while (r.at(Keyword::Record) || (r.token().kind == TokenKind::word && !r.atBoundary()))
    r.advance();
}

void readAccept(StatementReader& r) {
  if (r.keyword(1) == Keyword::Message && r.fileName() >= 0) { // ACCEPT cd MESSAGE COUNT
    r.skip({Keyword::Message, Keyword::Count});
    return;
  }
  const Operand target = r.read(Access::write);
  while (!r.atBoundary()) {
    if (!r.accept(Keyword::From)) {
      readPhrases(r);
      return;
    }
    // DATE, TIME, a mnemonic or a register
    if (classOf(r.keyword()) == WordClass::specialRegister || r.atName()) {
      const Operand source = r.read(Access::read, Demand::declared);
      r.relateMove(source, target);
    } else if (!r.atBoundary()) {
      r.advance();
    }
    r.skip({Keyword::Yyyymmdd, Keyword::Yyyyddd, Keyword::Key, Keyword::Status, Keyword::Count});
  }
}

void readDisplay(StatementReader& r) {
  while (r.atOperand()) {
    const std::uint32_t before = r.index();
    r.primary();
    if (r.index() == before) break;
  }
  readPhrases(r); // UPON mnemonic, WITH NO ADVANCING, AT, LINE, COLUMN
}

void readReceive(StatementReader& r) {
  const std::uint32_t site = r.index();
  const Operand records = r.recordsOf(r.fileName(), site);
  while (!r.atBoundary()) {
    if (r.accept(Keyword::Into)) {
      r.relate(RelationKind::Read, records, r.read(Access::write));
    } else {
      r.advance();
    }
  }
}

void readSend(StatementReader& r) {
  const std::uint32_t site = r.index();
  const Operand records = r.recordsOf(r.fileName(), site);
  if (r.accept(Keyword::From)) r.relate(RelationKind::Write, r.read(Access::read), records);
  readPhrases(r);
}

} // namespace cobol
