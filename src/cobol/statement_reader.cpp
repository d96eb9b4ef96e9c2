#include "cobol/statement_reader.hpp"

#include <algorithm>

namespace cobol {

StatementReader::StatementReader(const TokenStream& stream, Analysis& analysis, Diagnostics& diagnostics)
    : m_stream(stream), m_tokens(stream.tokens.data()), m_analysis(analysis), m_diagnostics(diagnostics),
      m_resolver(stream, analysis), m_relations(stream, analysis, diagnostics) {
  for (const char symbol : std::string_view("()+-*/=<>:&")) {
    m_symbolIds[static_cast<unsigned char>(symbol)] = stream.names.find({&symbol, 1});
  }
  m_power = stream.names.find("**");
  m_inlineMethod = stream.names.find("::");
  m_responseCode = stream.names.find("DFHRESP");
  m_cicsValue = stream.names.find("DFHVALUE");
  m_noted.reserve(2 * analysis.constructs.size());
  // More than nearly every statement needs.
  m_terms.reserve(16);
  m_levels.reserve(8);
  blocks.reserve(16);
}

void StatementReader::skip(std::initializer_list<Keyword> words) {
  while (!atEnd() && std::find(words.begin(), words.end(), keyword()) != words.end())
    advance();
}

bool StatementReader::isNameHere(NameId word) const {
  switch (classOf(word)) {
  case WordClass::none:
  case WordClass::context:
  case WordClass::specialRegister:
    return true;
  case WordClass::figurative:
  case WordClass::terminator:
    return false;
  default:
    return m_resolver.isDeclared(word);
  }
}

bool StatementReader::isConstantHere(Keyword word) const {
  if (word == Keyword::All) return token(1).kind == TokenKind::literal || classOf(keyword(1)) == WordClass::figurative;
  return classOf(word) == WordClass::figurative || word == Keyword::True || word == Keyword::False;
}

bool StatementReader::atOperandWord() const {
  const Keyword word = keyword();
  if (word == Keyword::Address) return keyword(1) == Keyword::Of;
  return word == Keyword::Length || word == Keyword::ByteLength || word == Keyword::Function;
}

std::uint32_t StatementReader::phraseLength() const {
  const auto conditionAt = [this](std::uint32_t ahead) -> std::uint32_t {
    switch (keyword(ahead)) {
    case Keyword::Size:
      return keyword(ahead + 1) == Keyword::Error ? 2 : 0;
    case Keyword::Invalid:
      return keyword(ahead + 1) == Keyword::Key ? 2 : 1;
    case Keyword::Exception:
    case Keyword::Overflow:
    case Keyword::End:
    case Keyword::EndOfPage:
    case Keyword::Eop:
    case Keyword::Escape:
      return 1;
    default:
      return 0;
    }
  };
  std::uint32_t ahead = 0;
  if (keyword(ahead) == Keyword::Not) ++ahead;
  const Keyword word = keyword(ahead);
  if (word == Keyword::On || word == Keyword::At) ++ahead;
  const std::uint32_t length = conditionAt(ahead);
  if (length == 0 || (keyword(ahead) == Keyword::Escape && ahead == 0)) return 0;
  return ahead + length;
}

bool StatementReader::definesProcedure(bool sentenceStart) const {
  const Token& t = token();
  const bool canBe = t.kind == TokenKind::number || t.kind == TokenKind::word;
  if (!canBe || t.has(TokenFlag::inExec)) return false;
  const WordClass wordClass = t.kind == TokenKind::word ? classOf(t.text) : WordClass::none;
  const bool isSection = keyword(1) == Keyword::Section && wordClass != WordClass::verb;
  const bool isFree = wordClass == WordClass::none || wordClass == WordClass::context;
  if (sentenceStart && (isSection || (isFree && token(1).kind == TokenKind::period))) return true;
  // Without a period before it only a word in area A can be one, if nothing declares it.
  const bool inAreaA =
      t.has(TokenFlag::areaA) && t.file < m_stream.files.size() && m_stream.files[t.file].format != Format::free;
  if (!inAreaA || !isFree || m_resolver.isDeclared(t.text)) return false;
  return isSection || token(1).kind == TokenKind::period || (sentenceStart && token(1).has(TokenFlag::lineStart));
}

bool StatementReader::endsHere(const Token& word, Ending ending) const {
  if (word.has(TokenFlag::areaA) && atProcedureName(false)) return true;
  if (ending == Ending::softVerb) return !m_resolver.isDeclared(word.text);
  if (ending != Ending::phrase) return false;
  return keywordOf(word.text) == Keyword::Next ? keyword(1) == Keyword::Sentence : phraseLength() > 0;
}

void StatementReader::touchEach(const Operand& operand, Access access) {
  if (operand.sort == Operand::Sort::lengthOf || (operand.sort == Operand::Sort::addressOf && access == Access::read)) {
    access = Access::named;
  }
  for (std::uint32_t k = 0; k < operand.count; ++k)
    touch(candidate(operand, k), operand.token, access);
}

void StatementReader::touchPlaced(NameId name, std::uint32_t token, Position at) {
  std::vector<std::uint32_t> found;
  m_resolver.find(name, {}, found);
  for (const std::uint32_t construct : found) {
    touch(construct, token, Access::read);
    m_placed.try_emplace(placeOf(token, construct), at);
  }
}

Operand StatementReader::recordsOf(int file, std::uint32_t token) {
  if (file < 0) return {};
  const auto& records = m_analysis.dataFiles[static_cast<std::size_t>(file)].records;
  if (records.size() == 1) return operandOf(static_cast<std::uint32_t>(records.front()), token);
  Operand made{Operand::Sort::item, token, static_cast<std::uint32_t>(m_pool.size()),
               static_cast<std::uint32_t>(records.size())};
  for (const int record : records)
    m_pool.push_back(static_cast<std::uint32_t>(record));
  return made;
}

int StatementReader::fileName() {
  const Token& t = token();
  if (t.kind != TokenKind::word || atBoundary()) return -1;
  const int file = m_resolver.findFile(t.text);
  if (file >= 0 || classOf(t.text) == WordClass::none) advance();
  return file;
}

void StatementReader::relate(RelationKind kind, const Operand& from, const Operand& to) {
  const auto isCondition = [this](std::uint32_t index) {
    const Kind k = m_analysis.constructs[index].kind;
    return k == Kind::condition || k == Kind::switchName;
  };
  const bool isFlow = kind == RelationKind::Addition || kind == RelationKind::Computation;
  if (isFlow && from.sort == Operand::Sort::lengthOf) kind = RelationKind::Length;
  for (std::uint32_t i = 0; i < from.count; ++i) {
    const std::uint32_t left = candidate(from, i);
    if (isCondition(left)) continue;
    for (std::uint32_t k = 0; k < to.count; ++k) {
      const std::uint32_t right = candidate(to, k);
      if (!isCondition(right)) m_relations.add(kind, left, right, from.token);
    }
  }
}

void StatementReader::relateLeaves(const Operand& from, const Operand& to) {
  for (std::uint32_t i = 0; i < from.count; ++i) {
    for (std::uint32_t k = 0; k < to.count; ++k)
      m_relations.addLeaves(candidate(from, i), candidate(to, k), from.token, from.part, to.part);
  }
}

void StatementReader::relateFlow(const Term& from, const Operand& to) {
  switch (from.flow) {
  case Term::Flow::plain:
    relateMove(from.operand, to);
    break;
  case Term::Flow::added:
    relate(RelationKind::Addition, from.operand, to);
    break;
  case Term::Flow::computed:
    relate(RelationKind::Computation, from.operand, to);
    break;
  case Term::Flow::length:
    relate(RelationKind::Length, from.operand, to);
    break;
  }
}

void StatementReader::relateAll(RelationKind kind, TermRange from, const Operand& to) {
  for (std::uint32_t i = from.begin; i < from.end; ++i)
    relate(kind, m_terms[i].operand, to);
}

void StatementReader::relateFlowAs(RelationKind kind, TermRange from, const Operand& to) {
  for (std::uint32_t i = from.begin; i < from.end; ++i) {
    const bool keeps = m_terms[i].flow == Term::Flow::plain || m_terms[i].flow == Term::Flow::added;
    if (keeps) {
      relate(kind, m_terms[i].operand, to);
    } else {
      relateFlow(m_terms[i], to);
    }
  }
}

void StatementReader::generic() {
  while (!atBoundary()) {
    if (atName()) {
      touch(operand(Demand::declared), Access::read);
    } else {
      advance();
    }
  }
}

void StatementReader::diagnose(Code code, Severity severity, std::uint32_t token, std::string text) {
  m_diagnostics.add(code, severity, m_tokens[token].position(), std::move(text));
}

void StatementReader::addPlace(std::string_view kindWord, std::string_view name, std::uint32_t token) {
  m_analysis.places.push_back({kindWord, m_analysis.texts->keep(name), m_tokens[token].position()});
}

// Stable. Declarations, references of clauses and statements come as runs in which nothing has far to go.
template<typename Item, typename Before>
void sortRuns(std::vector<Item>& items, Before before) {
  constexpr std::ptrdiff_t kFar = 64;
  constexpr std::size_t kManyRuns = 16;
  std::vector<std::ptrdiff_t> runs{0};
  const auto begin = items.begin();
  const std::ptrdiff_t size = std::ssize(items);
  for (std::ptrdiff_t next = 1; next < size; ++next) {
    if (!before(begin[next], begin[next - 1])) continue;
    const std::ptrdiff_t limit = std::max(runs.back(), next - kFar);
    std::ptrdiff_t place = next - 1;
    while (place > limit && before(begin[next], begin[place - 1]))
      --place;
    if (place > limit || limit == runs.back()) {
      std::rotate(begin + place, begin + next, begin + next + 1);
    } else {
      runs.push_back(next);
      if (runs.size() > kManyRuns) return std::stable_sort(begin, items.end(), before);
    }
  }
  for (std::size_t run = 1; run < runs.size(); ++run) {
    const auto from = begin + runs[run];
    const auto to = run + 1 < runs.size() ? begin + runs[run + 1] : items.end();
    std::inplace_merge(begin, from, std::lower_bound(from, to, *(from - 1), before), before);
  }
}

void StatementReader::finish() {
  sortRuns(m_noted, [](const Noted& a, const Noted& b) { return a.place < b.place; });
  std::vector<Instance> instances(m_noted.size());
  Instance* next = instances.data();
  const Token* const tokens = m_tokens;
  std::uint64_t last = ~std::uint64_t{0}; // no place
  for (const Noted& noted : m_noted) {
    if (noted.place == last) continue;
    last = noted.place;
    const Token& token = tokens[noted.place >> 32];
    Instance& made = *next++;
    made.construct = static_cast<std::uint32_t>(noted.place);
    made.access = noted.access;
    made.further = token.further;
    made.at = token.position();
    made.verb = noted.verb;
    if (token.kind == TokenKind::picture) {
      made.further = 0;
      if (const auto placed = m_placed.find(noted.place); placed != m_placed.end()) made.at = placed->second;
    }
  }
  instances.resize(static_cast<std::size_t>(next - instances.data()));
  m_analysis.instances = std::move(instances);
  m_relations.finish();
}

} // namespace cobol
