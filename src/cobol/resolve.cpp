#include "cobol/resolve.hpp"

#include <algorithm>
#include <charconv>
#include <string>

#include "cobol/special_registers.hpp"

namespace cobol {

namespace {

constexpr std::size_t kMaxCandidates = 256;
constexpr std::size_t kOften = 32;

std::uint64_t keyOf(int program, NameId name) {
  return (static_cast<std::uint64_t>(program) << 32) | name;
}

void appendNumber(std::string& text, int number) {
  char digits[16];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

} // namespace

Resolver::Resolver(const TokenStream& stream, Analysis& analysis)
    : m_stream(stream), m_analysis(analysis), m_names(analysis.constructs.size()),
      m_next(analysis.constructs.size(), kNone), m_ofProgram(analysis.programs.size()),
      m_head(stream.names.size(), kNone) {
  int last = -1;
  Run* current = nullptr; // of the constructs in hand
  std::uint32_t index = 0;
  for (const Construct& construct : analysis.constructs) {
    if (construct.program != last) {
      last = construct.program;
      m_ofProgram[static_cast<std::size_t>(last)].push_back({index, index});
      current = &m_ofProgram[static_cast<std::size_t>(last)].back();
    }
    m_names[index] = idOf(construct);
    current->end = ++index;
  }
  m_fileNames.reserve(analysis.dataFiles.size());
  for (std::size_t i = 0; i < analysis.dataFiles.size(); ++i) {
    m_fileNames.push_back(stream.names.find(analysis.dataFiles[i].name));
    m_files.try_emplace(keyOf(analysis.dataFiles[i].program, m_fileNames.back()), static_cast<int>(i));
  }
  std::vector<bool> containsOthers(analysis.programs.size());
  for (const Program& program : analysis.programs) {
    if (program.parent >= 0) containsOthers[static_cast<std::size_t>(program.parent)] = true;
  }
  for (std::size_t p = 0; p < m_ofProgram.size(); ++p) {
    if (!containsOthers[p]) continue;
    enter(m_ofProgram[p]);
    for (const Run& run : m_ofProgram[p]) {
      for (std::uint32_t i = run.begin; i < run.end; ++i)
        m_globalHead.try_emplace(keyOf(static_cast<int>(p), m_names[i]), i);
    }
    leave(m_ofProgram[p]);
  }
}

// Nearly every name is the text of its own token.
NameId Resolver::idOf(const Construct& construct) const {
  if (construct.kind == Kind::filler) return 0;
  const NameId id = m_stream.tokens[construct.token].text;
  return m_stream.names.text(id).data() == construct.name.data() ? id : m_stream.names.find(construct.name);
}

void Resolver::enter(const std::vector<Run>& own) {
  for (auto run = own.rbegin(); run != own.rend(); ++run) {
    for (std::uint32_t i = run->end; i-- > run->begin;) {
      const NameId name = m_names[i];
      if (name == 0) continue;
      m_next[i] = m_head[name];
      m_head[name] = i;
    }
  }
}

void Resolver::leave(const std::vector<Run>& own) {
  for (const Run& run : own) {
    for (std::uint32_t i = run.begin; i < run.end; ++i)
      m_head[m_names[i]] = kNone;
  }
}

void Resolver::enterProgram(int program) {
  if (m_program >= 0) leave(m_ofProgram[static_cast<std::size_t>(m_program)]);
  m_program = program;
  m_hasRepository = false;
  for (int p = program; p >= 0; p = m_analysis.programs[static_cast<std::size_t>(p)].parent) {
    const Program& around = m_analysis.programs[static_cast<std::size_t>(p)];
    m_hasRepository = m_hasRepository || around.intrinsicsNeedNoWord || !around.functions.empty();
  }
  m_occurrences.clear();
  m_foundBefore.clear();
  enter(m_ofProgram[static_cast<std::size_t>(program)]);
}

int Resolver::fileOf(std::uint32_t construct) const {
  const auto& constructs = m_analysis.constructs;
  std::size_t at = construct;
  while (constructs[at].file < 0 && constructs[at].parent >= 0)
    at = static_cast<std::size_t>(constructs[at].parent);
  return constructs[at].file;
}

bool Resolver::isGlobal(std::uint32_t construct) const {
  const auto& constructs = m_analysis.constructs;
  if (m_analysis.programs[static_cast<std::size_t>(constructs[construct].program)].isClass) return true;
  for (int at = static_cast<int>(construct); at >= 0; at = constructs[static_cast<std::size_t>(at)].parent) {
    if ((constructs[static_cast<std::size_t>(at)].flags & ConstructFlag::global) != 0) return true;
  }
  const int file = fileOf(construct);
  return file >= 0 && m_analysis.dataFiles[static_cast<std::size_t>(file)].global;
}

bool Resolver::matches(std::uint32_t construct, std::span<const NameId> qualifiers, bool& whole) const {
  const auto& constructs = m_analysis.constructs;
  std::size_t met = 0;
  whole = true;
  for (int at = constructs[construct].parent; at >= 0; at = constructs[static_cast<std::size_t>(at)].parent) {
    const NameId name = m_names[static_cast<std::size_t>(at)];
    if (name == 0) continue;
    if (met < qualifiers.size() && qualifiers[met] == name) {
      ++met;
    } else {
      whole = false;
    }
  }
  if (met + 1 == qualifiers.size()) {
    const int file = fileOf(construct);
    if (file >= 0 && m_fileNames[static_cast<std::size_t>(file)] == qualifiers[met]) ++met;
  }
  return met == qualifiers.size();
}

void Resolver::collect(std::uint32_t head, std::span<const NameId> qualifiers, bool globalOnly,
                       std::vector<std::uint32_t>& found) {
  const std::size_t before = found.size();
  if (qualifiers.empty() && !globalOnly && m_next[head] == kNone) {
    found.push_back(head);
    return;
  }
  std::uint32_t wholeMatch = kNone;
  std::size_t wholeMatches = 0;
  for (std::uint32_t i = head; i != kNone; i = m_next[i]) {
    bool whole = false;
    if (!matches(i, qualifiers, whole) || (globalOnly && !isGlobal(i))) continue;
    if (whole) {
      wholeMatch = i;
      ++wholeMatches;
    }
    if (found.size() - before < kMaxCandidates) found.push_back(i);
  }
  if (wholeMatches == 1) {
    found.resize(before);
    found.push_back(wholeMatch);
  }
}

bool Resolver::isDeclaredOften(NameId name) const {
  std::size_t count = 0;
  for (std::uint32_t i = m_head[name]; i != kNone && count <= kOften; i = m_next[i])
    ++count;
  return count > kOften;
}

void Resolver::findSubtrees() {
  const auto& constructs = m_analysis.constructs;
  m_subtreeEnd.resize(constructs.size());
  for (std::size_t i = constructs.size(); i-- > 0;) {
    m_subtreeEnd[i] = std::max(m_subtreeEnd[i], static_cast<std::uint32_t>(i + 1));
    if (constructs[i].parent < 0) continue;
    auto& end = m_subtreeEnd[static_cast<std::size_t>(constructs[i].parent)];
    end = std::max(end, m_subtreeEnd[i]);
  }
}

void Resolver::collectAmongMany(NameId name, std::span<const NameId> qualifiers, std::vector<std::uint32_t>& found) {
  std::vector<NameId> written{name};
  written.insert(written.end(), qualifiers.begin(), qualifiers.end());
  const auto [known, isNew] = m_foundBefore.try_emplace(std::move(written));
  std::vector<std::uint32_t>& candidates = known->second;
  if (isNew && (qualifiers.empty() || isDeclaredOften(qualifiers.back()) || findFile(qualifiers.back()) >= 0)) {
    collect(m_head[name], qualifiers, false, candidates);
  } else if (isNew) {
    if (m_subtreeEnd.empty()) findSubtrees();
    auto& all = m_occurrences[name];
    for (std::uint32_t i = all.empty() ? m_head[name] : kNone; i != kNone; i = m_next[i])
      all.push_back(i);
    std::vector<std::uint32_t> whole;
    for (std::uint32_t group = m_head[qualifiers.back()]; group != kNone; group = m_next[group]) {
      for (auto i = std::lower_bound(all.begin(), all.end(), group); i != all.end() && *i < m_subtreeEnd[group]; ++i) {
        bool isWhole = false;
        if (!matches(*i, qualifiers, isWhole)) continue;
        if (isWhole) whole.push_back(*i);
        if (candidates.size() < kMaxCandidates) candidates.push_back(*i);
      }
    }
    if (whole.size() == 1) candidates = whole;
    std::sort(candidates.begin(), candidates.end());
    candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
  }
  found.insert(found.end(), candidates.begin(), candidates.end());
}

void Resolver::find(NameId name, std::span<const NameId> qualifiers, std::vector<std::uint32_t>& found) {
  const std::size_t before = found.size();
  if (m_head[name] != kNone) {
    if (m_next[m_head[name]] != kNone && isDeclaredOften(name)) {
      collectAmongMany(name, qualifiers, found);
    } else {
      collect(m_head[name], qualifiers, false, found);
    }
  }
  for (int p = m_analysis.programs[static_cast<std::size_t>(m_program)].parent; p >= 0 && found.size() == before;
       p = m_analysis.programs[static_cast<std::size_t>(p)].parent) {
    const auto head = m_globalHead.find(keyOf(p, name));
    if (head != m_globalHead.end()) collect(head->second, qualifiers, true, found);
  }
  if (found.size() == before && classOf(name) == WordClass::specialRegister) found.push_back(specialRegister(name));
}

bool Resolver::isDeclared(NameId name) const {
  if (m_head[name] != kNone) return true;
  for (int p = m_analysis.programs[static_cast<std::size_t>(m_program)].parent; p >= 0;
       p = m_analysis.programs[static_cast<std::size_t>(p)].parent) {
    const auto head = m_globalHead.find(keyOf(p, name));
    for (std::uint32_t i = head == m_globalHead.end() ? kNone : head->second; i != kNone; i = m_next[i]) {
      if (isGlobal(i)) return true;
    }
  }
  return false;
}

int Resolver::findFile(NameId name) const {
  for (int p = m_program; p >= 0; p = m_analysis.programs[static_cast<std::size_t>(p)].parent) {
    const auto file = m_files.find(keyOf(p, name));
    if (file != m_files.end() &&
        (p == m_program || m_analysis.dataFiles[static_cast<std::size_t>(file->second)].global ||
         m_analysis.programs[static_cast<std::size_t>(p)].isClass)) {
      return file->second;
    }
  }
  return -1;
}

bool Resolver::isOtherName(NameId name) const {
  for (int p = m_program; p >= 0; p = m_analysis.programs[static_cast<std::size_t>(p)].parent) {
    const auto& names = m_analysis.programs[static_cast<std::size_t>(p)].otherNames;
    if (std::find(names.begin(), names.end(), name) != names.end()) return true;
  }
  return false;
}

bool Resolver::isInRepository(NameId name) const {
  for (int p = m_program; p >= 0; p = m_analysis.programs[static_cast<std::size_t>(p)].parent) {
    const Program& around = m_analysis.programs[static_cast<std::size_t>(p)];
    if (around.intrinsicsNeedNoWord && functionKind(m_stream.names.text(name)) != FunctionKind::none) return true;
    if (std::find(around.functions.begin(), around.functions.end(), name) != around.functions.end()) return true;
  }
  return false;
}

std::uint32_t Resolver::make(Kind kind, std::string_view name, std::uint32_t token) {
  const auto index = static_cast<std::uint32_t>(m_analysis.constructs.size());
  appendNumber(m_key, m_program);
  m_key += static_cast<char>(kind);
  m_key += name;
  const auto [known, isNew] = m_made.try_emplace(m_key, index);
  m_key.clear();
  if (!isNew) return known->second;
  Construct made;
  made.name = m_analysis.texts->keep(name);
  made.kind = kind;
  made.program = m_program;
  made.flags = kind == Kind::undeclared ? ConstructFlag::undeclaredName : ConstructFlag::implicit_;
  made.declared = m_stream.tokens[token].position();
  made.token = token;
  append(made);
  return index;
}

void Resolver::append(const Construct& construct) {
  m_names.push_back(0);
  m_next.push_back(kNone);
  m_analysis.constructs.push_back(construct);
}

std::uint32_t Resolver::specialRegister(NameId name) {
  int outermost = m_program;
  while (m_analysis.programs[static_cast<std::size_t>(outermost)].parent >= 0) {
    outermost = m_analysis.programs[static_cast<std::size_t>(outermost)].parent;
  }
  const auto index = static_cast<std::uint32_t>(m_analysis.constructs.size());
  const auto [known, isNew] = m_registers.try_emplace(keyOf(outermost, name), index);
  if (!isNew) return known->second;
  const Program& program = m_analysis.programs[static_cast<std::size_t>(outermost)];
  Construct made;
  made.name = m_stream.names.text(name);
  made.kind = Kind::specialRegister;
  made.program = outermost;
  if (const auto shape = registerShape(keywordOf(name))) {
    made.picture = shape->picture;
    made.usage = shape->usage;
    made.length = shape->bytes;
    made.digits = shape->digits;
    made.isSigned = shape->picture.starts_with('S');
  }
  made.flags = ConstructFlag::implicit_;
  made.declared = program.declared;
  made.token = program.beginToken;
  append(made);
  return index;
}

std::uint32_t Resolver::undeclared(NameId name, std::span<const NameId> qualifiers, std::uint32_t token) {
  m_written = m_stream.names.text(name);
  for (const NameId qualifier : qualifiers) {
    m_written += " OF ";
    m_written += m_stream.names.text(qualifier);
  }
  return make(Kind::undeclared, m_written, token);
}

std::uint32_t Resolver::callSlot(std::string_view program, int k, std::uint32_t token) {
  m_written = program;
  m_written += '(';
  if (k < 0) {
    m_written += "CA";
  } else {
    appendNumber(m_written, k);
  }
  m_written += ')';
  return make(Kind::callSlot, m_written, token);
}

std::uint32_t Resolver::fileSlot(std::string_view name, std::uint32_t token) {
  return make(Kind::fileSlot, name, token);
}

} // namespace cobol
