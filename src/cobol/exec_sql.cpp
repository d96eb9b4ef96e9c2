// EXEC SQL: host variables and their direction. Only names behind a colon are data names.
#include <algorithm>
#include <string_view>
#include <vector>

#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

constexpr std::size_t kPairsPerStatement = 4096;

enum class Command : std::uint8_t { other, select, assign, call, prepare, insert };

Command commandOf(std::string_view word) {
  if (word == "SELECT" || word == "FETCH" || word == "VALUES" || word == "DESCRIBE" || word == "EXECUTE" ||
      word == "WITH" || word == "DECLARE") {
    return Command::select;
  }
  if (word == "SET" || word == "GET") return Command::assign;
  if (word == "CALL") return Command::call;
  if (word == "PREPARE") return Command::prepare;
  return word == "INSERT" || word == "MERGE" ? Command::insert : Command::other;
}

/// Host variables of one statement, or of one assignment of SET.
struct Ways {
  std::vector<Operand> inputs;
  std::vector<Operand> outputs;

  void relate(StatementReader& r) {
    if (inputs.size() * outputs.size() <= kPairsPerStatement) {
      for (const Operand& input : inputs) {
        for (const Operand& output : outputs)
          r.relate(RelationKind::ExecKey, input, output);
      }
    }
    inputs.clear();
    outputs.clear();
  }
};

/// Follows the words of one statement and tells which way a host variable goes at each place.
class Direction {
 public:
  explicit Direction(Command command) : m_command(command) {}

  void word(std::string_view text) {
    if (text == "INDICATOR" || text == "DESCRIPTOR") return;
    if (text == "CONNECTION") m_leftSide = false; // SET CONNECTION :NAME assigns nothing
    m_intoList = text == "INTO" && m_command != Command::insert;
  }
  void symbol(char c) {
    if (c == '(') ++m_depth;
    if (c == ')') --m_depth;
    if (c == '=') m_leftSide = false;
    if (c == ',' && m_depth == 0) m_leftSide = true;
  }
  Access access() const {
    if (m_intoList) return m_command == Command::prepare ? Access::both : Access::write;
    if (m_command == Command::assign && m_leftSide) return Access::write;
    if (m_command == Command::call && m_depth > 0) return Access::both;
    return Access::read;
  }
  bool beginsAssignment(char c) const { return m_command == Command::assign && c == ',' && m_depth == 0; }

 private:
  Command m_command;
  bool m_intoList = false;
  bool m_leftSide = true;
  int m_depth = 0;
};

} // namespace

void readExecSql(StatementReader& r) {
  Direction direction(commandOf(r.text(r.token())));
  Ways ways;
  while (!r.atEnd()) {
    const Token& t = r.token();
    if (t.kind == TokenKind::word && t.has(TokenFlag::hostMark)) {
      const Operand host = r.hostVariable();
      const Access access = direction.access();
      r.touch(host, access);
      // What a procedure makes of its arguments is its own affair, as with CALL.
      if (access == Access::read) ways.inputs.push_back(host);
      if (access == Access::write) ways.outputs.push_back(host);
      continue;
    }
    if (t.kind == TokenKind::word) {
      direction.word(r.text(t));
    } else if (t.kind == TokenKind::symbol && r.text(t).size() == 1) {
      const char symbol = r.text(t).front();
      if (direction.beginsAssignment(symbol)) ways.relate(r);
      direction.symbol(symbol);
    }
    r.advance();
  }
  ways.relate(r);
}

} // namespace cobol
