#include "cobol/item_tree.hpp"

#include <utility>

#include "cobol/record_layout.hpp"

namespace cobol {
namespace {

constexpr std::size_t kItemLimit = 5'000'000;
constexpr std::size_t kMeasureLimit = 50'000'000;
constexpr std::size_t kCopyLimit = 500'000; // items that types make, in a source

void setFlag(Construct& construct, bool condition, ConstructFlag flag) {
  if (condition) construct.flags = static_cast<std::uint16_t>(construct.flags | flag);
}

/// Code points, not bytes.
std::int64_t characters(std::string_view text) {
  return std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
}

} // namespace

ItemTree::ItemTree(const TokenStream& stream, const Options& options, Analysis& analysis, Diagnostics& diagnostics)
    : m_stream(stream), m_options(options), m_analysis(analysis), m_diagnostics(diagnostics),
      m_latest(stream.names.size(), -1), m_pictureOf(stream.names.size()) {}

void ItemTree::remark(Code code, Severity severity, std::uint32_t token, std::string_view text) {
  m_diagnostics.add(code, severity, m_stream.tokens[token].position(), std::string(text));
}

void ItemTree::beginProgram(int program, const PictureRules& rules) {
  m_blank.program = program;
  m_rules = rules;
  forgetShapes();
  m_rules.constant = [this](std::string_view text) -> std::optional<std::int64_t> {
    const auto found = m_constants.find(m_stream.names.find(text));
    if (found == m_constants.end()) return std::nullopt;
    return found->second;
  };
  for (const DefinedConstant& define : m_stream.defines)
    if (const auto value = integerOf(define.value)) m_constants[define.name] = *value;
  m_begin = m_analysis.constructs.size();
  m_facts.reserve(m_analysis.constructs.capacity());
  m_facts.resize(m_begin);
  beginSection(Section::none);
}

void ItemTree::beginSection(Section section, int file) {
  m_blank.section = section;
  m_blank.file = file;
  m_innermost = m_lastItem = m_record = -1;
  m_lastRoot = -1;
}

inline Construct& ItemTree::append() {
  m_analysis.constructs.push_back(m_blank);
  m_facts.emplace_back();
  return m_analysis.constructs.back();
}

inline Construct& ItemTree::append(const DataEntry& entry) {
  Construct& construct = append();
  const Token& name = token(entry.nameToken);
  construct.level = entry.level;
  construct.name = entry.isNamed ? m_stream.textOf(name) : std::string_view("FILLER");
  construct.kind = entry.isNamed ? Kind::elementary : Kind::filler;
  construct.declared = name.position();
  construct.token = entry.nameToken;
  setFlag(construct, entry.isNamed && name.has(replaced), nameReplaced);
  return construct;
}

inline void ItemTree::putInto(Construct& construct, int record) const {
  construct.record = record;
  if (record >= 0) setFlag(construct, (at(record).flags & global) != 0, global);
}

inline void ItemTree::makeKnown(int item, NameId name) {
  facts(item).name = name;
  if (name == 0) return;
  facts(item).previousSameName = std::exchange(m_latest[name], item);
}

int ItemTree::add(const DataEntry& entry) {
  if (m_analysis.constructs.size() >= kItemLimit) {
    remark(Code::BudgetSpent, Severity::error, entry.levelToken, "too many data items; the rest is left out");
    return -1;
  }
  const bool isItem = entry.level < 50 || entry.level == 77;
  if (isItem && !entry.isConstant) return addItem(entry);
  return entry.level == 88 ? addCondition(entry) : entry.level == 66 ? addRenames(entry) : addConstant(entry);
}

DataReference& ItemTree::refer(DataReference::Role role, std::uint32_t nameToken, int construct) {
  m_analysis.references.push_back({.role = role,
                                   .token = nameToken,
                                   .at = token(nameToken).position(),
                                   .program = m_blank.program,
                                   .construct = construct,
                                   .file = m_blank.file});
  return m_analysis.references.back();
}

void ItemTree::referUses(const DataEntry& entry, int construct) {
  for (const auto& use : entry.uses)
    refer(use.role, use.token, construct);
}

int ItemTree::addCondition(const DataEntry& entry) {
  if (!entry.isNamed) return -1;
  if (m_lastItem < 0) remark(Code::LevelBad, Severity::warning, entry.levelToken, "level 88 without an item before it");
  Construct& construct = append(entry);
  construct.kind = Kind::condition;
  construct.parent = m_lastItem;
  putInto(construct, m_lastItem < 0 ? -1 : at(m_lastItem).record);
  construct.value = valueText(entry.valueFrom, entry.valueTo);
  referUses(entry, last());
  return last();
}

int ItemTree::addRenames(const DataEntry& entry) {
  Construct& construct = append(entry);
  const int index = last();
  construct.kind = Kind::renames;
  construct.parent = m_record;
  putInto(construct, m_record);
  if (entry.renamesFirst != 0) construct.renamesFirst = findInRecord(entry.renamesFirst, m_record);
  construct.renamesLast = entry.renamesLast != 0 ? findInRecord(entry.renamesLast, m_record) : construct.renamesFirst;
  if (construct.renamesFirst < 0 || construct.renamesLast < 0)
    remark(Code::RenamesBad, Severity::warning, entry.nameToken, "RENAMES names no item of the record before it");
  makeKnown(index, token(entry.nameToken).text);
  m_lastItem = index;
  using Role = DataReference::Role;
  if (entry.renamesFirst != 0) refer(Role::renamesFirst, entry.renamesFirst, index).target = construct.renamesFirst;
  if (entry.renamesLast != 0) refer(Role::renamesLast, entry.renamesLast, index).target = construct.renamesLast;
  return index;
}

int ItemTree::addConstant(const DataEntry& entry) {
  const auto value = constantOf(entry.valueFrom, entry.valueTo);
  if (value) m_constants[token(entry.nameToken).text] = *value;
  Construct& construct = append(entry);
  construct.kind = Kind::constant;
  construct.value = valueText(entry.valueFrom, entry.valueTo);
  setFlag(construct, (entry.flags & global) != 0, global);
  referUses(entry, last());
  return last();
}

void ItemTree::addDefines() {
  beginSection(Section::none);
  for (const DefinedConstant& define : m_stream.defines) {
    const std::string_view name = m_stream.names.text(define.name);
    const auto sameName = [&](const Construct& other) { return other.name == name; };
    if (std::any_of(m_analysis.constructs.begin() + static_cast<std::ptrdiff_t>(m_begin), m_analysis.constructs.end(),
                    sameName))
      continue;
    Construct& construct = append();
    construct.name = name;
    construct.kind = Kind::constant;
    construct.level = 78;
    construct.value = m_analysis.texts->keep(define.value);
    construct.flags = global;
    construct.declared = define.at;
  }
}

inline int ItemTree::enclosing(int level) const {
  int item = m_innermost;
  while (item >= 0 && at(item).level >= level)
    item = at(item).parent;
  return item;
}

inline void ItemTree::hang(int index, int parent) {
  if (parent < 0) {
    at(index).record = m_record = m_lastRoot = index;
    if (m_blank.file >= 0) m_analysis.dataFiles[static_cast<std::size_t>(m_blank.file)].records.push_back(index);
  } else {
    int& youngest = facts(parent).lastChild;
    (youngest < 0 ? at(parent).firstChild : at(youngest).nextSibling) = index;
    youngest = index;
  }
  m_innermost = m_lastItem = index;
}

/// The facts of the item added last.
inline void ItemTree::noteFacts(const DataEntry& entry, int parent, std::uint32_t picture) {
  Facts& known = m_facts.back();
  known.own = entry.held.usage;
  known.held = entry.held;
  known.picture = picture;
  known.pictureToken = entry.picture;
  known.fixedBytes = entry.isDynamic        ? m_options.pointerBytes
                     : entry.byteLength > 0 ? entry.byteLength
                                            : entry.fixedBytes;
  known.noStorage = m_blank.section == Section::report || m_blank.section == Section::screen;
  if (known.noStorage && entry.valueIsLiteral)
    known.literalLength = characters(m_stream.textOf(token(entry.valueFrom)));
  if (parent < 0) {
    known.syncBelow = (entry.flags & synchronized_) != 0;
    return;
  }
  const Facts& above = facts(parent);
  const auto sign = known.held.sign == Representation::Sign::unset ? above.held.sign : known.held.sign;
  if (known.held.usage == Usage::none) known.held = above.held;
  known.held.sign = sign;
  known.syncBelow = above.syncBelow;
}

int ItemTree::addItem(const DataEntry& entry) {
  const bool isRoot = entry.level == 1 || entry.level == 77;
  const int parent = isRoot ? -1 : enclosing(entry.level);
  if (parent < 0 && !isRoot)
    remark(Code::LevelBad, Severity::warning, entry.levelToken, "no level 01 above this entry");

  Construct& construct = append(entry);
  const int index = last();
  construct.parent = parent;
  construct.flags |= entry.flags;
  if (parent >= 0) {
    putInto(construct, m_record);
  } else if (m_blank.file >= 0) {
    const auto& file = m_analysis.dataFiles[static_cast<std::size_t>(m_blank.file)];
    setFlag(construct, file.global, global);
    setFlag(construct, file.external, external);
  }
  std::uint32_t picture = 0;
  if (entry.picture != 0) {
    const Token& written = token(entry.picture);
    const auto text = m_stream.textOf(written);
    construct.picture = text;
    picture = pictureNumber(written.text, text);
  }
  if (entry.valueTo > entry.valueFrom) construct.value = valueText(entry.valueFrom, entry.valueTo);
  if (!entry.sqlType.empty()) construct.usage = m_analysis.texts->keep(entry.sqlType);
  if (entry.repeats) setOccurs(entry, index);
  if (m_blank.section == Section::report && (entry.hasColumn || entry.hasLine)) {
    construct.fixedPosition = entry.isColumnRelative ? -1 - entry.column : entry.column > 0 ? entry.column - 1 : 0;
    if (entry.hasColumn && entry.column == 0) construct.fixedPosition = -1;
  }
  if (entry.redefines != 0) setRedefines(entry, index);
  noteFacts(entry, parent, picture);
  if (entry.isNamed) makeKnown(index, token(entry.nameToken).text);
  hang(index, parent);
  referUses(entry, index);
  if (m_pictures[picture].hasNames) referPictureCounts(entry.picture, index);
  for (const auto name : entry.indexNames)
    addIndex(name, index);
  if (entry.copiedFrom != 0) copyType(entry, index);
  return index;
}

void ItemTree::setOccurs(const DataEntry& entry, int item) {
  Construct& construct = at(item);
  construct.repeats = true;
  const auto bounded = [](std::int64_t value) {
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(value, 0, 0xFFFFFFFF));
  };
  const auto first = entry.occursFirst == 0 ? std::nullopt : numberOf(entry.occursFirst);
  const auto last = entry.occursLast == 0 ? std::nullopt : numberOf(entry.occursLast);
  const auto count = entry.occursLast != 0 ? last : entry.isUnbounded ? std::nullopt : first;
  construct.occurs = bounded(count.value_or(1));
  if (construct.occurs == 0 || !count) {
    construct.occurs = 1;
    remark(Code::OccursBad, Severity::warning, entry.nameToken,
           entry.isUnbounded ? "OCCURS without an upper bound counts once"
                             : "OCCURS without a usable count counts once");
  }
  construct.occursMin = entry.occursLast != 0 || entry.isUnbounded ? bounded(first.value_or(0)) : construct.occurs;
  const bool isVariable = (entry.flags & variableSize) != 0;
  if (isVariable && entry.occursLast == 0 && !entry.isUnbounded) construct.occursMin = 0;
  for (const auto countToken : {entry.occursFirst, entry.occursLast})
    if (countToken != 0 && token(countToken).kind == TokenKind::word)
      refer(DataReference::Role::occursCount, countToken, item);
}

/// Before the item is one of its parent's children itself.
void ItemTree::setRedefines(const DataEntry& entry, int item) {
  Construct& construct = at(item);
  construct.redefines = findSibling(token(entry.redefines).text, construct.parent);
  if (construct.redefines < 0) {
    construct.redefines = lastChild(construct.parent);
    remark(Code::RedefinesUnknown, Severity::warning, entry.redefines,
           "REDEFINES names no item of this group; the item before it is taken");
  }
  refer(DataReference::Role::redefines, entry.redefines, item).target = construct.redefines;
}

void ItemTree::addIndex(std::uint32_t nameToken, int table) {
  Construct& construct = append();
  construct.name = m_stream.textOf(token(nameToken));
  construct.kind = Kind::index;
  construct.parent = table;
  putInto(construct, at(table).record);
  construct.declared = token(nameToken).position();
  construct.token = nameToken;
  construct.usage = nameOf(Usage::index);
  setFlag(construct, token(nameToken).has(replaced), nameReplaced);
}

/// Gives the item the form of another one: its picture and usage, and a copy of everything below it.
void ItemTree::copyType(const DataEntry& entry, int item) {
  const int source = findAnywhere(entry.copiedFrom, item);
  if (source < 0) {
    remark(Code::Unresolved, Severity::warning, entry.copiedFrom, "no type or item of this name before");
    return;
  }
  const int count = static_cast<int>(m_analysis.constructs.size());
  int end = source + 1;
  while (end < count && end < item && at(end).parent >= source)
    ++end;
  if (at(source).picture.size() > 0 && at(item).picture.empty()) at(item).picture = at(source).picture;
  if (facts(item).own == Usage::none) facts(item).own = facts(item).held.usage = facts(source).held.usage;
  if (facts(item).held.sign == Representation::Sign::unset) facts(item).held.sign = facts(source).held.sign;
  if (facts(item).pictureToken == 0) facts(item).pictureToken = facts(source).pictureToken;
  if (facts(item).picture == 0) facts(item).picture = facts(source).picture;
  if (facts(item).fixedBytes == 0) facts(item).fixedBytes = facts(source).fixedBytes;
  facts(item).held.noSign = facts(source).held.noSign;
  facts(item).held.isUnsigned = facts(source).held.isUnsigned;
  const auto inside = [&](int below) {
    for (int up = item; up >= 0; up = at(up).parent)
      if (up == below) return true;
    return false;
  };
  m_copied += static_cast<std::size_t>(end - source);
  if (inside(source) || m_copied > kCopyLimit) {
    remark(Code::BudgetSpent, Severity::error, entry.copiedFrom, "this type can't be copied here");
    return;
  }
  const int base = count - (source + 1);
  const auto moved = [&](int old) { return old == source ? item : old > source && old < end ? old + base : -1; };
  if (at(source).firstChild >= 0) {
    at(item).firstChild = moved(at(source).firstChild);
    facts(item).lastChild = moved(facts(source).lastChild);
  }
  for (int old = source + 1; old < end; ++old) {
    Construct& copy = append();
    copy = at(old);
    copy.program = m_blank.program;
    copy.section = m_blank.section;
    copy.file = m_blank.file;
    copy.parent = copy.kind == Kind::renames ? item : moved(copy.parent);
    copy.firstChild = moved(copy.firstChild);
    copy.nextSibling = moved(copy.nextSibling);
    copy.redefines = moved(copy.redefines);
    copy.renamesFirst = moved(copy.renamesFirst);
    copy.renamesLast = moved(copy.renamesLast);
    putInto(copy, at(item).record);
    Facts& known = m_facts.back();
    known = facts(old);
    known.lastChild = moved(known.lastChild);
    known.syncBelow = facts(item).syncBelow;
    makeKnown(last(), known.name);
  }
}

void ItemTree::referPictureCounts(std::uint32_t pictureToken, int construct) {
  const auto text = m_stream.textOf(token(pictureToken));
  for (auto open = text.find('('); open != std::string_view::npos; open = text.find('(', open + 1)) {
    const auto close = text.find(')', open);
    if (close == std::string_view::npos) return;
    const auto inside = text.substr(open + 1, close - open - 1);
    if (inside.empty() || (inside.front() >= '0' && inside.front() <= '9' && integerOf(inside))) continue;
    const NameId name = m_stream.names.find(inside);
    if (name == 0) continue;
    DataReference& reference = refer(DataReference::Role::pictureCount, pictureToken, construct);
    reference.name = name;
    reference.at.column += static_cast<std::uint32_t>(open + 1);
    reference.at.length = static_cast<std::uint32_t>(inside.size());
  }
}

int ItemTree::findSibling(NameId name, int parent) const {
  const int stop = parent < 0 ? static_cast<int>(m_begin) : parent;
  for (int found = m_latest[name]; found >= stop; found = facts(found).previousSameName)
    if (at(found).program == m_blank.program && at(found).parent == parent && at(found).kind != Kind::renames)
      return found;
  return -1;
}

/// The qualifiers behind a name, each of them somewhere above the item.
bool ItemTree::qualifiersMatch(std::uint32_t nameToken, int item) const {
  int above = at(item).parent;
  for (auto next = nameToken + 1; next + 1 < m_stream.tokens.size(); next += 2) {
    const auto word = m_stream.textOf(token(next));
    if (token(next).kind != TokenKind::word || (word != "OF" && word != "IN")) return true;
    const NameId qualifier = token(next + 1).text;
    while (above >= 0 && facts(above).name != qualifier)
      above = at(above).parent;
    if (above < 0) {
      const int file = at(item).file;
      return file >= 0 && m_analysis.dataFiles[static_cast<std::size_t>(file)].name == m_stream.names.text(qualifier);
    }
    above = at(above).parent;
  }
  return true;
}

int ItemTree::findInRecord(std::uint32_t nameToken, int record) const {
  if (record < 0) return -1;
  for (int found = m_latest[token(nameToken).text]; found >= record; found = facts(found).previousSameName)
    if (at(found).record == record && at(found).kind != Kind::renames && qualifiersMatch(nameToken, found))
      return found;
  return -1;
}

int ItemTree::findAnywhere(std::uint32_t nameToken, int except) const {
  for (int found = m_latest[token(nameToken).text]; found >= 0; found = facts(found).previousSameName)
    if (found != except && at(found).kind != Kind::renames && qualifiersMatch(nameToken, found)) return found;
  return -1;
}

std::optional<std::int64_t> ItemTree::numberOf(std::uint32_t index) const {
  if (token(index).kind == TokenKind::number) return integerOf(m_stream.textOf(token(index)));
  const auto found = m_constants.find(token(index).text);
  return found == m_constants.end() ? std::nullopt : std::optional(found->second);
}

/// A number, or numbers and constants joined by operators, worked out from left to right.
std::optional<std::int64_t> ItemTree::constantOf(std::uint32_t from, std::uint32_t to) {
  constexpr std::int64_t kLimit = std::int64_t{1} << 31;
  std::optional<std::int64_t> result;
  char operation = '+';
  for (auto i = from; i < to; ++i) {
    if (token(i).kind == TokenKind::symbol) {
      const auto text = m_stream.textOf(token(i));
      if (text.size() != 1 || std::string_view("+-*/").find(text) == std::string_view::npos) return std::nullopt;
      operation = text.front();
      continue;
    }
    const auto word = token(i).kind == TokenKind::word ? m_stream.textOf(token(i)) : std::string_view();
    const bool measures = word == "LENGTH" || word == "BYTE-LENGTH";
    if (measures && m_stream.textOf(token(++i)) == "OF") ++i;
    const auto value = measures ? lengthOf(i) : numberOf(i);
    while (measures && i + 2 < to && (m_stream.textOf(token(i + 1)) == "OF" || m_stream.textOf(token(i + 1)) == "IN"))
      i += 2; // qualifiers
    if (!value || *value > kLimit || (operation == '/' && *value == 0)) return std::nullopt;
    const std::int64_t left = result.value_or(0);
    result = operation == '+'   ? left + *value
             : operation == '-' ? left - *value
             : operation == '*' ? left * *value
                                : left / *value;
    if (*result > kLimit || *result < -kLimit) return std::nullopt;
  }
  return result;
}

inline bool ItemTree::finishLeaf(Construct& construct, const Facts& known) {
  const Shape& shape = knownShape(known);
  construct.length = known.fixedBytes > 0 ? known.fixedBytes : shape.bytes;
  if (construct.usage.empty()) construct.usage = shape.usage;
  construct.digits = shape.digits;
  construct.scale = shape.scale;
  construct.isSigned = shape.isSigned;
  if (known.syncBelow) setFlag(construct, true, synchronized_);
  if (construct.length == 0 && known.noStorage) construct.length = known.literalLength;
  return shape.isValid && (construct.length != 0 || known.picture != 0 || known.noStorage);
}

/// Bytes of one occurrence of an item that is declared before, or characters of a literal.
std::optional<std::int64_t> ItemTree::lengthOf(std::uint32_t index) {
  if (token(index).kind == TokenKind::literal) return characters(m_stream.textOf(token(index)));
  const int item = token(index).kind == TokenKind::word ? findAnywhere(index, -1) : -1;
  m_measured += m_analysis.constructs.size();
  if (item < 0 || at(item).record < 0 || m_measured > kMeasureLimit) return std::nullopt;
  // Its record is laid out aside, for what comes behind may still lengthen it or change what a picture means.
  Analysis aside;
  aside.constructs = m_analysis.constructs;
  Diagnostics unheard;
  const int record = at(item).record;
  for (std::size_t i = static_cast<std::size_t>(record); i < aside.constructs.size(); ++i) {
    Construct& leaf = aside.constructs[i];
    if (leaf.record == record && leaf.hasStorage() && leaf.kind != Kind::renames && !leaf.isGroup())
      finishLeaf(leaf, m_facts[i]);
  }
  forgetShapes();
  RecordLayout(aside, m_options, unheard).layOut(record);
  return aside.constructs[static_cast<std::size_t>(item)].length;
}

std::string_view ItemTree::valueText(std::uint32_t from, std::uint32_t to) {
  if (to - from == 1 && token(from).kind != TokenKind::literal) return m_stream.textOf(token(from));
  const auto isLiteral = [this](std::uint32_t i) { return token(i).kind == TokenKind::literal; };
  const auto hasGap = [this](std::size_t before, std::uint32_t i) { return before > 0 && !token(i).has(joined); };
  std::size_t length = 0;
  for (auto i = from; i < to; ++i)
    length += (hasGap(length, i) ? 1U : 0U) + m_stream.textOf(token(i)).size() + (isLiteral(i) ? 2U : 0U);
  char* const begin = m_analysis.texts->room(length);
  char* end = begin;
  for (auto i = from; i < to; ++i) {
    const auto text = m_stream.textOf(token(i));
    if (hasGap(static_cast<std::size_t>(end - begin), i)) *end++ = ' ';
    if (isLiteral(i)) *end++ = '"';
    end = std::copy(text.begin(), text.end(), end);
    if (isLiteral(i)) *end++ = '"';
  }
  return {begin, length};
}

int ItemTree::addAt(const MadeItem& item, std::uint32_t nameToken) {
  const int index = addMade(item, nameToken);
  Construct& construct = at(index);
  construct.flags = static_cast<std::uint16_t>(construct.flags & ~implicit_);
  setFlag(construct, token(nameToken).has(replaced), nameReplaced);
  makeKnown(index, token(nameToken).text);
  return index;
}

/// Records that a system supplies have the same picture many times over.
std::uint32_t ItemTree::madePicture(std::string_view text) {
  const bool isSame = text.data() == m_madeText.data() && text.size() == m_madeText.size();
  if (!isSame) m_madePicture = pictureNumber(m_stream.names.find(text), text);
  m_madeText = text;
  return m_madePicture;
}

int ItemTree::addMade(const MadeItem& item, std::uint32_t nameToken) {
  const int parent = enclosing(item.level);
  Construct& construct = append();
  const int index = last();
  construct.level = item.level;
  construct.name = item.name.empty() ? "FILLER" : item.name;
  construct.kind = item.name.empty() ? Kind::filler : Kind::elementary;
  construct.declared = token(nameToken).position();
  construct.token = nameToken;
  construct.flags = implicit_;
  construct.picture = item.picture;
  construct.parent = parent;
  if (parent >= 0) putInto(construct, m_record);
  if (item.occurs > 0) {
    construct.repeats = true;
    construct.occurs = construct.occursMin = item.occurs;
  }
  if (item.redefinesLast) construct.redefines = lastChild(parent);
  Facts& known = facts(index);
  known.own = known.held.usage = item.usage;
  known.picture = madePicture(item.picture);
  hang(index, parent);
  return index;
}

void ItemTree::finish() {
  for (std::size_t i = m_begin; i < m_analysis.constructs.size(); ++i) {
    Construct& construct = m_analysis.constructs[i];
    const Facts& known = m_facts[i];
    if (!construct.hasStorage() || construct.kind == Kind::renames) continue;
    if (construct.firstChild < 0) {
      if (!finishLeaf(construct, known)) remarkPicture(construct, known);
      continue;
    }
    if (construct.kind != Kind::filler) construct.kind = Kind::group;
    if (known.own != Usage::none) construct.usage = nameOf(known.own);
    if (known.pictureToken != 0)
      remark(Code::PictureBad, Severity::warning, known.pictureToken, "a group has no PICTURE; it is passed over");
  }
}

/// One that stands nowhere in the stream (id 0) is always a new one.
std::uint32_t ItemTree::addPicture(NameId name, std::string_view text) {
  if (text.empty()) return 0;
  const auto number = static_cast<std::uint32_t>(m_pictures.size());
  m_pictures.push_back({.text = text, .hasNames = hasNames(text), .held = {}, .shape = {}});
  if (name != 0) m_pictureOf[name] = number;
  return number;
}

void ItemTree::readShape(KnownPicture& memory, const Facts& known) {
  const bool hasPicture = known.picture != 0;
  const Picture picture = hasPicture ? readPicture(memory.text, m_rules) : Picture{};
  memory.shape = shapeOf(hasPicture ? &picture : nullptr, known.held, m_options);
  memory.held = known.held;
  memory.isShaped = true;
}

/// Pictures mean something else once rules or constants are others.
void ItemTree::forgetShapes() {
  for (KnownPicture& picture : m_pictures)
    picture.isShaped = false;
}

void ItemTree::remarkPicture(const Construct& construct, const Facts& known) {
  if (known.picture == 0)
    return remark(Code::PictureMissing, Severity::warning, construct.token, "neither PICTURE nor subordinate items");
  remark(Code::PictureBad, Severity::warning, known.pictureToken != 0 ? known.pictureToken : construct.token,
         "not a PICTURE: " + std::string(construct.picture.substr(0, 60)));
}

} // namespace cobol
