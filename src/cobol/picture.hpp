#pragma once

#include <bit>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "cobol/options.hpp"

namespace cobol {

/// How a value is held, synonyms folded (BINARY and COMP-4 are comp, PACKED-DECIMAL is comp3, FLOAT-SHORT is comp1).
enum class Usage : std::uint8_t {
  none,
  display,
  comp,
  comp1,
  comp2,
  comp3,
  comp5,
  comp6,
  compX,
  index,
  pointer,
  pointer32,
  functionPointer,
  procedurePointer,
  programPointer,
  objectReference,
  national,
  display1,
  utf8,
  bit,
  binaryChar,
  binaryShort,
  binaryLong,
  binaryDouble,
  floatExtended,
  floatBinary32,
  floatBinary64,
  floatBinary128,
  floatDecimal16,
  floatDecimal34,
};

/// "COMP-3", "DISPLAY" …; empty for none.
std::string_view nameOf(Usage usage);
/// True for usages whose items have no PICTURE.
bool needsNoPicture(Usage usage);

enum class PictureClass : std::uint8_t { alphanumeric, numeric, numericEdited, national, dbcs, utf8, boolean };

/// What the ENVIRONMENT DIVISION says about pictures.
struct PictureRules {
  struct Currency {
    char symbol;
    int length; ///< characters of the currency string
  };
  bool decimalComma = false;
  std::vector<Currency> currencies;                                      ///< `$` of one character always counts as well
  std::function<std::optional<std::int64_t>(std::string_view)> constant; ///< value of a name in `9(NAME)`; may be empty
};

struct Picture {
  PictureClass kind = PictureClass::alphanumeric;
  std::int64_t characters = 0; ///< positions counted in USAGE DISPLAY, sign not separate
  std::int64_t bytes = 0;      ///< the same in bytes: 2 for each position of national and DBCS, 4 of UTF-8
  int digits = 0;              ///< without P
  int scale = 0;               ///< digits behind the point; negative with P at the right end
  bool isSigned = false;       ///< has an S
  bool isValid = true;         ///< false: some character has no place in a picture
};

/// Reads a PICTURE character string (upper case, without the ending period). Never fails: what is unknown counts one
/// position and makes it invalid. Counts are cut at 2^31-1.
Picture readPicture(std::string_view text, const PictureRules& rules);

/// Whether constants stand as counts in a picture, as in `9(NAME)`.
bool hasNames(std::string_view picture);

/// One elementary item as far as its size depends on it.
struct ItemForm {
  Usage usage = Usage::none;
  const Picture* picture = nullptr; ///< null: none given
  bool signSeparate = false;
  bool noSign = false; ///< PACKED-DECIMAL WITH NO SIGN
};

/// Bytes of one occurrence; 0 when neither picture nor usage tells.
std::int64_t bytesOf(const ItemForm& form, const Options& options);

/// The usage an item really has: that of its picture (N national, G DISPLAY-1, U UTF-8) where none or DISPLAY is given,
/// DISPLAY for texts that inherit a numeric usage.
Usage effectiveUsage(Usage given, const Picture* picture);

/// How an item holds its value, as far as clauses tell that groups may have in its stead.
struct Representation {
  enum class Sign : std::uint8_t { unset, together, separate };
  Usage usage = Usage::none;
  Sign sign = Sign::unset;
  bool noSign = false;
  bool isUnsigned = false;

  bool operator==(const Representation& other) const { // in one step
    return std::bit_cast<std::uint32_t>(*this) == std::bit_cast<std::uint32_t>(other);
  }
};

/// What picture and representation make of an elementary item.
struct Shape {
  std::int64_t bytes = 0;
  std::string_view usage; ///< the name of the usage it really has
  int digits = 0;
  int scale = 0;
  bool isSigned = false;
  bool isValid = true; ///< as Picture::isValid
};
Shape shapeOf(const Picture* picture, const Representation& held, const Options& options);

} // namespace cobol
