// Arithmetic expressions and conditions, read in one pass over the tokens with a stack of open groups and functions.
// No tree is built: what matters is which datanames meet which.
#include <algorithm>

#include "cobol/statement_reader.hpp"

namespace cobol {

namespace {

/// Past this number of pairs one relation between two long expressions says nothing any more.
constexpr std::uint32_t kPairsPerRelation = 4096;

/// What is true or false and has no other value.
bool isTruth(Kind kind) {
  return kind == Kind::condition || kind == Kind::switchName;
}

} // namespace

bool StatementReader::namesFunction() const {
  const Token& t = token();
  if (t.kind != TokenKind::word) return false;
  const bool inRepository = m_resolver.isFunction(t.text);
  if ((!inRepository && !isSymbol(token(1), '(')) || m_resolver.isDeclared(t.text)) return false;
  const FunctionKind kind = functionKind(text(t));
  if (kind == FunctionKind::length) return isSymbol(token(1), '('); // not LENGTH OF
  return inRepository || kind != FunctionKind::none;
}

bool StatementReader::openFunction() {
  accept(Keyword::Function);
  const FunctionKind kind = functionKind(text(token()));
  advance();
  if (acceptSymbol('(')) {
    Level level;
    level.sort = Level::Sort::function;
    level.function = kind == FunctionKind::none ? FunctionKind::other : kind;
    level.begin = level.chain = level.side = static_cast<std::uint32_t>(m_terms.size());
    m_levels.push_back(level);
  }
  return true;
}

/// At a name that means that construct only.
void StatementReader::takeItem(std::uint32_t only) {
  const std::uint32_t name = takeIndex();
  touch(only, name, Access::read);
  if (!isTruth(construct(only).kind)) m_terms.push_back({operandOf(only, name), Term::Flow::plain});
}

/// `measured` tells that only the operand's length counts.
void StatementReader::takeTerm(bool measured) {
  Operand taken = longOperand(Demand::dataName);
  if (taken.count == 0) return; // a constant
  if (measured && taken.isItem()) taken.sort = Operand::Sort::lengthOf;
  touch(taken, Access::read);
  if (taken.sort == Operand::Sort::lengthOf) {
    m_terms.push_back({taken, Term::Flow::length});
  } else if (taken.isItem() && !isTruth(construct(candidate(taken, 0)).kind)) {
    m_terms.push_back({taken, Term::Flow::plain});
  }
}

void StatementReader::endChain(Level& level, std::uint32_t size, std::vector<Mark>& marks) {
  if (level.sawMultiply && level.chain < size) marks.push_back({level.chain, size, Term::Flow::computed});
  level.sawMultiply = false;
  level.chain = size;
}

void StatementReader::endSum(Level& level, std::uint32_t size, std::vector<Mark>& marks) {
  endChain(level, size, marks);
  if (level.sawAdd && level.begin < size) marks.push_back({level.begin, size, Term::Flow::added});
  level.sawAdd = false;
  level.begin = size;
}

void StatementReader::applyMarks(std::uint32_t begin) {
  if (m_marks.empty()) return;
  const std::size_t size = m_terms.size() - begin;
  std::vector<int> added(size + 1);
  std::vector<int> computed(size + 1);
  for (const Mark& mark : m_marks) {
    auto& depth = mark.flow == Term::Flow::added ? added : computed;
    ++depth[mark.begin - begin];
    --depth[mark.end - begin];
  }
  int inSum = 0;
  int inProduct = 0;
  for (std::size_t i = 0; i < size; ++i) {
    inSum += added[i];
    inProduct += computed[i];
    Term& term = m_terms[begin + i];
    if (term.flow == Term::Flow::length) continue;
    if (inProduct > 0) {
      term.flow = Term::Flow::computed;
    } else if (inSum > 0) {
      term.flow = Term::Flow::added;
    }
  }
}

/// Of what a length is taken, the value goes nowhere, though it may have been read: LENGTH (TRIM (A)).
void StatementReader::measureTerms(std::uint32_t begin) {
  for (std::size_t i = begin; i < m_terms.size(); ++i) {
    m_terms[i].operand.sort = Operand::Sort::lengthOf;
    m_terms[i].flow = Term::Flow::length;
  }
}

void StatementReader::closeFunction(const Level& level) {
  const auto size = static_cast<std::uint32_t>(m_terms.size());
  if (level.function == FunctionKind::other && level.side < size) {
    m_marks.push_back({level.side, size, Term::Flow::computed});
  }
  if (level.function == FunctionKind::length) measureTerms(level.side);
  if (atSymbol('(')) parentheses({}); // a part of the result
}

bool StatementReader::acceptArithmeticOperator() {
  const Token& t = token();
  if (t.kind != TokenKind::symbol) return false;
  const bool isOperator =
      isSymbol(t, '+') || isSymbol(t, '-') || isSymbol(t, '*') || isSymbol(t, '/') || t.text == m_power;
  if (!isOperator) return false;
  advance();
  acceptSymbol('*'); // `**` in two pieces
  return true;
}

// Without a sign, a parenthesis or a function it is one operand.
TermRange StatementReader::primary() {
  const std::uint32_t first = termCount();
  if (acceptLoneConstant()) return {first, first};
  if (const std::uint32_t only = loneItem(); only != Resolver::kNone) {
    takeItem(only); // no function: something declares the name
    return {first, termCount()};
  }
  if (token().kind == TokenKind::symbol || atFunction()) return terms(false);
  if (atOperand()) takeTerm();
  return {first, termCount()};
}

TermRange StatementReader::terms(bool operators) {
  const auto size = [this] { return static_cast<std::uint32_t>(m_terms.size()); };
  const std::uint32_t first = size();
  m_levels.clear();
  m_marks.clear();
  m_levels.emplace_back();
  m_levels.back().begin = m_levels.back().chain = m_levels.back().side = first;
  bool expectsOperand = true;
  while (true) {
    Level& level = m_levels.back();
    const bool nested = m_levels.size() > 1;
    if (!expectsOperand && !nested && !operators) break;
    if (expectsOperand && (atSymbol('+') || atSymbol('-'))) {
      level.sawAdd = level.sawAdd || (atSymbol('-') && token(1).kind != TokenKind::number);
      advance();
    } else if (expectsOperand && acceptSymbol('(')) {
      Level group;
      group.begin = group.chain = group.side = size();
      m_levels.push_back(group);
    } else if (nested && acceptSymbol(')')) {
      endSum(level, size(), m_marks);
      const Level closed = level;
      m_levels.pop_back();
      if (closed.sort == Level::Sort::function) closeFunction(closed);
      expectsOperand = false;
    } else if (!expectsOperand && (atSymbol('+') || atSymbol('-'))) {
      endChain(level, size(), m_marks);
      level.sawAdd = true;
      advance();
      expectsOperand = true;
    } else if (!expectsOperand && acceptArithmeticOperator()) {
      level.sawMultiply = true;
      expectsOperand = true;
    } else if (!expectsOperand && level.sort != Level::Sort::function) {
      break;
    } else if (atBoundary()) {
      break;
    } else if (!expectsOperand) {
      endSum(level, size(), m_marks); // the next argument
      expectsOperand = true;
    } else {
      const std::size_t depth = m_levels.size();
      if (acceptFunction()) {
        expectsOperand = m_levels.size() > depth;
      } else if (atOperand()) {
        takeTerm(level.isMeasured());
        expectsOperand = false;
      } else if (level.sort == Level::Sort::function) {
        advance(); // LEADING, TRAILING, ALL …
        expectsOperand = false;
      } else {
        break;
      }
    }
  }
  while (!m_levels.empty()) {
    endSum(m_levels.back(), size(), m_marks);
    m_levels.pop_back();
  }
  applyMarks(first);
  return {first, size()};
}

bool StatementReader::acceptRelationalOperator() {
  if (acceptSymbol('=')) {
    accept(Keyword::To);
    return true;
  }
  const Token& t = token();
  if (t.kind == TokenKind::symbol) {
    const std::string_view symbol = text(t);
    if (symbol != "<" && symbol != ">" && symbol != "<=" && symbol != ">=" && symbol != "<>") return false;
    advance();
    if (symbol == "<") acceptSymbol('>');
    if (symbol == "<" || symbol == ">") acceptSymbol('=');
    accept(Keyword::To);
    return true;
  }
  const Keyword word = keyword();
  if (word == Keyword::Equal || word == Keyword::Equals) {
    advance();
    accept(Keyword::To);
    return true;
  }
  if (word == Keyword::Greater || word == Keyword::Less) {
    advance();
    accept(Keyword::Than);
    if (at(Keyword::Or) && keyword(1) == Keyword::Equal) advance(2);
    accept(Keyword::To);
    return true;
  }
  const bool isOld = t.kind == TokenKind::word && (text(t) == "UNEQUAL" || text(t) == "EXCEEDS");
  if (!isOld || m_resolver.isDeclared(t.text)) return false;
  advance();
  accept(Keyword::To);
  return true;
}

bool StatementReader::acceptClass() {
  switch (keyword()) {
  case Keyword::Numeric:
  case Keyword::Alphabetic:
  case Keyword::AlphabeticLower:
  case Keyword::AlphabeticUpper:
  case Keyword::Positive:
  case Keyword::Negative:
  case Keyword::Zero:
  case Keyword::Zeros:
  case Keyword::Zeroes:
  case Keyword::Dbcs:
  case Keyword::Kanji:
  case Keyword::Omitted:
    advance();
    return true;
  default:
    break;
  }
  // The name of a CLASS of SPECIAL-NAMES.
  if (token().kind != TokenKind::word || classOf(token().text) != WordClass::none) return false;
  if (m_resolver.isDeclared(token().text)) return false;
  advance();
  return true;
}

void StatementReader::compare(TermRange left, TermRange right) {
  if (left.empty() || right.empty()) return;
  right.end = std::min(right.end, right.begin + kPairsPerRelation);
  left.end = std::min(left.end, left.begin + std::max(1U, kPairsPerRelation / (right.end - right.begin)));
  for (std::uint32_t i = left.begin; i < left.end; ++i) {
    if (!m_terms[i].operand.isItem()) continue;
    for (std::uint32_t k = right.begin; k < right.end; ++k) {
      if (m_terms[k].operand.isItem()) relate(RelationKind::Comparison, m_terms[i].operand, m_terms[k].operand);
    }
  }
}

void StatementReader::endRelation(Level& level) {
  if (level.hasSubject && (level.pending || level.connected)) {
    compare(level.subject, {level.side, static_cast<std::uint32_t>(m_terms.size())});
  }
  level.pending = level.connected = false;
  level.side = static_cast<std::uint32_t>(m_terms.size());
}

void StatementReader::beginGroup() {
  const Level& outer = m_levels.back();
  Level group;
  group.begin = group.side = static_cast<std::uint32_t>(m_terms.size());
  // `A = (1 OR B)`: what stands inside is compared with the subject before the parenthesis.
  if (outer.hasSubject && (outer.pending || outer.connected)) {
    group.hasSubject = group.connected = true;
    group.subject = outer.subject;
  }
  m_levels.push_back(group);
}

void StatementReader::endGroup() {
  Level closed = m_levels.back();
  if (closed.sort == Level::Sort::function) {
    if (closed.function == FunctionKind::length) measureTerms(closed.side);
    m_levels.pop_back();
    if (atSymbol('(')) parentheses({});
    return;
  }
  if (closed.related) endRelation(closed);
  m_levels.pop_back();
  if (closed.related) {
    Level& outer = m_levels.back();
    outer.related = true;
    outer.pending = outer.connected = false;
    outer.side = static_cast<std::uint32_t>(m_terms.size());
  }
}

/// Behind an operand: a relational operator, a class or a sign.
bool StatementReader::acceptTest() {
  const std::uint32_t before = index();
  Level& level = m_levels.back();
  accept(Keyword::Is);
  if (at(Keyword::Not) && phraseLength() == 0) advance();
  const auto size = static_cast<std::uint32_t>(m_terms.size());
  const bool isRelation = acceptRelationalOperator();
  if (!isRelation && (level.pending || !acceptClass())) {
    moveTo(before);
    return false;
  }
  level.subject = {level.side, size};
  level.hasSubject = true;
  level.pending = isRelation;
  level.connected = false;
  level.related = true;
  level.side = size;
  return true;
}

/// Where an operand is due: reads it or what may stand before it. Whether the condition goes on.
bool StatementReader::conditionOperand(bool& expectsOperand) {
  if (acceptLoneConstant()) {
    expectsOperand = false;
    return true;
  }
  if (m_levels.back().hasSubject && acceptRelationalOperator()) {
    m_levels.back().pending = true;
    m_levels.back().related = true;
    m_levels.back().side = static_cast<std::uint32_t>(m_terms.size());
    return true;
  }
  if (const std::uint32_t only = loneItem(); only != Resolver::kNone && !m_levels.back().isMeasured()) {
    takeItem(only);
    expectsOperand = false;
    return true;
  }
  if (!isPlainName(token())) {
    const bool isOperator = (atSymbol('+') || atSymbol('-')) && token(1).kind != TokenKind::number;
    if (isOperator || at(Keyword::Is) || (at(Keyword::Not) && phraseLength() == 0)) {
      advance();
      return true;
    }
    if (openGroup()) return true; // its first operand is next
    if (closeGroup()) {           // a function without arguments
      expectsOperand = false;
      return true;
    }
    if (atBoundary()) return false;
  }
  const std::size_t depth = m_levels.size();
  if (acceptFunction()) {
    expectsOperand = m_levels.size() > depth;
  } else if (atOperand()) {
    takeTerm(m_levels.back().isMeasured());
    expectsOperand = false;
  } else if (m_levels.back().sort == Level::Sort::function) {
    advance();
  } else {
    return false;
  }
  return true;
}

/// Behind an operand. Whether the condition goes on.
bool StatementReader::conditionOperator(bool& expectsOperand) {
  if (token().kind == TokenKind::symbol && acceptArithmeticOperator()) {
    expectsOperand = true;
    return true;
  }
  if (closeGroup()) return true;
  if (m_levels.back().sort == Level::Sort::function) {
    expectsOperand = true;
    return !atBoundary();
  }
  switch (keyword()) {
  case Keyword::And:
  case Keyword::Or:
  case Keyword::Xor:
  case Keyword::Thru:
  case Keyword::Through:
    advance();
    endRelation(m_levels.back());
    m_levels.back().connected = true;
    m_levels.back().related = true;
    expectsOperand = true;
    return true;
  default:
    break;
  }
  if (atBoundary() || !acceptTest()) return false;
  expectsOperand = m_levels.back().pending;
  return true;
}

void StatementReader::condition(TermRange subject) {
  m_levels.clear();
  Level& whole = m_levels.emplace_back();
  whole.side = static_cast<std::uint32_t>(m_terms.size());
  whole.subject = subject;
  whole.hasSubject = whole.connected = !subject.empty();
  bool expectsOperand = true;
  while (expectsOperand ? conditionOperand(expectsOperand) : conditionOperator(expectsOperand)) {
  }
  m_hadTest = m_levels.front().related;
  while (!m_levels.empty()) {
    endRelation(m_levels.back());
    m_levels.pop_back();
  }
}

TermRange StatementReader::subjectTerms(std::uint32_t from, std::uint32_t ordinal) {
  const auto begin = static_cast<std::uint32_t>(m_terms.size());
  for (std::size_t i = from; i < subjects.size(); ++i) {
    if (subjects[i].ordinal == ordinal)
      m_terms.push_back({operandOf(subjects[i].construct, index()), Term::Flow::plain});
  }
  return {begin, static_cast<std::uint32_t>(m_terms.size())};
}

} // namespace cobol
