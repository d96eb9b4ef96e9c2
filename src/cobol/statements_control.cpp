// IF, EVALUATE, PERFORM, SEARCH, GO TO and the statements that name no data
#include <algorithm>
#include <vector>

#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

constexpr std::size_t kSubjectTerms = 64;

/// Whether the word is one of those that tell how an inline PERFORM goes on, so it is no procedure's name.
bool isPerformPhrase(Keyword word) {
  switch (word) {
  case Keyword::Until:
  case Keyword::Varying:
  case Keyword::With:
  case Keyword::Test:
  case Keyword::Forever:
    return true;
  default:
    return false;
  }
}

/// How many tokens a reference or number takes that stands `ahead`; 0: none stands there.
std::uint32_t operandLength(const StatementReader& r, std::uint32_t ahead) {
  const std::uint32_t begin = ahead;
  const Token& first = r.token(ahead);
  if (first.kind == TokenKind::number) return 1;
  if (first.kind != TokenKind::word) return 0;
  Keyword word = keywordOf(first.text);
  if (word == Keyword::Function || word == Keyword::Length) word = r.keyword(++ahead);
  if (word == Keyword::Of) ++ahead;
  if (ahead > begin && r.token(ahead).kind != TokenKind::word) return 0;
  ++ahead;
  while (r.keyword(ahead) == Keyword::Of || r.keyword(ahead) == Keyword::In)
    ahead += 2;
  while (r.isSymbol(r.token(ahead), '(')) {
    for (int depth = 0;; ++ahead) {
      const Token& t = r.token(ahead);
      if (t.kind == TokenKind::period || t.kind == TokenKind::end) return 0;
      if (r.isSymbol(t, '(')) ++depth;
      if (r.isSymbol(t, ')') && --depth == 0) break;
    }
    ++ahead;
  }
  return ahead - begin;
}

/// `n TIMES`, whose operand comes without a word before it.
bool timesFollows(const StatementReader& r) {
  const std::uint32_t length = operandLength(r, 0);
  return length > 0 && r.keyword(length) == Keyword::Times;
}

void skipProcedureName(StatementReader& r) {
  r.advance();
  while ((r.at(Keyword::Of) || r.at(Keyword::In)) && r.token(1).kind == TokenKind::word)
    r.advance(2);
}

void varying(StatementReader& r) {
  const Operand counter = r.read(Access::both);
  if (r.accept(Keyword::From)) r.relateFlow(r.primary(), counter);
  if (r.accept(Keyword::By)) r.relateFlowAs(RelationKind::Addition, r.primary(), counter);
  if (r.accept(Keyword::Until)) r.condition();
}

} // namespace

void readIf(StatementReader& r) {
  r.condition();
  r.accept(Keyword::Then);
  r.blocks.push_back({Keyword::If, static_cast<std::uint32_t>(r.subjects.size())});
}

void readEvaluate(StatementReader& r) {
  const auto firstSubject = static_cast<std::uint32_t>(r.subjects.size());
  std::uint32_t ordinal = 0;
  do {
    const std::uint32_t firstTerm = r.termCount();
    r.condition();
    for (std::uint32_t i = firstTerm; i < r.termCount() && r.subjects.size() - firstSubject < kSubjectTerms; ++i) {
      const Operand& item = r.term(i).operand;
      for (std::uint32_t k = 0; item.isItem() && k < item.count; ++k) {
        // A condition as subject has compared its own items; only TRUE and FALSE meet it.
        if (!r.conditionHadTest()) r.subjects.push_back({r.candidate(item, k), ordinal});
      }
    }
    ++ordinal;
  } while (r.accept(Keyword::Also));
  r.blocks.push_back({Keyword::Evaluate, firstSubject});
}

void readWhen(StatementReader& r) {
  const bool evaluates = !r.blocks.empty() && r.blocks.back().verb == Keyword::Evaluate;
  const std::uint32_t firstSubject = evaluates ? r.blocks.back().firstSubject : 0;
  std::uint32_t ordinal = 0;
  do {
    if (!r.accept(Keyword::Other) && !r.accept(Keyword::Any)) {
      r.condition(evaluates ? r.subjectTerms(firstSubject, ordinal) : TermRange{});
    }
    ++ordinal;
  } while (r.accept(Keyword::Also));
}

void readPerform(StatementReader& r) {
  bool isInline = r.atBoundary() || isPerformPhrase(r.keyword()) || timesFollows(r);
  if (!isInline) {
    skipProcedureName(r);
    if (r.accept(Keyword::Thru) || r.accept(Keyword::Through)) skipProcedureName(r);
  }
  if (timesFollows(r)) {
    r.primary();
    r.accept(Keyword::Times);
  }
  if (r.accept(Keyword::Forever)) isInline = true;
  if (r.at(Keyword::With) || r.at(Keyword::Test)) {
    r.accept(Keyword::With);
    r.accept(Keyword::Test);
    if (r.at(Keyword::Before) || r.at(Keyword::After)) r.advance();
  }
  if (r.accept(Keyword::Until)) {
    if (!r.accept(Keyword::Exit)) r.condition();
  } else if (r.accept(Keyword::Varying)) {
    varying(r);
    while (r.accept(Keyword::After))
      varying(r);
  }
  if (isInline) r.blocks.push_back({Keyword::Perform, static_cast<std::uint32_t>(r.subjects.size())});
}

void readSearch(StatementReader& r) {
  r.accept(Keyword::All);
  const Operand table = r.read(Access::read);
  if (r.accept(Keyword::Varying)) {
    const Operand index = r.read(Access::both);
    r.relate(RelationKind::Index, index, table);
  }
  r.blocks.push_back({Keyword::Search, static_cast<std::uint32_t>(r.subjects.size())});
}

void readGo(StatementReader& r) {
  r.accept(Keyword::To);
  while (!r.atBoundary()) {
    if (!r.accept(Keyword::Depending)) {
      skipProcedureName(r);
      continue;
    }
    r.accept(Keyword::On);
    r.read(Access::read);
    return;
  }
}

void readStop(StatementReader& r) {
  if (!r.accept(Keyword::Run)) {
    if (r.atConstant()) r.operand();
    return;
  }
  r.skip({Keyword::Returning, Keyword::Giving, Keyword::With, Keyword::Error, Keyword::Normal, Keyword::Status});
  if (r.atOperand()) r.read(Access::read);
}

void readExit(StatementReader& r) {
  // PROGRAM, PERFORM, PARAGRAPH, SECTION … and the verbs among them
  while (!r.atEnd() &&
         (r.at(Keyword::Program) || r.at(Keyword::Perform) || r.at(Keyword::Paragraph) || r.at(Keyword::Section) ||
          r.at(Keyword::Cycle) || r.at(Keyword::Function) || r.at(Keyword::Method))) {
    r.advance();
  }
  r.skip({Keyword::Returning, Keyword::Giving});
  if (r.atOperand()) r.read(Access::read);
}

void readUse(StatementReader& r) {
  // USE names procedures, files and data, but uses none; its words hold verbs such as EXCEPTION or ERROR phrases.
  while (!r.atEnd() && r.token().kind != TokenKind::period) {
    if (r.atName()) {
      if (r.atBoundary()) return; // the period is missing and a paragraph begins
      r.touch(r.operand(Demand::declared), Access::named);
    } else {
      r.advance();
    }
  }
}

void readContinue(StatementReader& r) {
  if (!r.accept(Keyword::After)) return;
  r.expression();
  readNothing(r); // SECONDS
}

void readNothing(StatementReader& r) {
  while (!r.atBoundary())
    r.advance();
}

void readNamed(StatementReader& r) {
  while (!r.atBoundary()) {
    if (r.atName()) {
      r.touch(r.operand(Demand::declared), Access::named);
    } else {
      r.advance();
    }
  }
}

} // namespace cobol
