#include "cobol/picture.hpp"

#include <algorithm>
#include <array>

namespace cobol {
namespace {

constexpr std::int64_t kRepeatLimit = 2147483647;
constexpr std::int64_t kCountLimit = std::int64_t{1} << 50;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// One symbol of the string with its repetition.
struct Run {
  char symbol = 0;
  int width = 1; ///< of the first; the others count 1
  std::int64_t count = 1;
};

/// Walks over a picture run by run; equal symbols that follow each other are not joined.
class Runs {
 public:
  Runs(std::string_view text, const PictureRules& rules) : m_text(text), m_rules(rules) {}

  bool next(Run& run) {
    if (m_at >= m_text.size()) return false;
    run = {.symbol = m_text[m_at++]};
    if (static_cast<unsigned char>(run.symbol) >= 0x80) {
      // A currency sign outside ASCII takes several bytes but is one symbol.
      while (m_at < m_text.size() && (static_cast<unsigned char>(m_text[m_at]) & 0xC0) == 0x80)
        ++m_at;
    }
    if ((run.symbol == 'C' || run.symbol == 'D') && m_at < m_text.size() &&
        m_text[m_at] == (run.symbol == 'C' ? 'R' : 'B'))
      ++m_at;
    if (m_at < m_text.size() && m_text[m_at] == '(') run.count = repetition();
    return true;
  }
  bool valid = true;

 private:
  std::int64_t repetition() {
    const auto close = m_text.find(')', m_at);
    const auto inside = m_text.substr(m_at + 1, close == std::string_view::npos ? close : close - m_at - 1);
    m_at = close == std::string_view::npos ? m_text.size() : close + 1;
    if (!inside.empty() && std::all_of(inside.begin(), inside.end(), isDigit)) {
      std::int64_t value = 0;
      for (const char c : inside)
        value = std::min(value * 10 + (c - '0'), kRepeatLimit + 1);
      valid = valid && value <= kRepeatLimit;
      return std::min(value, kRepeatLimit);
    }
    if (m_rules.constant) {
      if (const auto value = m_rules.constant(inside)) return std::clamp<std::int64_t>(*value, 0, kRepeatLimit);
    }
    valid = false;
    return 1;
  }

  std::string_view m_text;
  const PictureRules& m_rules;
  std::size_t m_at = 0;
};

/// Sums up the runs of one picture.
class Counter {
 public:
  explicit Counter(const PictureRules& rules) : m_rules(rules), m_point(rules.decimalComma ? ',' : '.') {}

  void take(const Run& run) {
    const char c = run.symbol;
    if (c == '9' || c == 'Z' || c == '*') return digit(c, run.count);
    if (c == 'P') return scaling(run.count);
    if (c == 'V') return point();
    if (c == 'S') {
      m_picture.isSigned = true;
      return;
    }
    if (c == m_point) {
      m_edited = true;
      point();
      return add(run.count);
    }
    if (c == 'C' || c == 'D') {
      m_edited = true;
      return add(2 * run.count);
    }
    if (c == '+' || c == '-') return floating(c, run.count, 1);
    if (const int width = currencyWidth(c)) return floating(c, run.count, width);
    letter(c, run.count);
  }

  Picture result(bool valid) {
    finishFloating();
    auto& p = m_picture;
    p.isValid = valid && m_valid;
    if (m_exponent) {
      p.kind = PictureClass::numericEdited;
    } else if (m_utf8) {
      p.kind = PictureClass::utf8;
    } else if (m_national) {
      p.kind = PictureClass::national;
    } else if (m_dbcs) {
      p.kind = PictureClass::dbcs;
    } else if (m_boolean && !m_text) {
      p.kind = PictureClass::boolean;
    } else if (!m_text && m_edited) {
      p.kind = PictureClass::numericEdited;
    } else if (!m_text) {
      p.kind = PictureClass::numeric;
    }
    if (p.kind != PictureClass::numeric && p.kind != PictureClass::numericEdited) p.digits = p.scale = 0;
    const int factor = p.kind == PictureClass::utf8 ? 4 : (m_national || m_dbcs) ? 2 : 1;
    p.bytes = p.characters * factor;
    return p;
  }

 private:
  void add(std::int64_t count) { m_picture.characters = std::min(m_picture.characters + count, kCountLimit); }
  void addDigits(std::int64_t count) {
    m_picture.digits = static_cast<int>(std::min<std::int64_t>(m_picture.digits + count, kRepeatLimit));
    if (m_behindPoint)
      m_picture.scale = static_cast<int>(std::min<std::int64_t>(m_picture.scale + count, kRepeatLimit));
  }
  void digit(char c, std::int64_t count) {
    if (c != '9') m_edited = true;
    m_digitSeen = true;
    add(count);
    if (!m_exponent) addDigits(count);
  }
  void scaling(std::int64_t count) {
    // P before the first digit stands right of the point, behind the last digit left of it.
    if (m_digitSeen && !m_behindPoint) {
      m_picture.scale -= static_cast<int>(count);
    } else {
      m_behindPoint = true;
      m_picture.scale += static_cast<int>(count);
    }
  }
  void point() {
    if (!m_digitSeen || m_picture.scale >= 0) m_behindPoint = true;
  }
  void floating(char c, std::int64_t count, int width) {
    m_edited = true;
    if (m_exponent) return add(count);
    auto& seen = m_floating[c == '+' ? 0U : c == '-' ? 1U : 2U];
    add(count + (seen == 0 ? width - 1 : 0));
    // All but the first of a floating string hold a digit.
    const std::int64_t digits = seen == 0 ? count - 1 : count;
    seen += count;
    addDigits(digits);
    if (digits > 0) m_digitSeen = true;
  }
  void finishFloating() {
    if (!m_exponent) return;
    m_picture.digits = std::max(m_picture.digits, 0);
  }
  int currencyWidth(char c) const {
    for (const auto& currency : m_rules.currencies)
      if (currency.symbol == c) return std::max(currency.length, 1);
    return c == '$' || static_cast<unsigned char>(c) >= 0x80 ? 1 : 0;
  }
  void letter(char c, std::int64_t count) {
    add(count);
    switch (c) {
    case 'X':
    case 'A':
      m_text = true;
      break;
    case 'N':
      m_national = m_text = true;
      break;
    case 'G':
      m_dbcs = m_text = true;
      break;
    case 'U':
      m_utf8 = m_text = true;
      break;
    case '1':
      m_boolean = true;
      break;
    case 'E':
      m_exponent = true;
      break;
    case 'B':
    case '0':
    case '/':
    case ',':
    case '.':
      m_edited = true;
      break;
    default:
      m_valid = false;
      break;
    }
  }

  const PictureRules& m_rules;
  const char m_point;
  Picture m_picture;
  std::array<std::int64_t, 3> m_floating{};
  bool m_edited = false, m_text = false, m_national = false, m_dbcs = false, m_utf8 = false, m_boolean = false;
  bool m_exponent = false, m_digitSeen = false, m_behindPoint = false, m_valid = true;
};

/// Fewest bytes that hold so many decimal digits.
int bytesNeeded(int digits, bool isSigned) {
  static constexpr std::array<std::uint8_t, 19> kUnsigned = {1, 1, 1, 2, 2, 3, 3, 3, 4, 4, 5, 5, 5, 6, 6, 7, 7, 8, 8};
  static constexpr std::array<std::uint8_t, 19> kSigned = {1, 1, 1, 2, 2, 3, 3, 4, 4, 4, 5, 5, 6, 6, 6, 7, 7, 8, 8};
  if (digits > 18) return 16;
  return isSigned ? kSigned[static_cast<std::size_t>(digits)] : kUnsigned[static_cast<std::size_t>(digits)];
}

int binaryBytes(int digits, bool isSigned, BinarySize rule) {
  if (rule == BinarySize::by1to8) return bytesNeeded(digits, isSigned);
  if (rule == BinarySize::by1_2_4_8 && digits <= 2) return 1;
  return digits <= 4 ? 2 : digits <= 9 ? 4 : digits <= 18 ? 8 : 16;
}

bool isText(const Picture& picture) {
  return picture.kind != PictureClass::numeric && picture.kind != PictureClass::numericEdited &&
         picture.kind != PictureClass::boolean;
}

/// Sizes that the usage alone decides; 0: the picture is needed.
int bytesOfUsage(Usage usage, int pointerBytes) {
  switch (usage) {
  case Usage::comp1:
  case Usage::binaryLong:
  case Usage::floatBinary32:
  case Usage::pointer32:
    return 4;
  case Usage::comp2:
  case Usage::binaryDouble:
  case Usage::floatBinary64:
  case Usage::floatDecimal16:
  case Usage::procedurePointer:
    return 8;
  case Usage::floatExtended:
  case Usage::floatBinary128:
  case Usage::floatDecimal34:
    return 16;
  case Usage::binaryChar:
    return 1;
  case Usage::binaryShort:
    return 2;
  case Usage::index:
  case Usage::pointer:
  case Usage::functionPointer:
  case Usage::programPointer:
  case Usage::objectReference:
    return pointerBytes;
  default:
    return 0;
  }
}

} // namespace

std::string_view nameOf(Usage usage) {
  static constexpr std::string_view kNames[] = {"",
                                                "DISPLAY",
                                                "COMP",
                                                "COMP-1",
                                                "COMP-2",
                                                "COMP-3",
                                                "COMP-5",
                                                "COMP-6",
                                                "COMP-X",
                                                "INDEX",
                                                "POINTER",
                                                "POINTER-32",
                                                "FUNCTION-POINTER",
                                                "PROCEDURE-POINTER",
                                                "PROGRAM-POINTER",
                                                "OBJECT REFERENCE",
                                                "NATIONAL",
                                                "DISPLAY-1",
                                                "UTF-8",
                                                "BIT",
                                                "BINARY-CHAR",
                                                "BINARY-SHORT",
                                                "BINARY-LONG",
                                                "BINARY-DOUBLE",
                                                "FLOAT-EXTENDED",
                                                "FLOAT-BINARY-32",
                                                "FLOAT-BINARY-64",
                                                "FLOAT-BINARY-128",
                                                "FLOAT-DECIMAL-16",
                                                "FLOAT-DECIMAL-34"};
  return kNames[static_cast<std::size_t>(usage)];
}

bool needsNoPicture(Usage usage) {
  return bytesOfUsage(usage, 4) > 0;
}

Picture readPicture(std::string_view text, const PictureRules& rules) {
  Runs runs(text, rules);
  Counter counter(rules);
  Run run;
  while (runs.next(run))
    counter.take(run);
  return counter.result(runs.valid && !text.empty());
}

bool hasNames(std::string_view picture) {
  bool inside = false;
  for (const char c : picture) {
    if (inside && c != ')' && !isDigit(c)) return true;
    inside = c == '(' || (inside && c != ')');
  }
  return false;
}

Usage effectiveUsage(Usage given, const Picture* picture) {
  if (picture == nullptr || needsNoPicture(given)) return given;
  switch (picture->kind) {
  case PictureClass::national:
    return given == Usage::display1 ? given : Usage::national;
  case PictureClass::dbcs:
    return Usage::display1;
  case PictureClass::utf8:
    return Usage::utf8;
  case PictureClass::alphanumeric:
    return given == Usage::compX || given == Usage::comp5 ? given : Usage::display;
  default:
    return given == Usage::none ? Usage::display : given;
  }
}

std::int64_t bytesOf(const ItemForm& form, const Options& options) {
  if (const int bytes = bytesOfUsage(form.usage, options.pointerBytes)) return bytes;
  if (form.picture == nullptr) return 0;
  const Picture& picture = *form.picture;
  const int sign = form.signSeparate && picture.isSigned ? 1 : 0;
  if (!isText(picture)) {
    const int digits = picture.digits;
    switch (form.usage) {
    case Usage::comp:
      return binaryBytes(digits, picture.isSigned, options.binarySize);
    case Usage::comp5:
      return options.comp5Small && digits <= 2 ? 1 : binaryBytes(digits, picture.isSigned, options.binarySize);
    case Usage::compX:
      return bytesNeeded(digits, picture.isSigned);
    case Usage::comp3:
      return form.noSign ? (digits + 1) / 2 : digits / 2 + 1;
    case Usage::comp6:
      return (digits + 1) / 2;
    case Usage::national:
      return 2 * (picture.characters + sign);
    case Usage::bit:
      return (picture.characters + 7) / 8;
    default:
      break;
    }
  }
  return picture.bytes + sign;
}

Shape shapeOf(const Picture* picture, const Representation& held, const Options& options) {
  const Usage usage = effectiveUsage(held.usage, picture);
  const bool separable = usage == Usage::display || usage == Usage::national;
  const ItemForm form{.usage = usage,
                      .picture = picture,
                      .signSeparate = separable && held.sign == Representation::Sign::separate,
                      .noSign = held.noSign};
  Shape shape{.bytes = bytesOf(form, options), .usage = nameOf(usage)};
  shape.isSigned = (usage >= Usage::binaryChar && usage <= Usage::binaryDouble && !held.isUnsigned) ||
                   usage == Usage::comp1 || usage == Usage::comp2;
  if (picture == nullptr) return shape;
  shape.digits = picture->digits;
  shape.scale = picture->scale;
  shape.isSigned = shape.isSigned || picture->isSigned;
  shape.isValid = picture->isValid;
  return shape;
}

} // namespace cobol
