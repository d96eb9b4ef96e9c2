#include "cobol/data_words.hpp"

#include <utility>

#include "cobol/keywords.hpp"

namespace cobol {
namespace {

using enum Word;

// clang-format off
constexpr std::pair<std::string_view, Word> kWords[] = {
    {"IDENTIFICATION", identification}, {"ID", identification}, {"PROGRAM-ID", programId}, {"FUNCTION-ID", functionId},
    {"CLASS-ID", classId}, {"METHOD-ID", methodId}, {"ENVIRONMENT", environment}, {"DATA", data},
    {"PROCEDURE", procedure}, {"DIVISION", division}, {"SECTION", section}, {"END", end}, {"PROGRAM", program},
    {"FUNCTION", function}, {"CLASS", class_}, {"METHOD", method}, {"EXEC", exec}, {"EXECUTE", exec}, {"CICS", cics}, {"DLI", dli}, {"DIBSTAT", dibstat},
    {"DECLARATIVES", declaratives}, {"DFHEIBLK", dfheiblk}, {"EIBTIME", eibtime}, {"CONFIGURATION", configuration},
    {"INPUT-OUTPUT", inputOutput}, {"FILE-CONTROL", fileControl}, {"I-O-CONTROL", ioControl},
    {"SPECIAL-NAMES", specialNames}, {"SOURCE-COMPUTER", sourceComputer}, {"OBJECT-COMPUTER", objectComputer},
    {"REPOSITORY", repository}, {"FILE", file}, {"WORKING-STORAGE", workingStorage}, {"LOCAL-STORAGE", localStorage},
    {"THREAD-LOCAL-STORAGE", threadLocal}, {"THREAD-LOCAL", threadLocal}, {"LINKAGE", linkage},
    {"COMMUNICATION", communication}, {"REPORT", report}, {"SCREEN", screen}, {"INITIAL", initial}, {"COMMON", common},
    {"RECURSIVE", recursive}, {"PROTOTYPE", prototype},

    {"CURRENCY", currency}, {"SIGN", sign}, {"SYMBOL", symbol}, {"DECIMAL-POINT", decimalPoint}, {"COMMA", comma},
    {"ON", on}, {"OFF", off}, {"STATUS", status}, {"CRT", crt}, {"CURSOR", cursor}, {"DEBUGGING", debugging},
    {"MODE", mode}, {"ALPHABET", alphabet}, {"SYMBOLIC", symbolic}, {"CHARACTERS", characters}, {"SELECT", select},
    {"OPTIONAL", optional}, {"ASSIGN", assign}, {"TO", to}, {"ORGANIZATION", organization},
    {"ORGANISATION", organization}, {"SEQUENTIAL", sequential}, {"INDEXED", indexed}, {"RELATIVE", relative},
    {"LINE", line}, {"RECORD", record}, {"KEY", key}, {"ALTERNATE", alternate}, {"ACCESS", access},
    {"RESERVE", reserve}, {"PASSWORD", password}, {"SAME", same}, {"AREA", area}, {"SORT", sort},
    {"SORT-MERGE", sortMerge}, {"DYNAMIC", dynamic}, {"RANDOM", random}, {"EXTERNAL", external},
    {"DELIMITER", delimiter}, {"PADDING", padding}, {"SUPPRESS", suppress}, {"DUPLICATES", duplicates}, {"WITH", with},
    {"SOURCE", source}, {"DISK", disk}, {"LOCK", lock}, {"SHARING", sharing}, {"FOR", for_}, {"COLLATING", collating},

    {"FD", fd}, {"SD", sd}, {"RD", rd}, {"CD", cd}, {"GLOBAL", global}, {"BLOCK", block}, {"CONTAINS", contains},
    {"VARYING", varying}, {"IN", in}, {"SIZE", size}, {"FROM", from}, {"DEPENDING", depending}, {"LABEL", label},
    {"VALUE", value}, {"VALUES", values}, {"LINAGE", linage}, {"FOOTING", footing}, {"TOP", top}, {"BOTTOM", bottom},
    {"AT", at}, {"LINES", lines}, {"CODE-SET", codeSet}, {"RECORDING", recording}, {"REPORTS", reports},
    {"CONTROL", controls}, {"CONTROLS", controls}, {"FINAL", Word::final}, {"PAGE", page}, {"LIMIT", limit},
    {"LIMITS", limit}, {"HEADING", heading}, {"FIRST", first}, {"LAST", last}, {"DETAIL", detail}, {"CODE", code},
    {"QUEUE", queue}, {"SUB-QUEUE-1", subQueue1}, {"SUB-QUEUE-2", subQueue2}, {"SUB-QUEUE-3", subQueue3},
    {"INPUT", input}, {"OUTPUT", output}, {"I-O", inputOutputMode}, {"MESSAGE", message}, {"DATE", date},
    {"TIME", Word::time}, {"TEXT", text}, {"LENGTH", length}, {"COUNT", count}, {"DESTINATION", destination},
    {"TABLE", table}, {"ERROR", error}, {"TERMINAL", terminal}, {"RECORDS", dataRecords},

    {"FILLER", filler}, {"REDEFINES", redefines}, {"RENAMES", renames}, {"THROUGH", through}, {"THRU", through},
    {"PIC", pic}, {"PICTURE", pic}, {"USAGE", usage}, {"IS", is}, {"ARE", is}, {"OCCURS", occurs}, {"TIMES", times},
    {"ASCENDING", ascending}, {"DESCENDING", descending}, {"BY", by}, {"UNBOUNDED", unbounded}, {"TYPEDEF", typedef_},
    {"STRONG", strong}, {"TYPE", type}, {"AS", as}, {"LIKE", like}, {"CONSTANT", constant}, {"JUSTIFIED", justified},
    {"JUST", justified}, {"RIGHT", right}, {"LEFT", left}, {"BLANK", blank}, {"WHEN", when}, {"ZERO", zero},
    {"ZEROS", zero}, {"ZEROES", zero}, {"SYNCHRONIZED", synchronized_}, {"SYNCHRONISED", synchronized_},
    {"SYNC", synchronized_}, {"LEADING", leading}, {"TRAILING", trailing}, {"SEPARATE", separate},
    {"CHARACTER", character}, {"GROUP-USAGE", groupUsage}, {"NO", no}, {"SQL", sql}, {"NEXT", next}, {"OF", of},
    {"CAPACITY", capacity}, {"STEP", step}, {"BYTE-LENGTH", byteLength}, {"ALL", all}, {"SPACE", space},
    {"SPACES", space}, {"HIGH-VALUE", highValue}, {"HIGH-VALUES", highValue}, {"LOW-VALUE", lowValue},
    {"LOW-VALUES", lowValue}, {"QUOTE", quote}, {"QUOTES", quote}, {"NULL", null_}, {"NULLS", null_}, {"TRUE", true_},
    {"FALSE", false_}, {"SET", set}, {"BASED", based}, {"ANY", anyWord}, {"PROPERTY", property}, {"ALIGNED", aligned},
    {"VOLATILE", volatile_}, {"INDICATE", indicate}, {"GROUP", group}, {"PRESENT", present}, {"RESET", reset},
    {"SUM", sum}, {"UPON", upon}, {"COLUMN", column}, {"COL", column}, {"COLUMNS", column}, {"COLS", column},
    {"PLUS", plus}, {"USING", using_}, {"FOREGROUND-COLOR", foreground}, {"FOREGROUND-COLOUR", foreground},
    {"BACKGROUND-COLOR", background}, {"BACKGROUND-COLOUR", background}, {"ATTRIBUTE", attribute}, {"COLOR", attribute},
    {"UNSIGNED", unsigned_}, {"SIGNED", signed_}, {"OBJECT", object}, {"REFERENCE", reference},

    {"DISPLAY", display}, {"COMP", comp}, {"COMPUTATIONAL", comp}, {"COMP-4", comp}, {"COMPUTATIONAL-4", comp},
    {"BINARY", comp}, {"COMP-1", comp1}, {"COMPUTATIONAL-1", comp1}, {"FLOAT-SHORT", comp1}, {"COMP-2", comp2},
    {"COMPUTATIONAL-2", comp2}, {"FLOAT-LONG", comp2}, {"COMP-3", comp3}, {"COMPUTATIONAL-3", comp3},
    {"PACKED-DECIMAL", comp3}, {"COMP-5", comp5}, {"COMPUTATIONAL-5", comp5}, {"COMP-N", comp5}, {"COMP-6", comp6},
    {"COMPUTATIONAL-6", comp6}, {"COMP-X", compX}, {"COMPUTATIONAL-X", compX}, {"INDEX", index}, {"POINTER", pointer},
    {"POINTER-32", pointer32}, {"FUNCTION-POINTER", functionPointer}, {"PROCEDURE-POINTER", procedurePointer},
    {"PROGRAM-POINTER", programPointer}, {"NATIONAL", national}, {"DISPLAY-1", display1}, {"UTF-8", utf8}, {"BIT", bit},
    {"BINARY-CHAR", binaryChar}, {"BINARY-SHORT", binaryShort}, {"SIGNED-SHORT", binaryShort},
    {"UNSIGNED-SHORT", binaryShort}, {"BINARY-LONG", binaryLong}, {"BINARY-INT", binaryLong},
    {"SIGNED-INT", binaryLong}, {"UNSIGNED-INT", binaryLong}, {"BINARY-DOUBLE", binaryDouble},
    {"BINARY-LONG-LONG", binaryDouble}, {"SIGNED-LONG", binaryDouble}, {"UNSIGNED-LONG", binaryDouble},
    {"FLOAT-EXTENDED", floatExtended}, {"FLOAT-BINARY-32", floatBinary32}, {"FLOAT-BINARY-64", floatBinary64},
    {"FLOAT-BINARY-128", floatBinary128}, {"FLOAT-DECIMAL-16", floatDecimal16}, {"FLOAT-DECIMAL-34", floatDecimal34},
};
// clang-format on

/// The words that are keywords have the same id in every stream.
struct Known {
  std::vector<Word> ofKeyword; ///< by id
  std::vector<std::pair<std::string_view, Word>> others;
};

Known sorted() {
  Known known;
  known.ofKeyword.resize(keywordCount(), Word::none);
  const Interner keywords;
  for (const auto& [text, word] : kWords) {
    if (const NameId id = keywords.find(text); id != 0)
      known.ofKeyword[id] = word;
    else
      known.others.emplace_back(text, word);
  }
  return known;
}

} // namespace

Words::Words(const Interner& names) {
  static const Known known = sorted();
  m_words.reserve(names.size());
  m_words = known.ofKeyword;
  m_words.resize(names.size(), Word::none);
  for (const auto& [text, word] : known.others)
    if (const NameId id = names.find(text); id != 0) m_words[id] = word;
}

} // namespace cobol
