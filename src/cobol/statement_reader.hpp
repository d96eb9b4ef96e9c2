#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/analysis.hpp"
#include "cobol/keywords.hpp"
#include "cobol/relations.hpp"
#include "cobol/resolve.hpp"
#include "cobol/special_registers.hpp"
#include "cobol/statements.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// What stands as an operand: a reference to datanames, or something that leads to none.
struct Operand {
  enum class Sort : std::uint8_t { none, item, lengthOf, addressOf, literal };
  Sort sort = Sort::none;
  std::uint32_t token = 0; ///< its name's token
  std::uint32_t first = 0; ///< the construct; of several candidates the first one's place in the reader's pool
  std::uint32_t count = 0; ///< more than one when the name is ambiguous
  Part part{};             ///< of the item

  bool isItem() const { return sort == Sort::item; }
  explicit operator bool() const { return sort != Sort::none; }
};

/// One dataname of an expression with what the operators around it make of its value.
struct Term {
  enum class Flow : std::uint8_t { plain, added, computed, length };
  Operand operand;
  Flow flow = Flow::plain;
};
struct TermRange {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  bool empty() const { return begin == end; }
};

/// Whether a word that nothing declares becomes an undeclared construct at this place.
enum class Demand : std::uint8_t {
  dataName, ///< only a data name can stand here
  declared, ///< other words can stand here as well; unknown words are passed over
};

/// What the words between verbs belong to.
struct Block {
  Keyword verb = Keyword::None;   ///< IF, EVALUATE, SEARCH or PERFORM
  std::uint32_t firstSubject = 0; ///< in the stack of subjects
};
struct Subject {
  std::uint32_t construct = 0;
  std::uint32_t ordinal = 0; ///< of several subjects joined by ALSO
};

/// Walks over the tokens of procedure text and records what it meets. The families of statements are free functions on
/// it. A statement ends where `atBoundary` says; a handler that stops before lets the rest fall to the generic rule.
class StatementReader {
 public:
  StatementReader(const TokenStream& stream, Analysis& analysis, Diagnostics& diagnostics);

  // Tokens
  /// Reads the tokens [from, to) next.
  void open(std::uint32_t from, std::uint32_t to) { m_here = m_tokens + from, m_limit = m_tokens + to; }
  bool atEnd() const { return m_here >= m_limit; }
  std::uint32_t index() const { return static_cast<std::uint32_t>(m_here - m_tokens); }
  std::uint32_t end() const { return static_cast<std::uint32_t>(m_limit - m_tokens); }
  /// Steps over the token; its index.
  std::uint32_t takeIndex() { return static_cast<std::uint32_t>(m_here++ - m_tokens); }
  void moveTo(std::uint32_t index) { m_here = m_tokens + index; }
  void advance(std::uint32_t count = 1) { m_here += count; }
  const Token& token(std::uint32_t ahead = 0) const { return m_here + ahead < m_limit ? m_here[ahead] : m_nothing; }
  Keyword keyword(std::uint32_t ahead = 0) const {
    const Token& t = token(ahead);
    return t.kind == TokenKind::word ? keywordOf(t.text) : Keyword::None;
  }
  bool at(Keyword word) const { return keyword() == word; }
  bool accept(Keyword word) {
    if (!at(word)) return false;
    ++m_here;
    return true;
  }
  /// Passes over any of the words, in any order and number.
  void skip(std::initializer_list<Keyword> words);
  bool atSymbol(char symbol) const { return isSymbol(token(), symbol); }
  bool acceptSymbol(char symbol) {
    if (!atSymbol(symbol)) return false;
    ++m_here;
    return true;
  }
  bool isSymbol(const Token& t, char symbol) const {
    return t.kind == TokenKind::symbol && t.text == m_symbolIds[static_cast<unsigned char>(symbol)];
  }
  std::string_view text(const Token& t) const { return m_stream.textOf(t); }
  /// A word that can be a data name here: not reserved, or declared all the same.
  bool atName(std::uint32_t ahead = 0) const {
    const Token& t = token(ahead);
    return t.kind == TokenKind::word && (t.text >= keywordCount() || isNameHere(t.text));
  }
  /// A number, a literal or a figurative constant.
  bool atConstant() const {
    const Token& t = token();
    if (t.kind == TokenKind::number || t.kind == TokenKind::literal) return true;
    return t.kind == TokenKind::word ? t.text < keywordCount() && isConstantHere(keywordOf(t.text)) : atSignedNumber();
  }
  /// Passes over a number or literal that no symbol follows, so that it is the whole of an operand.
  bool acceptLoneConstant() {
    const TokenKind kind = token().kind;
    if ((kind != TokenKind::literal && kind != TokenKind::number) || token(1).kind == TokenKind::symbol) return false;
    ++m_here;
    return true;
  }
  /// A name, a constant, LENGTH OF, ADDRESS OF or FUNCTION.
  bool atOperand() const {
    return isPlainName(token()) || (!atBoundary() && (atConstant() || atName() || atOperandWord()));
  }
  /// A function, with the word FUNCTION or without it.
  bool atFunction() const { return at(Keyword::Function) || isImpliedFunction(); }
  bool isVerb(const Token& t) const {
    if (t.kind != TokenKind::word) return false;
    const Ending ending = endingOf(t.text);
    return ending == Ending::verb || (ending == Ending::softVerb && !m_resolver.isDeclared(t.text));
  }
  /// Where the statement's operands end: period, verb, scope terminator, ELSE, WHEN, a conditional phrase.
  bool atBoundary() const {
    const Token& t = token();
    if (t.kind != TokenKind::word) return t.kind == TokenKind::period || t.kind == TokenKind::end;
    if (isPlainName(t)) return false;
    const Ending ending = endingOf(t.text);
    return ending == Ending::verb || ending == Ending::closer || endsHere(t, ending);
  }
  /// The name of a section or paragraph where it is defined: `sentenceStart` tells that a period stands before.
  bool atProcedureName(bool sentenceStart) const {
    return (sentenceStart || token().has(TokenFlag::areaA)) && definesProcedure(sentenceStart);
  }
  /// How many words the conditional phrase here has (ON SIZE ERROR, NOT AT END …); 0: there is none.
  std::uint32_t phraseLength() const;

  // References
  /// Reads `name {OF name} [(subscripts)] [(from:length)]`, LENGTH OF, ADDRESS OF or a constant. Instances are recorded
  /// for qualifiers and for what the parentheses hold; the operand itself is recorded by `touch`.
  Operand operand(Demand demand = Demand::dataName) {
    if (const std::uint32_t only = loneItem(); only != Resolver::kNone) return operandOf(only, takeIndex());
    return longOperand(demand);
  }
  /// Reads a name where one stands and touches it; otherwise nothing happens and the result is none.
  Operand read(Access access, Demand demand = Demand::dataName);
  /// Reads names and touches them until something else comes.
  void readAll(Access access, Demand demand = Demand::dataName);
  void touch(const Operand& operand, Access access) {
    if (operand.isItem() && operand.count == 1) {
      touch(operand.first, operand.token, access);
    } else {
      touchEach(operand, access);
    }
  }
  void touch(std::uint32_t construct, std::uint32_t token, Access access) {
    m_noted.push_back({placeOf(token, construct), m_verb, access});
  }
  /// A name inside a token, such as a constant in a PICTURE; it is read if it is declared.
  void touchPlaced(NameId name, std::uint32_t token, Position at);
  std::uint32_t candidate(const Operand& operand, std::uint32_t k) const {
    return operand.count == 1 ? operand.first : m_pool[operand.first + k];
  }
  const Construct& construct(std::uint32_t index) const { return m_analysis.constructs[index]; }
  /// Among several candidates for the next names those subordinate to the construct or belonging to the file win; -1:
  /// none.
  void prefer(int construct, int file) { m_preferredParent = construct, m_preferredFile = file; }
  /// In EXEC text: a host variable behind its colon, `A.B` meaning B OF A.
  Operand hostVariable();
  /// An operand that stands for one construct.
  Operand operandOf(std::uint32_t construct, std::uint32_t token) const {
    return {Operand::Sort::item, token, construct, 1};
  }
  /// An operand for every record of a file.
  Operand recordsOf(int file, std::uint32_t token);
  /// A file's name, if one stands here; the word is passed over.
  int fileName();

  // Expressions
  /// An arithmetic expression; every dataname is read.
  TermRange expression() { return terms(true); }
  /// One operand, perhaps a function with its arguments.
  TermRange primary();
  /// A condition, or one object of EVALUATE if `subject` is given. Pairs compared are related.
  void condition(TermRange subject = {});
  /// Whether the condition read last held a test of its own, so that its value is true or false.
  bool conditionHadTest() const { return m_hadTest; }
  std::uint32_t termCount() const { return static_cast<std::uint32_t>(m_terms.size()); }
  const Term& term(std::uint32_t index) const { return m_terms[index]; }
  /// The subjects noted from index `from` on that have the ordinal, as terms placed here.
  TermRange subjectTerms(std::uint32_t from, std::uint32_t ordinal);

  // Relations
  void relate(RelationKind kind, const Operand& from, const Operand& to);
  void relateMove(const Operand& from, const Operand& to) {
    if (!from.isItem() || !to.isItem()) return;
    for (std::uint32_t i = 0; i < from.count; ++i) {
      for (std::uint32_t k = 0; k < to.count; ++k)
        m_relations.addMove(candidate(from, i), candidate(to, k), from.token, from.part, to.part);
    }
  }
  void relateLeaves(const Operand& from, const Operand& to);
  /// What a term that is assigned does to the receiver: Move, Addition, Computation or Length.
  void relateFlow(const Term& from, const Operand& to);
  void relateFlow(TermRange from, const Operand& to) {
    for (std::uint32_t i = from.begin; i < from.end; ++i)
      relateFlow(m_terms[i], to);
  }
  void relateAll(RelationKind kind, TermRange from, const Operand& to);
  /// The same but with Move and Addition taken as that kind.
  void relateFlowAs(RelationKind kind, TermRange from, const Operand& to);

  // Statements
  /// Forgets the operands of the statement before and notes the verb, the word at `index`.
  void beginStatement(NameId verb) {
    m_verb = verb;
    m_pool.clear();
    m_terms.clear();
  }
  /// Takes every declared name up to the boundary as read.
  void generic();
  void diagnose(Code code, Severity severity, std::uint32_t token, std::string text);
  void addPlace(std::string_view kindWord, std::string_view name, std::uint32_t token);

  const TokenStream& stream() const { return m_stream; }
  Analysis& analysis() { return m_analysis; }
  Resolver& resolver() { return m_resolver; }
  Relations& relations() { return m_relations; }

  std::vector<Block> blocks;     ///< open statements that own later words
  std::vector<Subject> subjects; ///< of the EVALUATE statements among them
  std::vector<Operand> targets;  ///< of the SET in hand

  /// Orders the instances by their place and hands them and the relations to the analysis.
  void finish();

 private:
  struct Noted {
    std::uint64_t place; ///< token in the upper half, construct in the lower: the order of instances
    NameId verb;
    Access access;
  };
  static std::uint64_t placeOf(std::uint32_t token, std::uint32_t construct) {
    return (std::uint64_t{token} << 32) | construct;
  }
  struct Level {
    enum class Sort : std::uint8_t { group, function };
    Sort sort = Sort::group;
    FunctionKind function = FunctionKind::none;
    bool sawAdd = false;
    bool sawMultiply = false;
    std::uint32_t begin = 0; ///< first term of the argument or group
    std::uint32_t chain = 0; ///< first term of the product
    bool pending = false;    ///< a relational operator waits for its object
    bool hasSubject = false;
    bool connected = false; ///< behind AND or OR: an abbreviated object may follow
    bool related = false;   ///< the group holds a condition
    TermRange subject{};
    std::uint32_t side = 0; ///< first term of the side that is being read

    bool isMeasured() const { return sort == Sort::function && function == FunctionKind::length; }
  };
  struct Mark {
    std::uint32_t begin;
    std::uint32_t end;
    Term::Flow flow;
  };
  struct Parenthesis {
    enum class Sort : std::uint8_t { subscript, group };
    Sort sort = Sort::group;
    bool sawColon = false;
    Part part; ///< if a colon comes
    Operand base;
    std::uint32_t pending = 0; ///< first of the operands read inside
  };

  /// A name that no compiler reserves and that begins no paragraph: nearly every operand is one.
  static bool isPlainName(const Token& t) {
    return t.kind == TokenKind::word && t.text >= keywordCount() && !t.has(TokenFlag::areaA);
  }
  bool isNameHere(NameId word) const;
  bool isConstantHere(Keyword word) const;
  bool atSignedNumber() const { return (atSymbol('+') || atSymbol('-')) && token(1).kind == TokenKind::number; }
  bool atOperandWord() const;
  bool definesProcedure(bool sentenceStart) const;
  bool endsHere(const Token& word, Ending ending) const;

  /// A plain name without qualifiers, subscripts, a part or a method behind it.
  bool atLoneName() const {
    if (!isPlainName(token())) return false;
    const Token& next = token(1);
    if (next.kind == TokenKind::symbol) return !isSymbol(next, '(') && next.text != m_inlineMethod;
    return next.kind != TokenKind::word || !isQualifying(next.text);
  }
  /// The only construct that such a name here can mean, as with most operands; else kNone.
  std::uint32_t loneItem() const { return atLoneName() ? m_resolver.declaredOnce(token().text) : Resolver::kNone; }
  static bool isQualifying(NameId word) { return word == idOf(Keyword::Of) || word == idOf(Keyword::In); }
  bool atQualifier() const {
    const Token& t = token();
    return t.kind == TokenKind::word && isQualifying(t.text) && token(1).kind == TokenKind::word;
  }
  void touchEach(const Operand& operand, Access access);
  Operand longOperand(Demand demand);
  Operand plainOperand(Demand demand);
  Operand reference(Demand demand);
  Operand qualified(std::uint32_t nameToken, Demand demand);
  Operand methodCalled();
  Operand named(Demand demand);
  void lookUp(Operand& operand, NameId name, Demand demand);
  void narrow(Operand& operand);
  /// Reads subscripts and reference modification; the part that the latter takes.
  Part parentheses(const Operand& base);
  Part partAhead() const;
  bool openParenthesis(const Operand& base);
  void closeParenthesis();
  /// A function whose name stands without the word FUNCTION.
  bool isImpliedFunction() const { return (isSymbol(token(1), '(') || m_resolver.hasRepository()) && namesFunction(); }
  bool namesFunction() const;
  /// Passes over the name of a function and, if it has arguments, opens a level for them.
  bool acceptFunction() { return atFunction() && openFunction(); }
  bool openFunction();
  TermRange terms(bool operators);
  void takeItem(std::uint32_t only);
  void takeTerm(bool measured = false);
  static void endChain(Level& level, std::uint32_t size, std::vector<Mark>& marks);
  static void endSum(Level& level, std::uint32_t size, std::vector<Mark>& marks);
  void closeFunction(const Level& level);
  void measureTerms(std::uint32_t begin);
  void applyMarks(std::uint32_t begin);
  bool openGroup() {
    if (!acceptSymbol('(')) return false;
    beginGroup();
    return true;
  }
  void beginGroup();
  bool closeGroup() {
    if (m_levels.size() < 2 || !acceptSymbol(')')) return false;
    endGroup();
    return true;
  }
  void endGroup();
  bool conditionOperand(bool& expectsOperand);
  bool conditionOperator(bool& expectsOperand);
  void endRelation(Level& level);
  bool acceptTest();
  void compare(TermRange left, TermRange right);
  bool acceptRelationalOperator();
  bool acceptClass();
  bool acceptArithmeticOperator();

  const TokenStream& m_stream;
  const Token* m_tokens;
  Analysis& m_analysis;
  Diagnostics& m_diagnostics;
  Resolver m_resolver;
  Relations m_relations;
  Token m_nothing{};
  const Token* m_here = m_tokens; ///< at the end: at or behind `m_limit`
  const Token* m_limit = m_tokens;
  NameId m_verb = 0;
  bool m_hadTest = false;
  int m_preferredParent = -1;
  int m_preferredFile = -1;
  std::vector<std::uint32_t> m_pool; ///< of the statement: candidates of names that have several
  std::vector<Term> m_terms;
  std::vector<Level> m_levels;
  std::vector<Mark> m_marks;
  std::vector<Parenthesis> m_parentheses;
  std::vector<Operand> m_pending;
  Part m_part; ///< of the reference that is being read
  std::vector<NameId> m_qualifiers;
  std::vector<std::uint32_t> m_qualifierTokens;
  std::vector<Noted> m_noted;
  std::map<std::uint64_t, Position> m_placed; ///< by `place`: where inside the token
  NameId m_power = 0;
  NameId m_inlineMethod = 0;
  NameId m_responseCode = 0;
  NameId m_cicsValue = 0;
  NameId m_symbolIds[128]{};
};

} // namespace cobol
