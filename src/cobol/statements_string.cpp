// STRING, UNSTRING, INSPECT, TRANSFORM, JSON and XML
#include <vector>

#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

/// `WITH POINTER p`: p says where in the item to go on.
bool acceptPointer(StatementReader& r, const Operand& item) {
  const bool with = r.at(Keyword::With) && r.keyword(1) == Keyword::Pointer;
  if (!with && !r.at(Keyword::Pointer)) return false;
  r.skip({Keyword::With, Keyword::Pointer, Keyword::Is});
  const Operand pointer = r.read(Access::both);
  r.relate(RelationKind::Position, pointer, item);
  return true;
}

/// `DELIMITER IN x`, `COUNT IN x`; the phrase's words are passed over.
Operand countOrDelimiter(StatementReader& r) {
  r.skip({Keyword::Delimiter, Keyword::Count, Keyword::In});
  return r.read(Access::write);
}

void unstringReceivers(StatementReader& r, const Operand& source) {
  while (!r.atBoundary() && !r.at(Keyword::Tallying) && !r.at(Keyword::With) && !r.at(Keyword::Pointer)) {
    if (r.at(Keyword::Delimiter)) {
      countOrDelimiter(r);
    } else if (r.at(Keyword::Count)) {
      r.relate(RelationKind::Tally, source, countOrDelimiter(r));
    } else if (r.atOperand()) {
      const Operand receiver = r.read(Access::write);
      if (!receiver) return;
      r.relate(RelationKind::Unstring, source, receiver);
    } else {
      return;
    }
  }
}

} // namespace

void readString(StatementReader& r) {
  std::vector<Operand> sources;
  sources.reserve(8); // most have fewer
  while (!r.atBoundary() && !r.accept(Keyword::Into)) {
    if (r.at(Keyword::Delimited)) {
      r.skip({Keyword::Delimited, Keyword::By});
      if (!r.accept(Keyword::Size)) r.primary();
    } else if (r.atOperand()) {
      const TermRange source = r.primary();
      for (std::uint32_t i = source.begin; i < source.end; ++i)
        sources.push_back(r.term(i).operand);
    } else {
      return;
    }
  }
  const Operand target = r.read(Access::both);
  for (const Operand& source : sources) {
    if (source.isItem()) r.relate(RelationKind::String, source, target);
  }
  acceptPointer(r, target);
}

void readUnstring(StatementReader& r) {
  const TermRange from = r.primary();
  const Operand source = from.empty() ? Operand{} : r.term(from.begin).operand;
  if (r.accept(Keyword::Delimited)) {
    r.accept(Keyword::By);
    do {
      r.accept(Keyword::All);
      const TermRange delimiter = r.primary();
      r.relateAll(RelationKind::Comparison, delimiter, source);
    } while (r.accept(Keyword::Or));
  }
  if (!r.accept(Keyword::Into)) return;
  unstringReceivers(r, source);
  while (!r.atBoundary()) {
    if (r.accept(Keyword::Tallying)) {
      r.accept(Keyword::In);
      r.relate(RelationKind::Tally, source, r.read(Access::both));
    } else if (!acceptPointer(r, source)) {
      return;
    }
  }
}

namespace {

/// What a word of INSPECT does to the operand behind it; the others only frame.
void inspectTallying(StatementReader& r, const Operand& inspected) {
  Operand counter;
  const auto counterFollows = [&r] {
    // A counter is a name whose reference ends at FOR.
    std::uint32_t ahead = 0;
    if (!r.atName()) return false;
    ++ahead;
    while (r.keyword(ahead) == Keyword::Of || r.keyword(ahead) == Keyword::In)
      ahead += 2;
    int depth = 0;
    while (r.isSymbol(r.token(ahead), '(') || depth > 0) {
      if (r.token(ahead).kind == TokenKind::period || r.token(ahead).kind == TokenKind::end) return false;
      if (r.isSymbol(r.token(ahead), '(')) ++depth;
      if (r.isSymbol(r.token(ahead), ')')) --depth;
      ++ahead;
    }
    return r.keyword(ahead) == Keyword::For;
  };
  while (!r.atBoundary() && !r.at(Keyword::Replacing)) {
    if (counterFollows()) {
      counter = r.read(Access::both);
      r.accept(Keyword::For);
      r.relate(RelationKind::Tally, inspected, counter);
    } else if (r.at(Keyword::All) || r.at(Keyword::Leading) || r.at(Keyword::Trailing) || r.at(Keyword::Characters) ||
               r.at(Keyword::Before) || r.at(Keyword::After) || r.at(Keyword::Initial)) {
      r.advance();
    } else if (r.atOperand()) {
      r.relateAll(RelationKind::Inspection, r.primary(), inspected);
    } else {
      return;
    }
  }
}

void inspectOthers(StatementReader& r, const Operand& inspected) {
  while (!r.atBoundary()) {
    if (r.at(Keyword::All) || r.at(Keyword::Leading) || r.at(Keyword::Trailing) || r.at(Keyword::Characters) ||
        r.at(Keyword::Before) || r.at(Keyword::After) || r.at(Keyword::Initial) || r.at(Keyword::First) ||
        r.at(Keyword::By) || r.at(Keyword::To)) {
      r.advance();
    } else if (r.atOperand()) {
      r.relateAll(RelationKind::Inspection, r.primary(), inspected);
    } else {
      return;
    }
  }
}

} // namespace

void readInspect(StatementReader& r) {
  if (r.atFunction()) { // the result of a function can be counted through, not changed
    r.primary();
    if (r.accept(Keyword::Tallying)) inspectTallying(r, {});
    return;
  }
  const Operand inspected = r.operand();
  const bool tallies = r.accept(Keyword::Tallying);
  if (tallies) inspectTallying(r, inspected);
  const bool changes = r.at(Keyword::Replacing) || r.at(Keyword::Converting);
  r.touch(inspected, changes || !tallies ? Access::both : Access::read);
  if (changes) {
    r.advance();
    inspectOthers(r, inspected);
  }
}

void readTransform(StatementReader& r) {
  // TRANSFORM x [CHARACTERS] FROM a TO b; EXAMINE x TALLYING|REPLACING … [BY …]
  const Operand item = r.read(Access::both);
  r.skip({Keyword::Characters});
  while (!r.atBoundary()) {
    if (r.at(Keyword::All)) {
      r.advance();
    } else if (r.atOperand()) {
      r.relateAll(RelationKind::Inspection, r.primary(), item);
    } else {
      r.advance();
    }
  }
}

namespace {

/// NAMESPACE, NAMESPACE-PREFIX and ENCODING of XML statements: their operand is read.
bool acceptTextOption(StatementReader& r) {
  if (!r.at(Keyword::Namespace) && !r.at(Keyword::NamespacePrefix) && !r.at(Keyword::Encoding)) return false;
  r.advance();
  r.accept(Keyword::Is);
  r.read(Access::read, Demand::declared);
  return true;
}

/// NAME OF x IS 'n', SUPPRESS x WHEN …: the items are only named.
void nameItems(StatementReader& r) {
  while (!r.atEnd() && r.token().kind != TokenKind::period) {
    if (r.at(Keyword::Suppress) || r.at(Keyword::When)) {
      r.advance();
    } else if (acceptTextOption(r)) {
      continue;
    } else if (r.atBoundary()) {
      return;
    } else if (r.atName()) {
      r.touch(r.operand(Demand::declared), Access::named);
    } else {
      r.advance();
    }
  }
}

} // namespace

void readJson(StatementReader& r) {
  Operand data;
  if (r.accept(Keyword::Parse)) {
    const Operand text = r.read(Access::read);
    r.accept(Keyword::Into);
    data = r.read(Access::write);
    r.relate(RelationKind::Unstring, text, data);
    r.accept(Keyword::With);
  } else {
    r.accept(Keyword::Generate);
    const Operand target = r.read(Access::write);
    r.accept(Keyword::From);
    data = r.read(Access::read);
    r.relate(RelationKind::String, data, target);
    if (r.accept(Keyword::Count)) {
      r.accept(Keyword::In);
      r.relate(RelationKind::Tally, data, r.read(Access::write));
    }
  }
  // The items named belong to the group that is made into text or filled from it.
  if (data.count == 1) r.prefer(static_cast<int>(r.candidate(data, 0)), -1);
  nameItems(r);
  r.prefer(-1, -1);
}

void readXml(StatementReader& r) {
  if (!r.accept(Keyword::Parse)) {
    readJson(r);
    return;
  }
  r.read(Access::read);
  while (!r.atBoundary()) {
    if (r.accept(Keyword::Validating)) {
      r.accept(Keyword::With);
      r.accept(Keyword::File);
      r.read(Access::read, Demand::declared);
    } else if (!acceptTextOption(r)) {
      r.advance(); // RETURNING NATIONAL, PROCESSING PROCEDURE p THRU q
    }
  }
}

} // namespace cobol
