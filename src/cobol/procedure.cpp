#include "cobol/procedure.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "cobol/data_references.hpp"
#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

/// Reads a stretch of procedure text, statement by statement.
class ProcedureText {
 public:
  explicit ProcedureText(StatementReader& reader) : m_reader(reader), m_analysis(reader.analysis()) {}

  void read(std::uint32_t from, std::uint32_t to) {
    m_reader.open(from, to);
    m_sentenceStart = true;
    closeAll();
    while (!m_reader.atEnd())
      step();
  }

 private:
  void step() {
    const Token& t = m_reader.token();
    if (t.kind == TokenKind::period) {
      closeAll();
      m_sentenceStart = true;
      m_reader.advance();
      return;
    }
    if (m_reader.isVerb(t)) { // no verb is a paragraph's name
      m_sentenceStart = false;
      readStatement(t.text);
      return;
    }
    if (acceptHeader()) return;
    m_sentenceStart = false;
    const Keyword word = m_reader.keyword();
    if (word == Keyword::When) {
      closeToSelection();
      m_reader.advance();
      m_reader.beginStatement(idOf(word));
      readWhen(m_reader);
      finishStatement(m_reader.index() - 1);
    } else if (word == Keyword::Else || word == Keyword::Then) {
      if (word == Keyword::Else) closeTo(Keyword::If, false);
      m_reader.advance();
    } else if (classOf(word) == WordClass::terminator) {
      closeEnded(word);
      m_reader.advance();
    } else if (word == Keyword::Next && m_reader.keyword(1) == Keyword::Sentence) {
      m_reader.advance(2);
      ++m_analysis.statements;
      ++m_analysis.statementsUnderstood;
    } else if (const std::uint32_t phrase = m_reader.phraseLength(); phrase > 0) {
      m_reader.advance(phrase);
    } else {
      readUnknown();
    }
  }

  void readStatement(NameId verb) {
    const std::uint32_t verbAt = m_reader.index();
    m_reader.beginStatement(verb);
    m_reader.advance();
    ++m_analysis.statements;
    const StatementHandler handler = handlerOf(keywordOf(verb));
    if (handler == nullptr) {
      misunderstood(verbAt);
      return;
    }
    const std::size_t openBefore = m_reader.blocks.size();
    handler(m_reader);
    for (std::size_t i = openBefore; i < m_reader.blocks.size(); ++i)
      ++countOf(m_reader.blocks[i].verb);
    if (finishStatement(verbAt)) ++m_analysis.statementsUnderstood;
  }

  bool finishStatement(std::uint32_t verbAt) {
    if (m_reader.atBoundary() || m_reader.at(Keyword::Then)) return true;
    misunderstood(verbAt);
    return false;
  }

  void misunderstood(std::uint32_t verbAt) {
    const Token& at = m_reader.token();
    std::string text = std::string(m_reader.text(m_reader.stream().tokens[verbAt])) + " is not understood";
    if (!m_reader.atEnd()) text += " from " + std::string(m_reader.text(at).substr(0, 60)) + " on";
    m_reader.diagnose(Code::StatementUnknown, Severity::warning, verbAt, std::move(text));
    m_reader.generic();
  }

  void readUnknown() {
    const std::uint32_t first = m_reader.index();
    m_reader.beginStatement(0);
    ++m_analysis.statements;
    misunderstood(first);
    if (m_reader.index() == first) m_reader.advance();
  }

  /// Section and paragraph names, DECLARATIVES, the division's header and END PROGRAM.
  bool acceptHeader() {
    const Token& t = m_reader.token();
    const Keyword word = m_reader.keyword();
    if (word == Keyword::Procedure && m_reader.keyword(1) == Keyword::Division) {
      m_reader.advance(2);
      m_reader.beginStatement(idOf(Keyword::Procedure));
      readProcedureHeader(m_reader);
      return true;
    }
    const bool closes = word == Keyword::End && m_sentenceStart && m_reader.token(1).kind == TokenKind::word;
    if (word == Keyword::Declaratives || closes) {
      skipToPeriod();
      return true;
    }
    if (!m_reader.atProcedureName(m_sentenceStart)) return false;
    m_analysis.places.push_back({"PARA", m_reader.text(t), t.position()});
    closeAll();
    m_reader.advance();
    if (m_reader.at(Keyword::Section)) {
      m_reader.advance();
      if (m_reader.token().kind == TokenKind::number) m_reader.advance();
    }
    m_sentenceStart = true;
    return true;
  }

  void skipToPeriod() {
    while (!m_reader.atEnd() && m_reader.token().kind != TokenKind::period)
      m_reader.advance();
  }

  std::uint32_t& countOf(Keyword verb) {
    switch (verb) {
    case Keyword::If:
      return m_open[0];
    case Keyword::Evaluate:
      return m_open[1];
    case Keyword::Search:
      return m_open[2];
    default:
      return m_open[3];
    }
  }

  void closeLast() {
    const Block& last = m_reader.blocks.back();
    --countOf(last.verb);
    if (last.verb == Keyword::Evaluate) m_reader.subjects.resize(last.firstSubject);
    m_reader.blocks.pop_back();
  }

  void closeTo(Keyword verb, bool inclusive) {
    if (countOf(verb) == 0) return;
    while (m_reader.blocks.back().verb != verb)
      closeLast();
    if (inclusive) closeLast();
  }

  void closeToSelection() {
    if (countOf(Keyword::Evaluate) + countOf(Keyword::Search) == 0) return;
    while (m_reader.blocks.back().verb != Keyword::Evaluate && m_reader.blocks.back().verb != Keyword::Search)
      closeLast();
  }

  void closeEnded(Keyword terminator) {
    switch (terminator) {
    case Keyword::EndIf:
      closeTo(Keyword::If, true);
      break;
    case Keyword::EndEvaluate:
      closeTo(Keyword::Evaluate, true);
      break;
    case Keyword::EndSearch:
      closeTo(Keyword::Search, true);
      break;
    case Keyword::EndPerform:
      closeTo(Keyword::Perform, true);
      break;
    default:
      break;
    }
  }

  void closeAll() {
    m_reader.blocks.clear();
    m_reader.subjects.clear();
    m_open = {};
  }

  StatementReader& m_reader;
  Analysis& m_analysis;
  std::array<std::uint32_t, 4> m_open{}; ///< open IF, EVALUATE, SEARCH, PERFORM
  bool m_sentenceStart = true;
};

/// EXEC text among the declarations: cursors and tables that SQL declares.
void readDeclaredExec(StatementReader& reader, std::uint32_t from, std::uint32_t to) {
  reader.open(from, to);
  reader.beginStatement(idOf(Keyword::Exec));
  if (reader.accept(Keyword::Exec) || reader.accept(Keyword::Execute)) readExec(reader);
}

/// The references of the first program, of the second …, of each as they stand in the text.
std::vector<const DataReference*> referencesByProgram(const Analysis& analysis) {
  std::vector<const DataReference*> references;
  references.reserve(analysis.references.size());
  for (const DataReference& reference : analysis.references) {
    if (reference.program >= 0) references.push_back(&reference);
  }
  const auto before = [](const DataReference* a, const DataReference* b) { return a->program < b->program; };
  if (!std::is_sorted(references.begin(), references.end(), before))
    std::stable_sort(references.begin(), references.end(), before);
  return references;
}

void notePlacesOfLiterals(const TokenStream& stream, Analysis& analysis) {
  const auto isLiteral = [](const Token& token) { return token.kind == TokenKind::literal; };
  const auto end = stream.tokens.end();
  for (auto at = std::find_if(stream.tokens.begin(), end, isLiteral); at != end;
       at = std::find_if(at + 1, end, isLiteral)) {
    analysis.places.push_back({"LIT", stream.textOf(*at), at->position()});
  }
}

} // namespace

void readProcedures(const TokenStream& stream, const Options&, Analysis& analysis, Diagnostics& diagnostics) {
  StatementReader reader(stream, analysis, diagnostics);
  noteDeclarations(reader);
  const std::vector<const DataReference*> references = referencesByProgram(analysis);
  auto reference = references.begin();
  ProcedureText text(reader);
  for (std::size_t p = 0; p < analysis.programs.size(); ++p) {
    reader.resolver().enterProgram(static_cast<int>(p));
    for (; reference != references.end() && (*reference)->program == static_cast<int>(p); ++reference)
      readDataReference(reader, **reference);
    relateSlots(reader);
    for (const auto& [from, to] : analysis.programs[p].execRanges)
      readDeclaredExec(reader, from, to);
    for (const auto& [from, to] : analysis.programs[p].procedureRanges)
      text.read(from, to);
  }
  notePlacesOfLiterals(stream, analysis);
  reader.finish();
}

} // namespace cobol
