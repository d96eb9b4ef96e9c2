#include "cobol/special_registers.hpp"

#include <unordered_map>

namespace cobol {

std::optional<RegisterShape> registerShape(Keyword word) {
  using enum Keyword;
  switch (word) {
  case ReturnCode:
  case SortReturn:
  case SortModeSize:
    return RegisterShape{"S9(4)", "COMP", 2, 4};
  case SortCoreSize:
  case SortFileSize:
    return RegisterShape{"S9(8)", "COMP", 4, 8};
  case Tally:
    return RegisterShape{"9(5)", "COMP", 4, 5};
  case SortControl:
  case SortMessage:
    return RegisterShape{"X(8)", "DISPLAY", 8, 0};
  case WhenCompiled:
    return RegisterShape{"X(16)", "DISPLAY", 16, 0};
  case ShiftIn:
  case ShiftOut:
    return RegisterShape{"X", "DISPLAY", 1, 0};
  case LinageCounter:
  case LineCounter:
  case PageCounter:
    return RegisterShape{"9(9)", "COMP", 4, 9};
  case DebugItem:
    return RegisterShape{"X(98)", "DISPLAY", 98, 0};
  case DebugLine:
    return RegisterShape{"X(6)", "DISPLAY", 6, 0};
  case DebugName:
  case DebugContents:
    return RegisterShape{"X(30)", "DISPLAY", 30, 0};
  case DebugSub1:
  case DebugSub2:
  case DebugSub3:
    return RegisterShape{"S9(4)", "DISPLAY", 5, 4};
  case XmlCode:
  case XmlInformation:
  case JsonCode:
  case JsonStatus:
  case NumberOfCallParameters:
    return RegisterShape{"S9(9)", "COMP", 4, 9};
  case XmlEvent:
    return RegisterShape{"X(30)", "DISPLAY", 30, 0};
  case XmlText:
  case XmlNamespace:
  case XmlNamespacePrefix:
    return RegisterShape{"X", "DISPLAY", 1, 0};
  case XmlNtext:
  case XmlNnamespace:
  case XmlNnamespacePrefix:
    return RegisterShape{"N", "NATIONAL", 2, 0};
  case Jnienvptr:
    return RegisterShape{"", "POINTER", 4, 0};
  default:
    return std::nullopt;
  }
}

FunctionKind functionKind(std::string_view name) {
  using enum FunctionKind;
  static const std::unordered_map<std::string_view, FunctionKind> kinds = {
      {"ABS", preserving},
      {"DISPLAY-OF", preserving},
      {"INTEGER", preserving},
      {"INTEGER-PART", preserving},
      {"LOWER-CASE", preserving},
      {"MAX", preserving},
      {"MIN", preserving},
      {"NATIONAL-OF", preserving},
      {"NUMVAL", preserving},
      {"NUMVAL-C", preserving},
      {"NUMVAL-F", preserving},
      {"TRIM", preserving},
      {"UPPER-CASE", preserving},
      {"BYTE-LENGTH", length},
      {"LENGTH", length},
      {"ACOS", other},
      {"ANNUITY", other},
      {"ASIN", other},
      {"ATAN", other},
      {"BIT-OF", other},
      {"BIT-TO-CHAR", other},
      {"BOOLEAN-OF-INTEGER", other},
      {"CHAR", other},
      {"CHAR-NATIONAL", other},
      {"COMBINED-DATETIME", other},
      {"CONCAT", other},
      {"CONCATENATE", other},
      {"COS", other},
      {"CURRENT-DATE", other},
      {"DATE-OF-INTEGER", other},
      {"DATE-TO-YYYYMMDD", other},
      {"DAY-OF-INTEGER", other},
      {"DAY-TO-YYYYDDD", other},
      {"E", other},
      {"EXCEPTION-FILE", other},
      {"EXCEPTION-LOCATION", other},
      {"EXCEPTION-STATEMENT", other},
      {"EXCEPTION-STATUS", other},
      {"EXP", other},
      {"EXP10", other},
      {"FACTORIAL", other},
      {"FORMATTED-CURRENT-DATE", other},
      {"FORMATTED-DATE", other},
      {"FORMATTED-DATETIME", other},
      {"FORMATTED-TIME", other},
      {"FRACTION-PART", other},
      {"HEX-OF", other},
      {"HEX-TO-CHAR", other},
      {"HIGHEST-ALGEBRAIC", other},
      {"INTEGER-OF-BOOLEAN", other},
      {"INTEGER-OF-DATE", other},
      {"INTEGER-OF-DAY", other},
      {"INTEGER-OF-FORMATTED-DATE", other},
      {"LOCALE-COMPARE", other},
      {"LOCALE-DATE", other},
      {"LOCALE-TIME", other},
      {"LOCALE-TIME-FROM-SECONDS", other},
      {"LOG", other},
      {"LOG10", other},
      {"LOWEST-ALGEBRAIC", other},
      {"MEAN", other},
      {"MEDIAN", other},
      {"MIDRANGE", other},
      {"MOD", other},
      {"MODULE-CALLER-ID", other},
      {"MODULE-ID", other},
      {"ORD", other},
      {"ORD-MAX", other},
      {"ORD-MIN", other},
      {"PI", other},
      {"PRESENT-VALUE", other},
      {"RANDOM", other},
      {"RANGE", other},
      {"REM", other},
      {"REVERSE", other},
      {"SECONDS-FROM-FORMATTED-TIME", other},
      {"SECONDS-PAST-MIDNIGHT", other},
      {"SIGN", other},
      {"SIN", other},
      {"SQRT", other},
      {"STANDARD-COMPARE", other},
      {"STANDARD-DEVIATION", other},
      {"STORED-CHAR-LENGTH", other},
      {"SUBSTITUTE", other},
      {"SUBSTITUTE-CASE", other},
      {"SUM", other},
      {"TAN", other},
      {"TEST-DATE-YYYYMMDD", other},
      {"TEST-DAY-YYYYDDD", other},
      {"TEST-FORMATTED-DATETIME", other},
      {"TEST-NUMVAL", other},
      {"TEST-NUMVAL-C", other},
      {"TEST-NUMVAL-F", other},
      {"ULENGTH", length},
      {"UPOS", other},
      {"USUBSTR", preserving},
      {"UUID4", other},
      {"UVALID", other},
      {"UWIDTH", other},
      {"VARIANCE", other},
      {"WHEN-COMPILED", other},
      {"YEAR-TO-YYYY", other},
  };
  const auto found = kinds.find(name);
  return found == kinds.end() ? none : found->second;
}

} // namespace cobol
