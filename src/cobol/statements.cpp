#include "cobol/statements.hpp"

#include <array>
#include <utility>

#include "cobol/statement_reader.hpp"

namespace cobol {

namespace {

constexpr std::pair<Keyword, StatementHandler> kVerbs[] = {
    {Keyword::Accept, readAccept},
    {Keyword::Add, readAdd},
    {Keyword::Allocate, readAllocate},
    {Keyword::Alter, readNothing},
    {Keyword::Call, readCall},
    {Keyword::Cancel, readCancel},
    {Keyword::Chain, readCall},
    {Keyword::Close, readOpenOrClose},
    {Keyword::Commit, readNothing},
    {Keyword::Compute, readCompute},
    {Keyword::Continue, readContinue},
    {Keyword::Delete, readDelete},
    {Keyword::Disable, readSend},
    {Keyword::Display, readDisplay},
    {Keyword::Divide, readDivide},
    {Keyword::Enable, readSend},
    {Keyword::Enter, readNothing},
    {Keyword::Entry, readEntry},
    {Keyword::Evaluate, readEvaluate},
    {Keyword::Examine, readTransform},
    {Keyword::Exec, readExec},
    {Keyword::Execute, readExec},
    {Keyword::Exhibit, readDisplay},
    {Keyword::Exit, readExit},
    {Keyword::Free, readFree},
    {Keyword::Generate, readNamed},
    {Keyword::Go, readGo},
    {Keyword::Goback, readExit},
    {Keyword::If, readIf},
    {Keyword::Initialize, readInitialize},
    {Keyword::Initiate, readNamed},
    {Keyword::Inspect, readInspect},
    {Keyword::Invoke, readInvoke},
    {Keyword::Json, readJson},
    {Keyword::Merge, readSort},
    {Keyword::Move, readMove},
    {Keyword::Multiply, readMultiply},
    {Keyword::Open, readOpenOrClose},
    {Keyword::Perform, readPerform},
    {Keyword::Purge, readNothing},
    {Keyword::Read, readRead},
    {Keyword::Ready, readNothing},
    {Keyword::Receive, readReceive},
    {Keyword::Release, readWrite},
    {Keyword::Reset, readNothing},
    {Keyword::Return, readRead},
    {Keyword::Rewrite, readWrite},
    {Keyword::Rollback, readNothing},
    {Keyword::Search, readSearch},
    {Keyword::Send, readSend},
    {Keyword::Service, readNothing},
    {Keyword::Set, readSet},
    {Keyword::Sort, readSort},
    {Keyword::Start, readStart},
    {Keyword::Stop, readStop},
    {Keyword::String, readString},
    {Keyword::Subtract, readSubtract},
    {Keyword::Suppress, readNothing},
    {Keyword::Terminate, readNamed},
    {Keyword::Transform, readTransform},
    {Keyword::Unlock, readOpenOrClose},
    {Keyword::Unstring, readUnstring},
    {Keyword::Use, readUse},
    {Keyword::Write, readWrite},
    {Keyword::Xml, readXml},
};

constexpr WordClass kClasses[] = {
    WordClass::none,
#define WORD(name, text, kind) WordClass::kind,
#include "cobol/keyword_table.inc"
#undef WORD
};

constexpr Keyword kSoftVerbs[] = {
    Keyword::Allocate, Keyword::Chain,     Keyword::Commit,  Keyword::Destroy,  Keyword::Disable,
    Keyword::Enable,   Keyword::Enter,     Keyword::Examine, Keyword::Exhibit,  Keyword::Free,
    Keyword::Json,     Keyword::Modify,    Keyword::Purge,   Keyword::Raise,    Keyword::Ready,
    Keyword::Receive,  Keyword::Reset,     Keyword::Resume,  Keyword::Rollback, Keyword::Send,
    Keyword::Service,  Keyword::Transform, Keyword::Unlock,  Keyword::Validate, Keyword::Xml,
};

constexpr Keyword kPhraseWords[] = {
    Keyword::Next,      Keyword::Not,      Keyword::On,  Keyword::At,        Keyword::Size, Keyword::Invalid,
    Keyword::Exception, Keyword::Overflow, Keyword::End, Keyword::EndOfPage, Keyword::Eop,
};

constexpr std::array<Ending, keywordCount()> makeEndings() {
  std::array<Ending, keywordCount()> endings{};
  for (NameId id = 0; id < keywordCount(); ++id) {
    if (kClasses[id] == WordClass::verb) endings[id] = Ending::verb;
    if (kClasses[id] == WordClass::terminator) endings[id] = Ending::closer;
  }
  for (const Keyword word : kSoftVerbs)
    endings[idOf(word)] = Ending::softVerb;
  for (const Keyword word : kPhraseWords)
    endings[idOf(word)] = Ending::phrase;
  endings[idOf(Keyword::Else)] = endings[idOf(Keyword::When)] = Ending::closer;
  return endings;
}

constexpr std::array<StatementHandler, keywordCount()> makeHandlers() {
  std::array<StatementHandler, keywordCount()> handlers{};
  for (const auto& [verb, handler] : kVerbs)
    handlers[idOf(verb)] = handler;
  return handlers;
}

} // namespace

constexpr std::array<Ending, keywordCount()> kEndings = makeEndings();
constexpr std::array<StatementHandler, keywordCount()> kHandlers = makeHandlers();

} // namespace cobol
