// CALL, CANCEL, ENTRY, INVOKE, ALLOCATE, FREE and the header of the procedure division
#include <string>

#include "cobol/statement_reader.hpp"

#include "cobol/characters.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

/// `SIZE 4`: how many bytes a value is handed over in.
bool acceptSize(StatementReader& r) {
  if (!r.accept(Keyword::Size)) return false;
  if (r.token().kind == TokenKind::number) r.advance();
  return true;
}

/// The arguments behind USING: how each is handed over holds until the next BY.
void arguments(StatementReader& r, const std::string& program) {
  Access access = Access::both;
  int k = 0;
  while (!r.atBoundary() && !r.at(Keyword::Returning) && !r.at(Keyword::Giving)) {
    if (r.accept(Keyword::By) || acceptSize(r)) continue;
    if (r.accept(Keyword::Reference)) {
      access = Access::both;
    } else if (r.at(Keyword::Content) || r.at(Keyword::Value)) {
      r.advance();
      access = Access::read;
    } else if (r.accept(Keyword::Omitted)) {
      ++k;
    } else if (r.atOperand()) {
      ++k;
      const std::uint32_t before = r.index();
      if (r.atFunction()) {
        r.primary();
        continue;
      }
      if (!r.resolver().isDeclared(r.token().text) && r.resolver().findFile(r.token().text) >= 0) {
        r.advance();
        continue;
      }
      const Operand argument = r.read(access);
      if (argument.isItem()) {
        r.relate(RelationKind::Argument, argument, r.operandOf(r.resolver().callSlot(program, k, before), before));
      }
      if (r.index() == before) return;
    } else if (r.at(Keyword::Delimited) || r.at(Keyword::Unsigned)) {
      r.advance();
    } else {
      return;
    }
  }
}

void returning(StatementReader& r, const std::string& program) {
  if (!r.at(Keyword::Returning) && !r.at(Keyword::Giving)) return;
  r.advance();
  r.accept(Keyword::Into);
  const Operand result = r.read(Access::write);
  if (!result.isItem()) return;
  const Operand slot = r.operandOf(r.resolver().callSlot(program, 0, result.token), result.token);
  r.relate(RelationKind::Argument, slot, result);
}

void parameters(StatementReader& r, const std::string& program) {
  int k = 0;
  while (!r.atBoundary() && !r.at(Keyword::Returning) && !r.at(Keyword::Giving)) {
    if (r.at(Keyword::By) || r.at(Keyword::Reference) || r.at(Keyword::Value) || r.at(Keyword::Optional) ||
        r.at(Keyword::Unsigned) || r.at(Keyword::Content)) {
      r.advance();
      continue;
    }
    if (acceptSize(r)) continue;
    if (!r.atOperand()) return;
    const std::uint32_t before = r.index();
    const Operand item = r.read(Access::both);
    ++k;
    r.relate(RelationKind::Parameter, item, r.operandOf(r.resolver().callSlot(program, k, before), before));
    if (r.index() == before) return;
  }
}

void entry(StatementReader& r, const std::string& program) {
  if (r.accept(Keyword::Using) || r.accept(Keyword::Chaining)) parameters(r, program);
  if (r.at(Keyword::Returning) || r.at(Keyword::Giving)) {
    r.advance();
    const Operand result = r.read(Access::write);
    if (result.isItem()) {
      r.relate(RelationKind::Parameter, result,
               r.operandOf(r.resolver().callSlot(program, 0, result.token), result.token));
    }
  }
}

/// The name a literal or identifier calls, `?` when only running tells; the place is noted.
std::string calledName(StatementReader& r) {
  const bool isConvention = r.token().kind == TokenKind::word && r.token(1).kind == TokenKind::literal;
  if (isConvention) r.advance();
  if (r.token().kind != TokenKind::literal) {
    if (r.atName()) r.addPlace("CALL", r.text(r.token()), r.index());
    r.read(Access::read);
    return "?";
  }
  std::string name = upper(r.text(r.token()));
  while (!name.empty() && name.back() == ' ')
    name.pop_back();
  r.addPlace("CALL", name, r.index());
  r.operand();
  return name;
}

} // namespace

void readCall(StatementReader& r) {
  const std::string program = calledName(r);
  if (r.accept(Keyword::Using)) arguments(r, program);
  returning(r, program);
}

void readCancel(StatementReader& r) {
  while (r.atOperand()) {
    const std::uint32_t before = r.index();
    r.read(Access::read);
    if (r.index() == before) return;
  }
}

void readEntry(StatementReader& r) {
  const std::string name = upper(r.text(r.token()));
  if (r.atConstant()) r.operand();
  entry(r, name);
}

void readInvoke(StatementReader& r) {
  r.read(Access::read, Demand::declared);
  if (r.atConstant()) {
    r.operand();
  } else if (r.atName()) {
    r.read(Access::read, Demand::declared);
  } else {
    r.skip({Keyword::New, Keyword::Self, Keyword::Super});
    if (r.atConstant()) r.operand();
  }
  if (r.accept(Keyword::Using)) arguments(r, "?");
  if (r.at(Keyword::Returning) || r.at(Keyword::Giving)) {
    r.advance();
    r.read(Access::write);
  }
}

void readAllocate(StatementReader& r) {
  const Operand allocated = r.operand();
  const bool isSize = r.at(Keyword::Characters) || allocated.sort == Operand::Sort::literal;
  r.touch(allocated, isSize ? Access::read : Access::write);
  r.skip({Keyword::Characters, Keyword::Initialized});
  if (r.accept(Keyword::Returning)) {
    const Operand pointer = r.read(Access::write);
    if (!isSize) r.relate(RelationKind::Pointer, allocated, pointer);
  }
}

void readFree(StatementReader& r) {
  r.readAll(Access::write);
}

void readProcedureHeader(StatementReader& r) {
  entry(r, r.analysis().programs[static_cast<std::size_t>(r.resolver().program())].name);
  while (!r.atBoundary())
    r.advance();
}

} // namespace cobol
