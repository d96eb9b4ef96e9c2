#include "cobol/data_entry.hpp"

// Clauses that only entries of the report and the screen section have.

namespace cobol {
namespace {

using Role = DataReference::Role;

} // namespace

void DataEntryReader::useNameOrNumber(Role role) {
  if (m_cursor.isWord()) return useName(role);
  if (m_cursor.kind() == TokenKind::number || m_cursor.kind() == TokenKind::literal) m_cursor.next();
}

/// Names of an arithmetic expression, up to the first word that has a meaning of its own.
void DataEntryReader::expression(Role role) {
  while (!m_cursor.atEnd() && !m_cursor.isPeriod()) {
    if (m_cursor.isWord()) {
      if (m_cursor.word() == Word::function) {
        m_cursor.next();
        if (m_cursor.isWord()) m_cursor.next();
        continue;
      }
      if (m_cursor.word() != Word::none) return;
      useName(role);
    } else if (m_cursor.kind() == TokenKind::symbol || m_cursor.kind() == TokenKind::number) {
      m_cursor.next();
    } else {
      return;
    }
  }
}

void DataEntryReader::columnClause() {
  DataEntry& entry = *m_entry;
  m_cursor.next();
  entry.hasColumn = true;
  while (m_cursor.text() == "NUMBER" || m_cursor.text() == "NUMBERS" || m_cursor.word() == Word::is ||
         m_cursor.word() == Word::left || m_cursor.word() == Word::right || m_cursor.text() == "CENTER")
    m_cursor.next();
  entry.isColumnRelative = m_cursor.take(Word::plus);
  if (m_cursor.isSymbol("+")) {
    entry.isColumnRelative = true;
    m_cursor.next();
  }
}

bool DataEntryReader::reportClause(Word word) {
  DataEntry& entry = *m_entry;
  switch (word) {
  case Word::column:
    columnClause();
    entry.column = m_cursor.takeInteger().value_or(0);
    while (m_cursor.takeInteger()) {
    }
    return true;
  case Word::line:
  case Word::lines:
    m_cursor.next();
    entry.hasLine = true;
    while (!m_cursor.atEnd() &&
           (m_cursor.text() == "NUMBER" || m_cursor.word() == Word::is || m_cursor.word() == Word::plus ||
            m_cursor.kind() == TokenKind::number || m_cursor.kind() == TokenKind::symbol))
      m_cursor.next();
    return true;
  case Word::type:
    // TYPE [IS] CONTROL HEADING name, CH name …
    m_cursor.next();
    m_cursor.take(Word::is);
    while (!m_cursor.atEnd() && !m_cursor.isPeriod()) {
      const auto text = m_cursor.text();
      if (text == "FOR" || text == "OR" || text == "REPORT" || text == "PAGE" || text == "CONTROL" ||
          text == "DETAIL" || text == "HEADING" || text == "FOOTING" || text == "FINAL" || text == "RH" ||
          text == "PH" || text == "CH" || text == "DE" || text == "CF" || text == "PF" || text == "RF") {
        m_cursor.next();
      } else {
        break;
      }
    }
    if (m_cursor.isWord() && m_cursor.word() == Word::none) useName(Role::reportControl);
    return true;
  case Word::source:
    m_cursor.next();
    if (m_cursor.text() == "SOURCES") m_cursor.next();
    m_cursor.take(Word::is);
    expression(Role::reportSource);
    return true;
  case Word::sum:
    m_cursor.next();
    m_cursor.take(Word::of);
    expression(Role::reportSum);
    return true;
  case Word::upon:
    m_cursor.next();
    while (m_cursor.isWord() && m_cursor.word() == Word::none)
      m_cursor.next();
    return true;
  case Word::reset:
    m_cursor.next();
    m_cursor.take(Word::on);
    if (!m_cursor.take(Word::final)) useName(Role::reportControl);
    return true;
  case Word::next:
  case Word::group:
    m_cursor.next();
    return true;
  case Word::present:
    // PRESENT WHEN condition: its names are read
    m_cursor.next();
    m_cursor.take(Word::when);
    do {
      expression(Role::reportCondition);
    } while (m_cursor.take(Word::is));
    return true;
  default:
    return false;
  }
}

bool DataEntryReader::screenClause(Word word) {
  switch (word) {
  case Word::line:
  case Word::lines:
  case Word::column:
  case Word::size:
  case Word::foreground:
  case Word::background:
  case Word::attribute: {
    if (word == Word::line && m_cursor.kind(1) == TokenKind::period) return false;
    columnClause();
    m_entry->hasColumn = false;
    if (m_cursor.isSymbol("-")) m_cursor.next();
    if (m_cursor.kind() == TokenKind::number || (m_cursor.isWord() && m_cursor.word() == Word::none))
      useNameOrNumber(Role::screenAttribute);
    return true;
  }
  case Word::from:
    m_cursor.next();
    useNameOrNumber(Role::screenFrom);
    return true;
  case Word::to:
    m_cursor.next();
    useName(Role::screenTo);
    return true;
  case Word::using_:
    m_cursor.next();
    useName(Role::screenUsing);
    return true;
  case Word::blank:
    // BLANK SCREEN and BLANK LINE clear; BLANK WHEN ZERO edits.
    if (m_cursor.word(1) != Word::screen && m_cursor.word(1) != Word::line) return false;
    m_cursor.next();
    m_cursor.next();
    return true;
  default:
    return false;
  }
}

} // namespace cobol
