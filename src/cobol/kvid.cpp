#include "cobol/kvid.hpp"

#include <array>
#include <bit>
#include <cstring>

namespace cobol {
namespace {

constexpr std::size_t kLongest = 200;
constexpr std::size_t kKept = 120;
constexpr std::string_view kHex = "0123456789ABCDEF";

constexpr auto kKeyCharacters = [] {
  std::array<bool, 256> result{};
  for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.:/#~^+@!?()"))
    result[static_cast<unsigned char>(c)] = true;
  return result;
}();

bool isKeyCharacter(char c) {
  return kKeyCharacters[static_cast<unsigned char>(c)];
}

bool isKeyText(std::string_view text) {
  return std::all_of(text.begin(), text.end(), isKeyCharacter);
}

void appendKey(std::string& key, std::string_view text) {
  if (isKeyText(text)) {
    key += text;
    return;
  }
  for (const char c : text) {
    if (c >= 'a' && c <= 'z') {
      key += static_cast<char>(c - 'a' + 'A');
    } else if (isKeyCharacter(c)) {
      key += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      key += '=';
      key += kHex[byte >> 4U];
      key += kHex[byte & 15U];
    }
  }
}

/// Counts equal keys: open addressing over the constructs that were first to have theirs.
class KeyTable {
 public:
  explicit KeyTable(const std::vector<Construct>& constructs) : m_constructs(constructs) {
    const auto size = std::bit_ceil(std::max<std::size_t>(constructs.size() * 2, 16));
    m_slots = std::make_unique<Slot[]>(size);
    m_mask = size - 1;
    m_shift = std::countl_zero(m_mask);
  }

  /// How many constructs have the key of this one by now, itself included.
  std::uint32_t add(std::uint32_t construct) {
    const auto key = m_constructs[construct].kvid;
    const auto hash = hashOf(key);
    for (auto at = hash >> m_shift;; at = (at + 1) & m_mask) {
      Slot& slot = m_slots[at];
      if (slot.count == 0) {
        slot = {hash, construct, 1};
        return 1;
      }
      if (slot.hash == hash && m_constructs[slot.construct].kvid == key) return ++slot.count;
    }
  }

 private:
  struct Slot {
    std::uint64_t hash;
    std::uint32_t construct;
    std::uint32_t count;
  };

  /// Eight bytes a step, the last ones overlap those before them; the upper bits are the good ones.
  static std::uint64_t hashOf(std::string_view key) {
    std::uint64_t hash = key.size();
    const auto take = [&](const char* from, std::size_t count) {
      std::uint64_t word = 0;
      std::memcpy(&word, from, count);
      hash = (std::rotl(hash, 5) ^ word) * 0x9E3779B97F4A7C15U;
    };
    const char* const end = key.data() + key.size();
    if (key.size() < 8) {
      take(key.data(), key.size());
      return hash;
    }
    for (const char* at = key.data(); at < end - 8; at += 8)
      take(at, 8);
    take(end - 8, 8);
    return hash;
  }

  const std::vector<Construct>& m_constructs;
  std::unique_ptr<Slot[]> m_slots;
  std::size_t m_mask = 0;
  int m_shift = 0;
};

/// Goes over the constructs in their order: groups come before what they hold, siblings as they are declared.
class KeyWriter {
 public:
  explicit KeyWriter(Analysis& analysis) : m_analysis(analysis), m_lists(analysis.constructs.size()) {
    for (const auto& program : analysis.programs)
      m_programs.push_back(keyText(program.path) + ':');
  }

  std::vector<std::uint32_t> run() {
    std::vector<std::uint32_t> repeated;
    KeyTable seen(m_analysis.constructs);
    for (std::size_t i = 0; i < m_analysis.constructs.size(); ++i) {
      auto& item = m_analysis.constructs[i];
      item.kvid = keyOf(item, m_lists[i]);
      if (item.kvid.size() > kLongest) {
        std::string key = item.kvid;
        shortenKey(key, kLongest);
        item.kvid = m_analysis.texts->keep(key);
      }
      auto times = seen.add(static_cast<std::uint32_t>(i));
      if (times == 1) continue;
      // A name may hold the sign itself: `A#2` beside two of `A`.
      const Text key = item.kvid;
      do {
        item.kvid = m_analysis.texts->keep(key + '#' + std::to_string(times++));
      } while (seen.add(static_cast<std::uint32_t>(i)) > 1);
      repeated.push_back(static_cast<std::uint32_t>(i));
    }
    return repeated;
  }

 private:
  /// Items below one, or records of one section and file.
  struct List {
    std::string_view prefix;          ///< of their keys: names from the outermost in, each with a period behind
    const Construct* named = nullptr; ///< the last item that has a name
    std::uint32_t fillers = 0;        ///< behind that one
  };

  /// The key in full, without a sign of repetition. `below` is the list of what the item holds.
  Text keyOf(const Construct& item, List& below) {
    switch (item.kind) {
    case Kind::group:
    case Kind::elementary: {
      List& list = listOf(item);
      list.named = &item;
      list.fillers = 0;
      return namedKey(list.prefix, item, below);
    }
    case Kind::filler:
      below.prefix = listOf(item).prefix; // a filler's name is left out
      return join(below.prefix, fillerStep(listOf(item)));
    case Kind::renames:
    case Kind::condition:
      if (item.parent < 0) return namedKey(prefixOfRecords(item), item, below);
      return namedKey(m_lists[static_cast<std::size_t>(item.parent)].prefix, item, below);
    case Kind::switchName:
    case Kind::constant:
      return join(prefixOf(item), step({}, item.name));
    case Kind::index:
      return join(prefixOf(item), step("@", item.name));
    case Kind::specialRegister:
      return join(prefixOf(item), step("!REG.", item.name));
    case Kind::callSlot:
      return join(prefixOf(item), slotStep("!CALL.", item.name));
    case Kind::fileSlot:
      return join(prefixOf(item), slotStep("!FILE.", item.name));
    case Kind::undeclared:
      return join(prefixOf(item), undeclaredStep(item.name));
    }
    return {};
  }

  Text namedKey(std::string_view prefix, const Construct& item, List& below) {
    const std::string_view name = item.name;
    const Text key = join(prefix, isKeyText(name) ? name : step({}, name));
    below.prefix = {key.data(), key.size() + 1};
    return key;
  }

  /// Both parts, with a period behind the view that is given.
  Text join(std::string_view prefix, std::string_view step) {
    char* const key = m_analysis.texts->room(prefix.size() + step.size() + 1);
    char* const end = std::copy(step.begin(), step.end(), std::copy(prefix.begin(), prefix.end(), key));
    *end = '.';
    return std::string_view(key, end);
  }

  List& listOf(const Construct& item) {
    if (item.parent >= 0) return m_lists[static_cast<std::size_t>(item.parent)];
    const auto sameList = [&](const Construct& other) {
      return other.program == item.program && other.section == item.section && other.file == item.file;
    };
    if (m_lastRecord == nullptr || !sameList(*m_lastRecord)) m_records = {.prefix = prefixOfRecords(item)};
    m_lastRecord = &item;
    return m_records;
  }

  std::string_view prefixOf(const Construct& item) const {
    const auto program = static_cast<std::size_t>(std::max(item.program, 0));
    return program < m_programs.size() ? std::string_view(m_programs[program]) : std::string_view();
  }

  std::string_view prefixOfRecords(const Construct& item) {
    if (item.file < 0) return prefixOf(item);
    const Text key = join(prefixOf(item), step({}, m_analysis.dataFiles[static_cast<std::size_t>(item.file)].name));
    return {key.data(), key.size() + 1};
  }

  std::string_view step(std::string_view sign, std::string_view name) {
    m_step = sign;
    appendKey(m_step, name);
    return m_step;
  }

  /// Which FILLER it is behind which named sibling.
  std::string_view fillerStep(List& list) {
    step("~", list.named != nullptr ? list.named->name : "^");
    m_step += '+';
    return m_step += std::to_string(++list.fillers);
  }

  /// `SUB(1)` is SUB.1.
  std::string_view slotStep(std::string_view sign, std::string_view name) {
    const auto open = name.rfind('(');
    if (open == std::string_view::npos || !name.ends_with(')')) return step(sign, name);
    step(sign, name.substr(0, open));
    m_step += '.';
    appendKey(m_step, name.substr(open + 1, name.size() - open - 2));
    return m_step;
  }

  /// `B OF A` is ?A.B: outermost first, as with declared names.
  std::string_view undeclaredStep(std::string_view rest) {
    m_step = '?';
    std::vector<std::string_view> names;
    for (;;) {
      auto of = rest.find(' ');
      while (of != std::string_view::npos && rest.substr(of, 4) != " OF " && rest.substr(of, 4) != " IN ")
        of = rest.find(' ', of + 1);
      names.push_back(rest.substr(0, of));
      if (of == std::string_view::npos) break;
      rest.remove_prefix(of + 4);
    }
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
      if (name != names.rbegin()) m_step += '.';
      appendKey(m_step, *name);
    }
    return m_step;
  }

  Analysis& m_analysis;
  std::vector<std::string> m_programs; ///< what all keys of each begin with
  std::vector<List> m_lists;           ///< by construct: what stands below it
  List m_records;                      ///< those in hand
  const Construct* m_lastRecord = nullptr;
  std::string m_step; ///< the one in hand
};

} // namespace

std::uint64_t lastingHash(std::string_view text) {
  std::uint64_t hash = 14695981039346656037ULL;
  for (const char c : text)
    hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  return hash;
}

std::string keyText(std::string_view text) {
  std::string key;
  appendKey(key, text);
  return key;
}

void shortenKey(std::string& key, std::size_t longest) {
  if (key.size() <= longest) return;
  const auto hash = lastingHash(key);
  key.resize(kKept);
  key += '~';
  for (int shift = 60; shift >= 0; shift -= 4)
    key += kHex[(hash >> static_cast<unsigned>(shift)) & 15U];
}

std::vector<std::uint32_t> nameConstructs(Analysis& analysis) {
  return KeyWriter(analysis).run();
}

} // namespace cobol
