#pragma once

#include <array>

#include "cobol/keywords.hpp"

namespace cobol {

class StatementReader;

/// What a word does to the statement before it.
enum class Ending : std::uint8_t {
  none,     ///< nothing: it belongs to the statement
  verb,     ///< begins the next one
  closer,   ///< ends it: a scope terminator, ELSE, WHEN
  softVerb, ///< a verb that only some compilers reserve: a declaration makes a name of it
  phrase,   ///< may begin a conditional phrase, such as ON SIZE ERROR, or NEXT SENTENCE: the next words tell
};
extern const std::array<Ending, keywordCount()> kEndings;
inline Ending endingOf(NameId id) {
  return id < keywordCount() ? kEndings[id] : Ending::none;
}

/// Reads one statement; the verb is the token before. What it leaves before the boundary was not understood.
using StatementHandler = void (*)(StatementReader&);

/// The handler of a verb; null for words that begin no statement the analyser knows.
extern const std::array<StatementHandler, keywordCount()> kHandlers;
inline StatementHandler handlerOf(Keyword verb) {
  return kHandlers[idOf(verb)];
}

void readMove(StatementReader&);
void readInitialize(StatementReader&);
void readSet(StatementReader&);

void readAdd(StatementReader&);
void readSubtract(StatementReader&);
void readMultiply(StatementReader&);
void readDivide(StatementReader&);
void readCompute(StatementReader&);

void readIf(StatementReader&);
void readEvaluate(StatementReader&);
void readWhen(StatementReader&); ///< WHEN of EVALUATE or SEARCH
void readPerform(StatementReader&);
void readSearch(StatementReader&);
void readGo(StatementReader&);
void readStop(StatementReader&);
void readExit(StatementReader&);
void readUse(StatementReader&);
/// Statements that name no data: CONTINUE, ALTER, GOBACK …
void readContinue(StatementReader&);
void readNothing(StatementReader&);
/// Passes over the statement; names in it are only named.
void readNamed(StatementReader&);

void readString(StatementReader&);
void readUnstring(StatementReader&);
void readInspect(StatementReader&);
void readTransform(StatementReader&);
void readJson(StatementReader&);
void readXml(StatementReader&);

void readAccept(StatementReader&);
void readDisplay(StatementReader&);
void readOpenOrClose(StatementReader&);
void readRead(StatementReader&);
void readWrite(StatementReader&);
void readStart(StatementReader&);
void readDelete(StatementReader&);
void readReceive(StatementReader&);
void readSend(StatementReader&);

void readCall(StatementReader&);
void readCancel(StatementReader&);
void readEntry(StatementReader&);
void readInvoke(StatementReader&);
void readAllocate(StatementReader&);
void readFree(StatementReader&);
/// USING and RETURNING of PROCEDURE DIVISION, of the program that is read.
void readProcedureHeader(StatementReader&);

void readSort(StatementReader&);

/// From EXEC to END-EXEC, wherever it stands.
void readExec(StatementReader&);
void readExecSql(StatementReader&);
void readExecCics(StatementReader&);
void readExecDli(StatementReader&);

} // namespace cobol
