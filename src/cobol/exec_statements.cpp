// EXEC … END-EXEC of any kind
#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

void readExec(StatementReader& r) {
  const std::uint32_t outerEnd = r.end();
  std::uint32_t end = r.index();
  while (end < outerEnd && r.stream().tokens[end].has(TokenFlag::inExec) &&
         keywordOf(r.stream().tokens[end].text) != Keyword::EndExec) {
    ++end;
  }
  const Keyword language = r.keyword();
  r.open(r.index() + 1, end);
  switch (language) {
  case Keyword::Cics:
    readExecCics(r);
    break;
  case Keyword::Dli:
    readExecDli(r);
    break;
  default:
    readExecSql(r);
    break; // other languages mark their host variables with a colon, too
  }
  r.open(end, outerEnd);
  r.accept(Keyword::EndExec);
}

} // namespace cobol
