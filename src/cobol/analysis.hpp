#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/diagnostic.hpp"
#include "cobol/options.hpp"
#include "cobol/position.hpp"
#include "cobol/text_arena.hpp"
#include "cobol/token.hpp"

namespace cobol {

enum class Kind : std::uint8_t {
  group,
  elementary,
  filler,          ///< FILLER or nameless, group or elementary
  renames,         ///< level 66
  condition,       ///< level 88
  switchName,      ///< SW: condition of an external switch
  constant,        ///< level 78, 01 CONSTANT, a constant of conditional compilation
  index,           ///< IX: INDEXED BY name
  specialRegister, ///< SR
  callSlot,        ///< PA: parameter slot `PROG(k)`
  fileSlot,        ///< FL: file slot, the assigned name
  undeclared,      ///< ??
};

enum class Section : std::uint8_t { none, file, workingStorage, localStorage, linkage, communication, report, screen };

/// Letters: G global, E external, Y sync, J just, B blank when zero, D size depends on OCCURS DEPENDING, M made by the
/// analyser, U undeclared, R name made by REPLACING.
enum ConstructFlag : std::uint16_t {
  global = 1,
  external = 2,
  synchronized_ = 4,
  justified = 8,
  blankWhenZero = 16,
  variableSize = 32,
  implicit_ = 64,
  undeclaredName = 128,
  nameReplaced = 256,
};

/// One dataname of a program. Indices are positions in Analysis::constructs; -1 is none. The texts lie in
/// Analysis::texts.
struct Construct {
  Text kvid; ///< program-path ":" item-path; unique in the analysis
  Text name; ///< upper case; "FILLER" for nameless items
  Kind kind = Kind::elementary;
  Section section = Section::none;
  bool repeats = false; ///< has an OCCURS clause
  bool isSigned = false;
  std::uint16_t flags = 0;
  int level = 0;       ///< as declared, 0 where there is none (slots, registers)
  int program = 0;     ///< index into Analysis::programs
  int parent = -1;     ///< enclosing group; of a condition, its item; of an index, its table; of a 66, its record
  int firstChild = -1; ///< subordinate items only (no 88, 66, index)
  int nextSibling = -1;
  int record = -1;          ///< its level 01 or 77
  int file = -1;            ///< index into Analysis::dataFiles of an FD/SD/RD/CD record
  int redefines = -1;       ///< the item of its REDEFINES clause
  int area = -1;            ///< storage area: equal exactly when storage is shared at level 01
  std::uint32_t occurs = 1; ///< own OCCURS maximum; 1: does not repeat
  std::uint32_t occursMin = 1;
  Position declared;         ///< the name token (the level number of a nameless item)
  std::uint32_t token = 0;   ///< index of that token in the stream; 0: declared by a directive
  std::int64_t offset = 0;   ///< numbered through the program, bytes; negative for constructs without storage, also for
                             ///< a 66 that follows no record
  std::int64_t size = 0;     ///< bytes: length times own OCCURS maximum
  std::int64_t position = 0; ///< bytes from the start of its record
  std::int64_t length = 0;   ///< bytes of one occurrence
  Text dims;                 ///< "count×stride" outermost first, ancestors included, written "12x9,2x4"
  Text picture;              ///< upper case, as written
  Text usage;                ///< normalised: "DISPLAY", "COMP", "COMP-3", …; empty for a group without its own
  Text value;                ///< text of the VALUE clause, of an 88 all its values
  int digits = 0;
  int scale = 0;                   ///< digits behind the point; negative with trailing P
  int renamesFirst = -1;           ///< of a 66: the item at its start
  int renamesLast = -1;            ///< of a 66: the item at its end, the first one again without THRU
  std::int64_t fixedPosition = -1; ///< of a report or CD item: bytes from the record's start; -1: where it falls;
                                   ///< -1-n: n bytes (columns) on from the end of the item before

  bool hasStorage() const { return kind <= Kind::renames; }
  bool isGroup() const { return firstChild >= 0; }
};

/// A file, report, sort or communication description.
struct DataFile {
  enum class Sort : std::uint8_t { fd, sd, rd, cd };
  std::string name;
  Sort sort = Sort::fd;
  int program = 0;
  std::string assignName;   ///< of ASSIGN TO, upper case, without organisation prefix; empty when unknown
  std::string organisation; ///< SEQUENTIAL, INDEXED, RELATIVE, LINE SEQUENTIAL
  bool global = false;
  bool external = false;
  std::int64_t minimumSize = 0; ///< of RECORD CONTAINS, bytes
  int sharesAreaWith = -1;      ///< index of a file whose record area it shares (SAME RECORD AREA)
  std::vector<int> records;     ///< its level 01 constructs
  Position declared;
};

/// A program, nested or not, that a source holds; also functions and methods.
struct Program {
  std::string name; ///< upper case
  std::string path; ///< "OUTER" or "OUTER/INNER"
  int parent = -1;  ///< enclosing program
  bool common = false;
  bool isClass = false;             ///< its data are seen by the methods inside it
  Position declared;                ///< PROGRAM-ID's name
  std::uint32_t beginToken = 0;     ///< IDENTIFICATION or PROGRAM-ID
  std::uint32_t procedureToken = 0; ///< the word PROCEDURE; 0: no procedure division
  std::uint32_t endToken = 0;       ///< one behind its last token; contained programs lie before it
  std::vector<std::pair<std::uint32_t, std::uint32_t>>
      procedureRanges;    ///< token ranges [from, to) of its own procedure text
  bool debugging = false; ///< WITH DEBUGGING MODE
  bool decimalComma = false;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> execRanges; ///< EXEC … END-EXEC outside procedure text
  std::vector<NameId>
      otherNames; ///< names of SPECIAL-NAMES that are no constructs: mnemonics, classes, alphabets, characters
  std::vector<NameId> functions;     ///< of REPOSITORY: these need no word FUNCTION
  bool intrinsicsNeedNoWord = false; ///< FUNCTION ALL INTRINSIC
};

/// How a statement touches a dataname at one place.
enum class Access : char {
  declare = 'D',
  read = 'R',
  write = 'W',
  both = 'B',
  named = 'N',   ///< only named (qualifier, LENGTH OF, REDEFINES …): no usage
  implied = 'I', ///< no token of its own: no usage
};

struct Instance {
  std::uint32_t construct = 0;
  Access access = Access::read;
  std::uint16_t further = 0; ///< number of Analysis::further: the other places of the name's text
  Position at;
  NameId verb = 0; ///< the statement's verb or clause, a Keyword such as Move; 0: not understood
  bool isUsage() const { return access == Access::read || access == Access::write || access == Access::both; }
};

enum class RelationKind : std::uint8_t {
  Move,
  PartMove,
  OverlapMove,
  GroupMove,
  Addition,
  Computation,
  Comparison,
  Condition,
  Redefinition,
  Renaming,
  Overlay,
  Address,
  Pointer,
  Index,
  Subscript,
  Position,
  Dependence,
  Length,
  Key,
  FileStatus,
  Read,
  Write,
  Sort,
  String,
  Unstring,
  Tally,
  Inspection,
  Argument,
  Parameter,
  RecordSlot,
  ExecKey,
};
enum class Affinity : std::uint8_t { high, low };

struct RelationKindInfo {
  RelationKind kind;
  std::string_view name; ///< RelID: a noun that reads well in front of "of NAME"
  Affinity affinity;     ///< default
};
/// All kinds in the order of the enum.
const std::vector<RelationKindInfo>& relationKinds();

/// A unique triple with the places that gave it.
struct Relationship {
  std::uint32_t from = 0;
  std::uint32_t to = 0;
  RelationKind kind{};
  std::uint32_t firstSite = 0; ///< in Analysis::sites; in text order, each once
  std::uint32_t siteCount = 0;
};

/// A clause of the data or environment division that names a data item; resolved when all declarations are known.
struct DataReference {
  enum class Role : std::uint8_t {
    assign,
    recordKey,
    alternateKey,
    relativeKey,
    fileStatus,
    password,
    recordVarying,
    linage,
    fileValue,
    dependingOn,
    tableKey,
    reportSource,
    reportSum,
    reportControl,
    reportCondition,
    screenFrom,
    screenTo,
    screenUsing,
    screenAttribute,
    crtStatus,
    cursor,
    constantValue,
    pictureCount,
    occursCount,
    valueConstant,
    redefines,
    renamesFirst,
    renamesLast, ///< named only; `target` is set when the item was found
  };
  Role role{};
  std::uint32_t token = 0; ///< first token of the name (qualifiers and subscripts follow in the stream)
  Position at;             ///< of the name
  NameId name = 0;         ///< not 0: this name instead of the token's (a constant within a PICTURE; no qualifiers)
  int target = -1;         ///< the construct, where finding it needed no search of other programs
  int program = 0;
  int construct = -1; ///< the entry whose clause it is
  int file = -1;      ///< the file whose clause it is
};

/// Declarations that are no constructs but can be looked up: files, paragraphs, sections, mnemonics …
struct NamedPlace {
  Text kindWord; ///< FILE, PARA, COPY, CALL, LIT
  Text name;     ///< in Analysis::texts
  Position at;
};

/// Everything known of one source program.
struct Analysis {
  std::shared_ptr<TextArena> texts = std::make_shared<TextArena>(); ///< what the views below show
  std::vector<SourceFile> files;
  std::vector<CopyUse> copies;
  std::vector<Program> programs;
  std::vector<DataFile> dataFiles;
  std::vector<Construct> constructs;     ///< in declaration order; made ones behind
  std::vector<DataReference> references; ///< input of the statement stage
  std::vector<Relationship> relationships;
  std::vector<Position> sites;     ///< of the relationships
  std::vector<Instance> instances; ///< in text order
  FurtherPlaces further;           ///< of names that continue over line ends or are made by replacement
  std::vector<NamedPlace> places;
  std::vector<Diagnostic> diagnostics;
  std::uint32_t statements = 0; ///< met in procedure divisions
  std::uint32_t statementsUnderstood = 0;
  bool isCobol = true; ///< false: nothing in the text says that it is a program

  std::span<const Position> sitesOf(const Relationship& relationship) const {
    return {sites.data() + relationship.firstSite, relationship.siteCount};
  }
  /// Adds a relationship that stands at one place; equal ones are joined by the statement stage.
  void relate(RelationKind kind, std::uint32_t from, std::uint32_t to, const Position& at) {
    relationships.push_back({from, to, kind, static_cast<std::uint32_t>(sites.size()), 1});
    sites.push_back(at);
  }
};

} // namespace cobol
