#pragma once

#include <cstdint>
#include <vector>

#include "cobol/token.hpp"

namespace cobol {

/// The words that environment and data division give a meaning. Words that mean the same share one value
/// (IS and ARE, COMP and COMPUTATIONAL, ZERO and ZEROES).
// clang-format off
enum class Word : std::uint16_t {
  none,
  // structure: first those that EventScan looks for
  identification, programId, functionId, classId, methodId, environment, data, procedure, division, section, end,
  program,
  function, class_, method, exec, cics, dli, declaratives, dfheiblk, eibtime, dibstat,
  configuration, inputOutput, fileControl, ioControl, specialNames, sourceComputer, objectComputer, repository,
  file, workingStorage, localStorage, linkage, communication, report, screen, threadLocal,
  initial, common, recursive, prototype,
  // environment
  currency, sign, picture, symbol, decimalPoint, comma, on, off, status, crt, cursor, debugging, mode, alphabet,
  symbolic,
  characters, select, optional, assign, to, organization, sequential, indexed, relative, line, record, key,
  alternate, access,
  reserve, password, same, area, sort, sortMerge, dynamic, random, external, delimiter, padding, suppress,
  duplicates, with,
  source, binarySequential, disk, lock, sharing, for_, collating,
  // descriptions
  fd, sd, rd, cd, global, block, contains, varying, in, size, from, depending, label, value, linage, footing, top,
  bottom, at,
  lines, codeSet, recording, reports, controls, final, page, limit, heading, first, last, detail, code, queue,
  subQueue1,
  subQueue2, subQueue3, input, output, inputOutputMode, message, date, time, text, length, count, destination, table,
  error,
  terminal, dataRecords,
  // entries
  filler, redefines, renames, through, pic, usage, is, occurs, times, ascending, descending, by, unbounded, typedef_,
  strong,
  type, sameAs, as, like, constant, justified, right, left, blank, when, zero, synchronized_, leading, trailing,
  separate,
  character, values, groupUsage, no, sql, next, of, capacity, step, byteLength, all, space, highValue, lowValue,
  quote, null_,
  true_, false_, set, validating, based, anyWord, property, aligned, volatile_, indicate, group, nextGroup, present,
  reset,
  sum, upon, column, plus, using_, foreground, background, attribute, unsigned_, signed_, default_, object, reference,
  // usages
  display, comp, comp1, comp2, comp3, comp5, comp6, compX, index, pointer, pointer32, functionPointer,
  procedurePointer,
  programPointer, national, display1, utf8, bit, binaryChar, binaryShort, binaryLong, binaryDouble, floatExtended,
  floatBinary32, floatBinary64, floatBinary128, floatDecimal16, floatDecimal34,
};
// clang-format on

/// Tells the word behind a name id of one stream.
class Words {
 public:
  explicit Words(const Interner& names);

  Word of(NameId id) const { return m_words[id]; }
  /// The word of a token; `none` when it is no word at all or stands in an EXEC block.
  Word of(const Token& token) const {
    return token.kind == TokenKind::word && !token.has(inExec) ? of(token.text) : Word::none;
  }

 private:
  std::vector<Word> m_words; ///< by name id
};

} // namespace cobol
