#include "cobol/data_entry.hpp"

#include <array>

#include "cobol/characters.hpp"

namespace cobol {
namespace {

using Role = DataReference::Role;

constexpr auto kIsLevel = [] {
  std::array<bool, 100> result{};
  for (std::size_t level = 1; level < 50; ++level)
    result[level] = true;
  result[66] = result[77] = result[78] = result[88] = true;
  return result;
}();

int levelOf(std::string_view text) {
  if (text.size() != 1 && text.size() != 2) return 0;
  const auto digit = [](char c) { return static_cast<unsigned>(c) - '0'; };
  const unsigned tens = text.size() == 2 ? digit(text.front()) : 0, ones = digit(text.back());
  return tens < 10 && ones < 10 && kIsLevel[tens * 10 + ones] ? static_cast<int>(tens * 10 + ones) : 0;
}

Usage usageOf(Word word) {
  switch (word) {
  case Word::display:
    return Usage::display;
  case Word::comp:
    return Usage::comp;
  case Word::comp1:
    return Usage::comp1;
  case Word::comp2:
    return Usage::comp2;
  case Word::comp3:
    return Usage::comp3;
  case Word::comp5:
    return Usage::comp5;
  case Word::comp6:
    return Usage::comp6;
  case Word::compX:
    return Usage::compX;
  case Word::index:
    return Usage::index;
  case Word::pointer:
    return Usage::pointer;
  case Word::pointer32:
    return Usage::pointer32;
  case Word::functionPointer:
    return Usage::functionPointer;
  case Word::procedurePointer:
    return Usage::procedurePointer;
  case Word::programPointer:
    return Usage::programPointer;
  case Word::national:
    return Usage::national;
  case Word::display1:
    return Usage::display1;
  case Word::utf8:
    return Usage::utf8;
  case Word::bit:
    return Usage::bit;
  case Word::binaryChar:
    return Usage::binaryChar;
  case Word::binaryShort:
    return Usage::binaryShort;
  case Word::binaryLong:
    return Usage::binaryLong;
  case Word::binaryDouble:
    return Usage::binaryDouble;
  case Word::floatExtended:
    return Usage::floatExtended;
  case Word::floatBinary32:
    return Usage::floatBinary32;
  case Word::floatBinary64:
    return Usage::floatBinary64;
  case Word::floatBinary128:
    return Usage::floatBinary128;
  case Word::floatDecimal16:
    return Usage::floatDecimal16;
  case Word::floatDecimal34:
    return Usage::floatDecimal34;
  default:
    return Usage::none;
  }
}

} // namespace

void DataEntry::clear() {
  static_cast<DataClauses&>(*this) = {};
  sqlType.clear();
  indexNames.clear();
  uses.clear();
}

inline int DataEntryReader::level() const {
  return m_cursor.kind() == TokenKind::number ? levelOf(m_cursor.text()) : 0;
}

/// Inside an entry: a level number first on its line, followed by something that begins an entry.
inline bool DataEntryReader::atNewEntry() const {
  if (!m_cursor.token().has(lineStart) || level() == 0) return false;
  const Token& following = m_cursor.token(1);
  if (following.kind != TokenKind::word || following.has(inExec)) return false;
  const Word word = m_cursor.word(1);
  return word == Word::none || word == Word::filler || word == Word::pic;
}

bool DataEntryReader::beginsNameless(Word word) const {
  switch (word) {
  case Word::filler:
  case Word::redefines:
  case Word::pic:
  case Word::usage:
  case Word::occurs:
  case Word::value:
  case Word::values:
  case Word::synchronized_:
  case Word::justified:
  case Word::blank:
  case Word::sign:
  case Word::groupUsage:
  case Word::external:
  case Word::global:
  case Word::is:
  case Word::sameAs:
    return true;
  case Word::line:
  case Word::column:
  case Word::type:
  case Word::source:
  case Word::sum:
  case Word::nextGroup:
  case Word::next:
  case Word::present:
  case Word::group:
  case Word::from:
  case Word::to:
  case Word::using_:
  case Word::foreground:
  case Word::background:
  case Word::attribute:
    return m_section == Section::report || m_section == Section::screen;
  default:
    return usageOf(word) != Usage::none;
  }
}

/// PIC and the character string right behind it: the commonest clause, which nothing else begins like.
inline bool DataEntryReader::takePlainPicture() {
  if (m_cursor.word() != Word::pic || m_cursor.kind(1) != TokenKind::picture) return false;
  m_cursor.next();
  m_entry->picture = m_cursor.index();
  m_cursor.next();
  return true;
}

bool DataEntryReader::takePicture() {
  if (!m_cursor.take(Word::pic)) return false;
  m_cursor.take(Word::is);
  if (m_cursor.kind() == TokenKind::picture) {
    m_entry->picture = m_cursor.index();
    m_cursor.next();
  }
  return true;
}

bool DataEntryReader::read(Section section, DataEntry& entry) {
  const int number = level();
  if (number == 0) return false;
  entry.clear();
  m_entry = &entry;
  m_section = section;
  entry.level = number;
  entry.levelToken = entry.nameToken = m_cursor.index();
  m_cursor.next();
  const Word word = m_cursor.word();
  if (word == Word::filler) {
    m_cursor.next();
  } else if (m_cursor.isWord() && (word == Word::none || !beginsNameless(word))) {
    entry.nameToken = m_cursor.index();
    entry.isNamed = true;
    m_cursor.next();
  }
  while (!m_cursor.atEnd() && !m_cursor.isPeriod()) {
    if (takePlainPicture()) continue;
    const Token& token = m_cursor.token();
    const bool header = m_cursor.word(1) == Word::section || m_cursor.word(1) == Word::division ||
                        (token.has(areaA) && (m_cursor.word() == Word::fd || m_cursor.word() == Word::sd));
    if (header || atNewEntry() || (token.kind == TokenKind::word && token.has(inExec))) {
      m_diagnostics.add(Code::PeriodMissing, Severity::warning, token.position(), "period missing before this word");
      return true;
    }
    if (!takePicture()) clause();
  }
  m_cursor.skipPeriod();
  return true;
}

void DataEntryReader::clause() {
  const Word word = m_cursor.word();
  if (m_section == Section::report && reportClause(word)) return;
  if (m_section == Section::screen && screenClause(word)) return;
  commonClause(word);
}

void DataEntryReader::commonClause(Word word) {
  DataEntry& entry = *m_entry;
  switch (word) {
  case Word::redefines:
    m_cursor.next();
    if (const auto name = m_cursor.takeName()) entry.redefines = *name;
    return;
  case Word::renames:
    m_cursor.next();
    entry.renamesFirst = m_cursor.takeName().value_or(0);
    if (m_cursor.take(Word::through)) entry.renamesLast = m_cursor.takeName().value_or(0);
    return;
  case Word::usage:
    m_cursor.next();
    return usageClause();
  case Word::groupUsage:
    m_cursor.next();
    m_cursor.take(Word::is);
    return usageClause();
  case Word::sign:
  case Word::leading:
  case Word::trailing:
    return signClause();
  case Word::synchronized_:
    m_cursor.next();
    entry.set(synchronized_);
    if (!m_cursor.take(Word::left)) m_cursor.take(Word::right);
    return;
  case Word::justified:
    m_cursor.next();
    entry.set(justified);
    m_cursor.take(Word::right);
    return;
  case Word::blank:
    m_cursor.next();
    m_cursor.take(Word::when);
    if (m_cursor.take(Word::zero)) entry.set(blankWhenZero);
    return;
  case Word::global:
    m_cursor.next();
    entry.set(global);
    return;
  case Word::external:
    m_cursor.next();
    entry.set(external);
    if (m_cursor.take(Word::as) && m_cursor.kind() == TokenKind::literal) m_cursor.next();
    return;
  case Word::occurs:
    return occursClause();
  case Word::index:
    if (m_cursor.word(1) == Word::by) break;
    [[fallthrough]];
  default:
    break;
  case Word::value:
  case Word::values:
    return valueClause();
  case Word::constant:
    return constantClause();
  case Word::typedef_:
    m_cursor.next();
    entry.isTypedef = true;
    return;
  case Word::type:
  case Word::like:
    m_cursor.next();
    m_cursor.take(Word::to);
    entry.copiedFrom = m_cursor.takeName().value_or(0);
    return;
  case Word::same:
    m_cursor.next();
    if (m_cursor.take(Word::as)) entry.copiedFrom = m_cursor.takeName().value_or(0);
    return;
  case Word::ascending:
  case Word::descending:
    return tableKeys();
  case Word::dynamic:
    m_cursor.next();
    if (m_cursor.word() != Word::length) return;
    m_cursor.next();
    entry.isDynamic = true;
    if (m_cursor.take(Word::limit)) {
      m_cursor.take(Word::is);
      m_cursor.next();
    }
    return;
  case Word::byteLength:
    m_cursor.next();
    m_cursor.take(Word::is);
    entry.byteLength = m_cursor.takeInteger().value_or(0);
    return;
  }
  if (takeUsage()) return;
  if (m_cursor.text() == "INDEXED" || word == Word::indexed) {
    m_cursor.next();
    m_cursor.take(Word::by);
    // The first word is a name, whatever else it means to some compilers.
    while (m_cursor.isWord() && (entry.indexNames.empty() || m_cursor.word() == Word::none)) {
      entry.indexNames.push_back(m_cursor.index());
      m_cursor.next();
    }
    return;
  }
  m_cursor.next();
}

void DataEntryReader::usageClause() {
  m_cursor.take(Word::is);
  if (m_cursor.word() == Word::sql) return sqlType();
  if (takeUsage()) return;
  // USAGE may name a type.
  if (m_cursor.isWord() && m_cursor.word() == Word::none) m_entry->copiedFrom = m_cursor.takeName().value_or(0);
}

bool DataEntryReader::takeUsage() {
  const Word word = m_cursor.word();
  DataEntry& entry = *m_entry;
  if (word == Word::sql && m_cursor.word(1) == Word::type) {
    sqlType();
    return true;
  }
  if (word == Word::object && m_cursor.word(1) == Word::reference) {
    m_cursor.next();
    m_cursor.next();
    entry.held.usage = Usage::objectReference;
    if (m_cursor.isWord() && m_cursor.word() == Word::none) m_cursor.next();
    return true;
  }
  const Usage usage = usageOf(word);
  if (usage == Usage::none) return false;
  entry.held.usage = usage;
  entry.held.isUnsigned = m_cursor.text().starts_with("UNSIGNED-");
  m_cursor.next();
  if (m_cursor.take(Word::unsigned_)) entry.held.isUnsigned = true;
  m_cursor.take(Word::signed_);
  if (m_cursor.word() == Word::with && m_cursor.word(1) == Word::no) m_cursor.next();
  if (m_cursor.word() == Word::no && m_cursor.word(1) == Word::sign) {
    m_cursor.next();
    m_cursor.next();
    entry.held.noSign = true;
  }
  // POINTER TO name, PROGRAM-POINTER TO name
  if (m_cursor.word() == Word::to && needsNoPicture(usage)) {
    m_cursor.next();
    m_cursor.takeName();
  }
  return true;
}

/// SQL TYPE IS BLOB(1M): a large object is a length of four bytes and its data; a reference to a file holds three
/// numbers and the file's name.
void DataEntryReader::sqlType() {
  m_cursor.next();
  m_cursor.take(Word::type);
  m_cursor.take(Word::is);
  const auto type = m_cursor.text();
  DataEntry& entry = *m_entry;
  entry.sqlType = "SQL " + std::string(type);
  std::int64_t size = 1;
  bool isLocator = false, isFile = false, isWide = false;
  const auto times = [&size](char unit) {
    size = std::min(size, std::int64_t{1} << 31) << (unit == 'K' ? 10 : unit == 'M' ? 20 : unit == 'G' ? 30 : 0);
  };
  while (!m_cursor.atEnd() && !m_cursor.isPeriod()) {
    if (m_cursor.kind() == TokenKind::number) {
      size = integerOf(m_cursor.text()).value_or(1);
    } else if (m_cursor.isWord()) {
      auto word = m_cursor.text();
      isLocator = isLocator || word == "LOCATOR" || word.ends_with("-LOCATOR");
      isFile = isFile || word.ends_with("-FILE");
      isWide = isWide || word == "DBCLOB";
      if (!word.empty() && word.front() >= '0' && word.front() <= '9') {
        size = integerOf(word.substr(0, word.size() - 1)).value_or(1);
        times(word.back());
      } else if (word == "K" || word == "M" || word == "G") {
        times(word.front());
      }
    }
    m_cursor.next();
  }
  if (isLocator) {
    entry.fixedBytes = 4;
  } else if (isFile) {
    entry.fixedBytes = 3 * 4 + 255;
  } else if (type == "ROWID") {
    entry.fixedBytes = 42;
  } else if (type == "BINARY") {
    entry.fixedBytes = size;
  } else if (type == "VARBINARY") {
    entry.fixedBytes = size + 2;
  } else {
    entry.fixedBytes = size * (isWide ? 2 : 1) + 4;
  }
}

void DataEntryReader::signClause() {
  m_cursor.take(Word::sign);
  m_cursor.take(Word::is);
  if (!m_cursor.take(Word::leading)) m_cursor.take(Word::trailing);
  m_entry->held.sign = Representation::Sign::together;
  if (!m_cursor.take(Word::separate)) return;
  m_entry->held.sign = Representation::Sign::separate;
  m_cursor.take(Word::character);
}

void DataEntryReader::occursClause() {
  DataEntry& entry = *m_entry;
  m_cursor.next();
  entry.repeats = true;
  const auto count = [&]() -> std::uint32_t {
    const bool operand = m_cursor.kind() == TokenKind::number || (m_cursor.isWord() && m_cursor.word() == Word::none);
    if (!operand) return 0;
    const auto token = m_cursor.index();
    m_cursor.next();
    return token;
  };
  if (m_cursor.take(Word::dynamic)) {
    entry.set(variableSize);
    entry.isUnbounded = true;
    if (m_cursor.take(Word::capacity)) {
      m_cursor.take(Word::in);
      m_cursor.takeName();
    }
    if (m_cursor.take(Word::from)) entry.occursFirst = count();
  } else if (m_cursor.take(Word::unbounded)) {
    entry.set(variableSize);
    entry.isUnbounded = true;
  } else {
    entry.occursFirst = count();
  }
  if (m_cursor.take(Word::to)) {
    entry.set(variableSize);
    if (m_cursor.take(Word::unbounded)) {
      entry.isUnbounded = true;
    } else {
      entry.occursLast = count();
    }
  }
  m_cursor.take(Word::times);
  if (m_cursor.take(Word::depending)) {
    m_cursor.take(Word::on);
    entry.set(variableSize);
    useName(Role::dependingOn);
  }
  if (m_cursor.take(Word::step)) m_cursor.takeInteger();
}

void DataEntryReader::tableKeys() {
  m_cursor.next();
  m_cursor.take(Word::key);
  m_cursor.take(Word::is);
  do {
    useName(Role::tableKey);
  } while (m_cursor.isWord() && m_cursor.word() == Word::none);
}

/// VALUE takes everything up to a word that begins another clause.
void DataEntryReader::valueClause() {
  DataEntry& entry = *m_entry;
  m_cursor.next();
  m_cursor.take(Word::is);
  entry.valueFrom = entry.valueTo = m_cursor.index();
  const bool many = entry.level == 88 || entry.level == 78;
  bool concatenates = false;
  for (; !m_cursor.atEnd() && !m_cursor.isPeriod(); entry.valueTo = m_cursor.index()) {
    if (m_cursor.kind() == TokenKind::literal) {
      if (entry.valueTo == entry.valueFrom) entry.valueIsLiteral = true;
      m_cursor.next();
      continue;
    }
    if (atNewEntry()) return;
    if (!m_cursor.isWord()) {
      if (m_cursor.token().has(inExec)) return;
      concatenates = m_cursor.isSymbol("&");
      m_cursor.next();
      continue;
    }
    switch (m_cursor.word()) {
    case Word::zero:
    case Word::space:
    case Word::highValue:
    case Word::lowValue:
    case Word::quote:
    case Word::null_:
    case Word::all:
    case Word::true_:
    case Word::false_:
      m_cursor.next();
      continue;
    case Word::through:
    case Word::length:
    case Word::of:
    case Word::in:
    case Word::when:
    case Word::set:
    case Word::to:
    case Word::is:
    case Word::next:
    case Word::table:
    case Word::from:
      if (!many) return;
      m_cursor.next();
      continue;
    case Word::none:
      // An alphabet's name behind IN is no constant.
      if (entry.valueTo > entry.valueFrom && !many && !concatenates) return;
      concatenates = false;
      useName(Role::valueConstant);
      continue;
    default:
      return;
    }
  }
}

/// 01 name CONSTANT [IS GLOBAL] AS value, or CONSTANT FROM name; CONSTANT RECORD is an ordinary record.
void DataEntryReader::constantClause() {
  DataEntry& entry = *m_entry;
  m_cursor.next();
  if (m_cursor.take(Word::record)) return;
  entry.isConstant = true;
  m_cursor.take(Word::is);
  if (m_cursor.take(Word::global)) entry.set(global);
  if (!m_cursor.take(Word::as) && !m_cursor.take(Word::value)) m_cursor.take(Word::from);
  m_cursor.take(Word::is);
  entry.valueFrom = m_cursor.index();
  while (!m_cursor.atEnd() && !m_cursor.isPeriod() && !atNewEntry()) {
    if (m_cursor.isWord() && m_cursor.word() == Word::none) {
      useName(Role::constantValue);
    } else {
      m_cursor.next();
    }
  }
  entry.valueTo = m_cursor.index();
}

void DataEntryReader::useName(Role role) {
  if (const auto token = m_cursor.takeName()) m_entry->uses.push_back({role, *token});
}

} // namespace cobol
