// Reading of one reference: name, qualifiers, subscripts and reference modification. Subscripts nest, so open
// parentheses stand on a stack of their own.
#include <charconv>
#include <span>

#include "cobol/statement_reader.hpp"

namespace cobol {

Operand StatementReader::longOperand(Demand demand) {
  if (isPlainName(token())) return reference(demand);
  const Keyword word = keyword();
  const bool length = word == Keyword::Length || word == Keyword::ByteLength;
  if ((length || (word == Keyword::Address && keyword(1) == Keyword::Of)) && !m_resolver.isDeclared(token().text)) {
    advance();
    accept(Keyword::Of);
    Operand result = plainOperand(demand);
    if (result.isItem()) result.sort = length ? Operand::Sort::lengthOf : Operand::Sort::addressOf;
    return result;
  }
  return plainOperand(demand);
}

Operand StatementReader::plainOperand(Demand demand) {
  if (atConstant()) {
    const Operand constant{Operand::Sort::literal, index(), 0, 0};
    if (at(Keyword::All) || token().kind == TokenKind::symbol) advance();
    advance();
    while (atSymbol('&') && token(1).kind == TokenKind::literal)
      advance(2);
    return constant;
  }
  if (!atName() || atBoundary()) return {};
  return reference(demand);
}

/// At a name.
Operand StatementReader::reference(Demand demand) {
  if (const Token& next = token(1); next.kind == TokenKind::symbol) {
    if ((token().text == m_responseCode || token().text == m_cicsValue) && isSymbol(next, '(')) {
      const Operand constant{Operand::Sort::literal, index(), 0, 0};
      while (!atEnd() && !atSymbol(')') && token().kind != TokenKind::period)
        advance();
      acceptSymbol(')');
      return constant;
    }
    if (next.text == m_inlineMethod) return methodCalled();
  }
  Operand result = named(demand);
  if (atSymbol('(')) result.part = parentheses(result);
  return result;
}

// `object::"method" (arguments)…`: object and arguments are read, what comes of it is not known.
Operand StatementReader::methodCalled() {
  const Operand result{Operand::Sort::literal, index(), 0, 0};
  touch(named(Demand::declared), Access::read); // a class is no dataname
  while (token().kind == TokenKind::symbol && token().text == m_inlineMethod) {
    advance(2);
    if (atSymbol('(')) parentheses({});
  }
  return result;
}

Operand StatementReader::read(Access access, Demand demand) {
  if (const std::uint32_t only = loneItem(); only != Resolver::kNone) {
    const std::uint32_t name = takeIndex();
    touch(only, name, access);
    return operandOf(only, name);
  }
  const Operand result = longOperand(demand);
  touch(result, access);
  return result;
}

void StatementReader::readAll(Access access, Demand demand) {
  while (atOperand()) {
    const std::uint32_t before = index();
    read(access, demand);
    if (index() == before) break;
  }
}

Operand StatementReader::named(Demand demand) {
  const std::uint32_t nameToken = index();
  advance();
  if (!atQualifier()) {
    const std::uint32_t only = m_resolver.declaredOnce(m_tokens[nameToken].text);
    if (only != Resolver::kNone) return operandOf(only, nameToken);
  }
  return qualified(nameToken, demand);
}

/// Behind the name: its qualifiers, if there are any.
Operand StatementReader::qualified(std::uint32_t nameToken, Demand demand) {
  Operand result;
  result.token = nameToken;
  m_qualifiers.clear();
  m_qualifierTokens.clear();
  for (; atQualifier(); advance(2)) {
    m_qualifiers.push_back(token(1).text);
    m_qualifierTokens.push_back(index() + 1);
  }
  lookUp(result, m_tokens[nameToken].text, demand);
  return result;
}

Operand StatementReader::hostVariable() {
  Operand result;
  result.token = index();
  m_qualifiers.clear();
  m_qualifierTokens.clear();
  while (text(token(1)) == "." && token(1).kind == TokenKind::symbol && token(2).kind == TokenKind::word) {
    m_qualifiers.insert(m_qualifiers.begin(), token().text);
    m_qualifierTokens.insert(m_qualifierTokens.begin(), index());
    advance(2);
    result.token = index();
  }
  const NameId name = token().text;
  advance();
  lookUp(result, name, Demand::dataName);
  if (atSymbol('(') && token().has(TokenFlag::joined)) parentheses(result);
  return result;
}

void StatementReader::lookUp(Operand& operand, NameId name, Demand demand) {
  operand.first = static_cast<std::uint32_t>(m_pool.size());
  m_resolver.find(name, m_qualifiers, m_pool);
  operand.count = static_cast<std::uint32_t>(m_pool.size()) - operand.first;
  if (operand.count == 0) {
    if (demand == Demand::declared) return;
    // A symbolic character, or a word such as ERASE that means something of its own in some statements.
    if (m_resolver.isOtherName(name) || classOf(name) == WordClass::context) {
      operand.sort = Operand::Sort::literal;
      return;
    }
    operand.count = 1;
    m_pool.push_back(m_resolver.undeclared(name, m_qualifiers, operand.token));
    diagnose(Code::Unresolved, Severity::warning, operand.token,
             std::string(m_stream.names.text(name)) + " is not declared");
  }
  operand.sort = Operand::Sort::item;
  if (operand.count > 1 && (m_preferredParent >= 0 || m_preferredFile >= 0)) narrow(operand);
  if (operand.count == 1) operand.first = m_pool[operand.first];
  if (operand.count > 1) {
    diagnose(Code::Ambiguous, Severity::warning, operand.token,
             std::string(m_stream.names.text(name)) + " can mean " + std::to_string(operand.count) +
                 " declarations; the use counts for each");
  }
  for (std::uint32_t k = 0; k < operand.count; ++k) {
    std::uint32_t at = candidate(operand, k);
    for (std::size_t q = 0; q < m_qualifiers.size(); ++q) {
      at = m_resolver.ancestorNamed(at, m_qualifiers[q]);
      if (at == Resolver::kNone) break;
      touch(at, m_qualifierTokens[q], Access::named);
    }
  }
}

void StatementReader::narrow(Operand& operand) {
  std::uint32_t kept = 0;
  for (std::uint32_t k = 0; k < operand.count; ++k) {
    const std::uint32_t found = m_pool[operand.first + k];
    bool belongs = m_preferredFile >= 0 && m_resolver.fileOf(found) == m_preferredFile;
    for (int up = static_cast<int>(found); up >= 0 && !belongs && m_preferredParent >= 0;
         up = construct(static_cast<std::uint32_t>(up)).parent) {
      belongs = up == m_preferredParent;
    }
    if (belongs) m_pool[operand.first + kept++] = found;
  }
  if (kept == 0) return;
  operand.count = kept;
  m_pool.resize(operand.first + kept);
}

bool StatementReader::openParenthesis(const Operand& base) {
  if (!acceptSymbol('(')) return false;
  m_parentheses.push_back(
      {Parenthesis::Sort::subscript, false, partAhead(), base, static_cast<std::uint32_t>(m_pending.size())});
  return true;
}

/// `(5:3)`, `(5:)` or `(5:N)`: what only running tells is unknown.
Part StatementReader::partAhead() const {
  const auto number = [this](std::uint32_t ahead) {
    const Token& t = token(ahead);
    std::int64_t value = 0;
    const std::string_view digits = t.kind == TokenKind::number ? text(t) : std::string_view();
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool isCount = error == std::errc() && end == digits.data() + digits.size() && value > 0 && value < 1 << 30;
    return isCount ? value : std::int64_t{0};
  };
  const std::int64_t first = number(0);
  if (first == 0 || !isSymbol(token(1), ':')) return {Part::kUnknown, Part::kUnknown};
  const std::int64_t length = isSymbol(token(3), ')') ? number(2) : 0;
  return {first - 1, length == 0 ? Part::kUnknown : first - 1 + length};
}

void StatementReader::closeParenthesis() {
  const Parenthesis closed = m_parentheses.back();
  m_parentheses.pop_back();
  if (closed.sort == Parenthesis::Sort::group) return;
  const RelationKind kind = closed.sawColon ? RelationKind::Position : RelationKind::Subscript;
  for (std::size_t i = closed.pending; i < m_pending.size(); ++i)
    relate(kind, m_pending[i], closed.base);
  m_pending.resize(closed.pending);
  if (closed.sawColon && m_parentheses.empty()) m_part = closed.part;
  openParenthesis(closed.base);
}

Part StatementReader::parentheses(const Operand& base) {
  m_parentheses.clear();
  m_pending.clear();
  m_part = {};
  openParenthesis(base);
  while (!m_parentheses.empty()) {
    if (acceptSymbol(')')) {
      closeParenthesis();
    } else if (acceptSymbol('(')) {
      m_parentheses.push_back({});
    } else if (acceptSymbol(':')) {
      m_parentheses.back().sawColon = true;
    } else if (atBoundary()) {
      break; // never closed: what was read inside stays
    } else if (at(Keyword::Function)) {
      advance(2);
      if (acceptSymbol('(')) m_parentheses.push_back({});
    } else if ((at(Keyword::Length) || at(Keyword::Address) || at(Keyword::ByteLength)) && keyword(1) == Keyword::Of) {
      advance(2);
      if (!atName()) continue;
      const Operand named_ = named(Demand::dataName);
      touch(named_, Access::named);
      openParenthesis(named_);
    } else if (atName() && !isImpliedFunction()) {
      const Operand inner = named(Demand::dataName);
      touch(inner, Access::read);
      m_pending.push_back(inner);
      openParenthesis(inner);
    } else {
      advance(); // a number, an operator, ALL, the name of a function
    }
  }
  return m_part;
}

} // namespace cobol
