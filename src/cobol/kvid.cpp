#include "cobol/kvid.hpp"

#include <array>

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

void appendKey(std::string& key, std::string_view text) {
  if (std::all_of(text.begin(), text.end(), isKeyCharacter)) {
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
    std::size_t size = 16;
    while (size < constructs.size() * 2)
      size *= 2;
    m_slots.resize(size);
  }

  /// How many constructs have the key of this one by now, itself included.
  std::uint32_t add(std::uint32_t construct) {
    const auto key = m_constructs[construct].kvid;
    const auto hash = std::hash<std::string_view>{}(key);
    for (auto at = hash & (m_slots.size() - 1);; at = (at + 1) & (m_slots.size() - 1)) {
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
    std::size_t hash = 0;
    std::uint32_t construct = 0;
    std::uint32_t count = 0;
  };
  const std::vector<Construct>& m_constructs;
  std::vector<Slot> m_slots;
};

class KeyWriter {
 public:
  explicit KeyWriter(Analysis& analysis) : m_analysis(analysis) {
    for (const auto& program : analysis.programs)
      m_prefixes.push_back(keyText(program.path) + ':');
    countFillers();
  }

  std::vector<std::uint32_t> run() {
    std::vector<std::uint32_t> repeated;
    KeyTable seen(m_analysis.constructs);
    m_paths.resize(m_analysis.constructs.size());
    for (std::size_t i = 0; i < m_analysis.constructs.size(); ++i) {
      auto& item = m_analysis.constructs[i];
      std::string& key = m_key;
      key.clear();
      const auto program = static_cast<std::size_t>(std::max(item.program, 0));
      if (program < m_prefixes.size()) key = m_prefixes[program];
      append(key, item, i);
      const bool fits = key.size() <= kLongest;
      item.kvid = m_paths[i] = m_analysis.texts->keep(key);
      if (!fits) {
        shortenKey(key, kLongest);
        item.kvid = m_analysis.texts->keep(key);
      }
      const auto times = seen.add(static_cast<std::uint32_t>(i));
      if (times == 1) continue;
      key += '#' + std::to_string(times);
      item.kvid = m_analysis.texts->keep(key);
      repeated.push_back(static_cast<std::uint32_t>(i));
    }
    return repeated;
  }

 private:
  /// Which FILLER it is behind which named sibling.
  struct FillerPlace {
    int previous = -1;
    std::uint32_t number = 0;
  };

  /// Siblings come in declaration order; of level 01, those of one section and file are siblings.
  void countFillers() {
    struct Run {
      int previous = -1;
      std::uint32_t number = 0;
    };
    const auto& all = m_analysis.constructs;
    m_fillers.resize(all.size());
    std::vector<Run> runs(all.size());
    Run top;
    for (std::size_t i = 0; i < all.size(); ++i) {
      const auto& item = all[i];
      if (!item.hasStorage() || item.kind == Kind::renames) continue;
      if (item.parent < 0 && i > 0 && !sameList(item)) top = {};
      m_lastRoot = item.parent < 0 ? static_cast<int>(i) : m_lastRoot;
      Run& run = item.parent < 0 ? top : runs[static_cast<std::size_t>(item.parent)];
      if (item.kind == Kind::filler) {
        m_fillers[i] = {run.previous, ++run.number};
      } else {
        run = {static_cast<int>(i), 0};
      }
    }
  }
  bool sameList(const Construct& item) const {
    if (m_lastRoot < 0) return false;
    const auto& last = m_analysis.constructs[static_cast<std::size_t>(m_lastRoot)];
    return last.program == item.program && last.section == item.section && last.file == item.file;
  }

  void append(std::string& key, const Construct& item, std::size_t index) {
    switch (item.kind) {
    case Kind::index:
      key += '@';
      break;
    case Kind::specialRegister:
      key += "!REG.";
      break;
    case Kind::callSlot:
      return appendSlot(key, "!CALL.", item.name);
    case Kind::fileSlot:
      return appendSlot(key, "!FILE.", item.name);
    case Kind::undeclared:
      return appendUndeclared(key, item);
    case Kind::switchName:
    case Kind::constant:
      break;
    default:
      appendPath(key, item.parent, item);
      if (item.kind == Kind::filler) return appendFiller(key, index);
    }
    appendKey(key, item.name);
  }

  /// Names above the item, outermost first, each with a period behind; fillers are left out. Groups come before what
  /// they hold, so the nearest named one's key is there.
  void appendPath(std::string& key, int parent, const Construct& item) {
    int up = parent;
    while (up >= 0 && m_analysis.constructs[static_cast<std::size_t>(up)].kind == Kind::filler)
      up = m_analysis.constructs[static_cast<std::size_t>(up)].parent;
    if (up >= 0) {
      key = m_paths[static_cast<std::size_t>(up)];
      key += '.';
      return;
    }
    if (item.file >= 0) {
      appendKey(key, m_analysis.dataFiles[static_cast<std::size_t>(item.file)].name);
      key += '.';
    }
  }

  void appendFiller(std::string& key, std::size_t index) {
    const auto& place = m_fillers[index];
    key += '~';
    if (place.previous < 0) {
      key += '^';
    } else {
      appendKey(key, m_analysis.constructs[static_cast<std::size_t>(place.previous)].name);
    }
    key += '+' + std::to_string(place.number);
  }

  /// `SUB(1)` is SUB.1.
  static void appendSlot(std::string& key, std::string_view prefix, std::string_view name) {
    key += prefix;
    const auto open = name.rfind('(');
    if (open != std::string_view::npos && name.ends_with(')')) {
      appendKey(key, name.substr(0, open));
      key += '.';
      appendKey(key, name.substr(open + 1, name.size() - open - 2));
    } else {
      appendKey(key, name);
    }
  }

  /// `B OF A` is ?A.B: outermost first, as with declared names.
  static void appendUndeclared(std::string& key, const Construct& item) {
    key += '?';
    std::vector<std::string_view> names;
    std::string_view rest = item.name;
    for (;;) {
      auto of = rest.find(' ');
      while (of != std::string_view::npos && rest.substr(of, 4) != " OF " && rest.substr(of, 4) != " IN ")
        of = rest.find(' ', of + 1);
      names.push_back(rest.substr(0, of));
      if (of == std::string_view::npos) break;
      rest.remove_prefix(of + 4);
    }
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
      if (name != names.rbegin()) key += '.';
      appendKey(key, *name);
    }
  }

  Analysis& m_analysis;
  std::vector<std::string> m_prefixes;
  std::vector<FillerPlace> m_fillers;
  std::vector<Text> m_paths; ///< the keys in full, without a sign of repetition
  std::string m_key;
  int m_lastRoot = -1;
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
