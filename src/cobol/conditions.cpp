#include "cobol/conditions.hpp"

#include <charconv>

#include "cobol/characters.hpp"

namespace cobol {
namespace {

using Constants = Conditions::Constants;

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words;
  for (std::size_t i = 0; i < text.size();) {
    const char c = text[i];
    std::size_t end = i + 1;
    if (isBlank(c) || c == ',') {
      ++i;
      continue;
    }
    if (charClass(c) == CharClass::quote) {
      end = std::min(text.find(c, i + 1), text.size() - 1) + 1;
    } else if (isWordChar(c)) {
      while (end < text.size() && isWordChar(text[end]))
        ++end;
    } else if ((c == '<' || c == '>') && end < text.size() && (text[end] == '=' || text[end] == '>')) {
      ++end;
    }
    words.emplace_back(text.substr(i, end - i));
    i = end;
  }
  return words;
}

std::string unquoted(const std::string& word) {
  if (word.size() >= 2 && charClass(word[0]) == CharClass::quote) return word.substr(1, word.size() - 2);
  return word;
}

int compare(const std::string& a, const std::string& b) {
  long long x = 0;
  long long y = 0;
  const auto number = [](const std::string& text, long long& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
  };
  if (number(a, x) && number(b, y)) return x < y ? -1 : x > y ? 1 : 0;
  return a.compare(b);
}

/// The words of one condition and how far they have been read.
class Reader {
 public:
  Reader(std::string_view text, const Constants& constants) : m_words(wordsOf(text)), m_constants(constants) {}

  // Operators wait on a stack, so depth costs memory only.
  bool evaluate() {
    while (m_at < m_words.size()) {
      const std::string& word = m_words[m_at];
      if (word == "NOT" || word == "(") {
        m_operators.push_back(word == "(" ? '(' : '!');
        ++m_at;
      } else if (word == ")") {
        reduceTo(0);
        if (!m_operators.empty()) m_operators.pop_back();
        reduceNot();
        ++m_at;
      } else if (word == "AND" || word == "OR") {
        const char sign = word == "AND" ? '&' : '|';
        reduceTo(sign == '&' ? 2 : 1);
        m_operators.push_back(sign);
        ++m_at;
      } else {
        m_values.push_back(primary());
        reduceNot();
      }
    }
    while (!m_operators.empty()) {
      reduceTo(0);
      if (!m_operators.empty()) m_operators.pop_back();
    }
    return !m_values.empty() && m_values.back();
  }

 private:
  static int strength(char sign) { return sign == '&' ? 2 : sign == '|' ? 1 : sign == '!' ? 3 : -1; }

  void reduceNot() {
    while (!m_operators.empty() && m_operators.back() == '!' && !m_values.empty()) {
      m_values.back() = !m_values.back();
      m_operators.pop_back();
    }
  }

  void reduceTo(int least) {
    while (!m_operators.empty() && strength(m_operators.back()) >= std::max(least, 1)) {
      const char sign = m_operators.back();
      m_operators.pop_back();
      if (sign == '!') {
        if (!m_values.empty()) m_values.back() = !m_values.back();
      } else if (m_values.size() >= 2) {
        const bool right = m_values.back();
        m_values.pop_back();
        m_values.back() = sign == '&' ? m_values.back() && right : m_values.back() || right;
      }
    }
  }

  bool next(std::string_view word) {
    if (m_at >= m_words.size() || m_words[m_at] != word) return false;
    ++m_at;
    return true;
  }

  // Nothing: the constant is not known.
  std::optional<std::string> operand() {
    if (m_at >= m_words.size()) return std::nullopt;
    const std::string word = m_words[m_at++];
    if (charClass(word[0]) == CharClass::quote || isDigit(word[0])) return unquoted(word);
    const auto found = m_constants.find(word);
    if (found == m_constants.end()) return std::nullopt;
    return found->second;
  }

  bool primary() {
    const std::optional<std::string> left = operand();
    next("IS");
    const bool negated = next("NOT");
    if (next("DEFINED") || next("SET")) return left.has_value() != negated;
    bool less = false;
    bool equal = false;
    bool greater = false;
    if (next("=") || next("EQUAL"))
      equal = true;
    else if (next("<") || next("LESS"))
      less = true;
    else if (next(">") || next("GREATER"))
      greater = true;
    else if (next("<="))
      less = equal = true;
    else if (next(">="))
      greater = equal = true;
    else if (next("<>"))
      less = greater = true;
    else
      return (left && *left != "0" && *left != "FALSE") != negated;
    next("TO");
    next("THAN");
    if (next("OR")) {
      next("EQUAL");
      next("TO");
      equal = true;
    }
    const std::optional<std::string> right = operand();
    if (!left || !right) return false;
    const int order = compare(*left, *right);
    return ((order < 0 && less) || (order == 0 && equal) || (order > 0 && greater)) != negated;
  }

  std::vector<std::string> m_words;
  const Constants& m_constants;
  std::size_t m_at = 0;
  std::vector<bool> m_values;
  std::vector<char> m_operators;
};

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && (isBlank(text.back()) || text.back() == '.'))
    text.remove_suffix(1);
  return text;
}

// The name and what is said of its value.
std::vector<std::string> definitionWords(std::string_view text) {
  std::vector<std::string> words = wordsOf(text);
  std::erase_if(words, [](const std::string& word) {
    return word == "AS" || word == "CONSTANT" || word == "OVERRIDE" || word == "IS" || word == "(" || word == ")";
  });
  return words;
}

} // namespace

bool holdsCondition(std::string_view condition, const Constants& constants) {
  return Reader(condition, constants).evaluate();
}

void Conditions::enter(Level level) {
  m_inactive += !level.active;
  m_levels.push_back(std::move(level));
}

void Conditions::branch(bool holds) {
  if (m_levels.empty()) return;
  Level& level = m_levels.back();
  m_inactive -= !level.active;
  level.active = holds && !level.taken;
  level.taken = level.taken || holds;
  m_inactive += !level.active;
}

void Conditions::leave() {
  if (m_levels.empty()) return;
  m_inactive -= !m_levels.back().active;
  m_levels.pop_back();
}

std::optional<Conditions::Definition> Conditions::definitionOf(std::string_view directive) {
  const std::size_t wordEnd = std::min(directive.find_first_of(" \t"), directive.size());
  const std::string_view word = directive.substr(0, wordEnd);
  if (word != "DEFINE" && word != "CONSTANT") return std::nullopt;
  const std::vector<std::string> words = definitionWords(trimmed(directive.substr(wordEnd)));
  if (words.empty() || (words.size() > 1 && words[1] == "OFF")) return std::nullopt;
  const bool told = words.size() == 2 && words[1] != "PARAMETER";
  return Definition{directive.substr(directive.find(words[0], wordEnd), words[0].size()), told ? words[1] : ""};
}

// `DEFINE A AS 1`, `DEFINE A 1 OVERRIDE`, `DEFINE A AS PARAMETER`, `DEFINE A OFF`
void Conditions::define(std::string_view text) {
  const std::vector<std::string> words = definitionWords(text);
  if (words.empty()) return;
  if (words.size() == 1)
    m_constants.insert_or_assign(words[0], std::string(1, '1'));
  else if (words[1] == "OFF")
    m_constants.erase(words[0]);
  else if (words[1] != "PARAMETER")
    m_constants[words[0]] = unquoted(words[1]);
}

bool Conditions::holdsWhen(const std::string& subject, std::string_view text) const {
  if (subject.empty() || subject == "TRUE") return holdsCondition(text, m_constants);
  const std::vector<std::string> words = wordsOf(text);
  if (words.size() >= 3 && (words[1] == "THRU" || words[1] == "THROUGH")) {
    std::string range = subject;
    range.append(" >= ").append(words[0]).append(" AND ").append(subject).append(" <= ").append(words[2]);
    return holdsCondition(range, m_constants);
  }
  std::string equality = subject;
  equality.append(" = ").append(text);
  return holdsCondition(equality, m_constants);
}

Conditions::Outcome Conditions::take(std::string_view directive) {
  const std::size_t wordEnd = std::min(directive.find_first_of(" \t\"'("), directive.size());
  const std::string_view word = trimmed(directive.substr(0, wordEnd));
  const std::string_view rest = trimmed(directive.substr(wordEnd));
  if (word == "IF") {
    enter({});
    branch(holdsCondition(rest, m_constants));
  } else if (word == "ELIF" || word == "ELSE-IF") {
    branch(holdsCondition(rest, m_constants));
  } else if (word == "ELSE") {
    branch(true);
  } else if (word == "END-IF" || word == "END" || word == "END-EVALUATE") {
    leave();
  } else if (word == "EVALUATE") {
    Level level;
    level.evaluate = true;
    level.subject = rest;
    enter(std::move(level));
  } else if (word == "WHEN") {
    if (!m_levels.empty()) branch(rest == "OTHER" || holdsWhen(m_levels.back().subject, rest));
  } else if (word == "DEFINE" || word == "CONSTANT") {
    if (m_inactive == 0) define(rest);
  } else {
    return Outcome::otherDirective;
  }
  return Outcome::done;
}

} // namespace cobol
