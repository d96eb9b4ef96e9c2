#include "cobol/kvid.hpp"

#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <unordered_map>

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

/// Eight bytes: whether all are of the characters from the hyphen to the colon and from `?` to `Z`, which are those of
/// nearly all names and stand in keys as they are.
bool isPlain(std::uint64_t bytes) {
  constexpr std::uint64_t kEach = 0x0101010101010101U, kTop = kEach << 7U;
  // The top bit of each byte tells it, as long as no byte has that bit itself.
  const auto isFrom = [bytes](std::uint64_t first) { return bytes + kEach * (0x80 - first); };
  const auto isIn = (isFrom('-') & ~isFrom(':' + 1)) | (isFrom('?') & ~isFrom('Z' + 1));
  return (isIn & ~bytes & kTop) == kTop;
}

template<typename Bytes>
std::uint64_t load(const char* from) {
  Bytes bytes;
  std::memcpy(&bytes, from, sizeof bytes);
  return bytes;
}

/// False for very short ones as well. The last bytes looked at overlap those before them.
bool isPlainName(std::string_view name) {
  const char* const end = name.data() + name.size();
  if (name.size() < 8)
    return name.size() >= 4 && isPlain(load<std::uint32_t>(name.data()) << 32U | load<std::uint32_t>(end - 4));
  for (const char* at = name.data(); at < end - 8; at += 8)
    if (!isPlain(load<std::uint64_t>(at))) return false;
  return isPlain(load<std::uint64_t>(end - 8));
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
  explicit KeyTable(const std::vector<Construct>& constructs)
      : m_constructs(constructs), m_slots(std::bit_ceil(std::max<std::size_t>(constructs.size() * 2, 16))),
        m_shift(std::countl_zero(m_slots.size() - 1)) {}

  /// How many constructs have had the key by now, this one included.
  std::uint32_t add(std::string_view key, std::uint32_t construct) {
    for (auto at = hashOf(key) >> m_shift;; at = (at + 1) & (m_slots.size() - 1)) {
      if (m_slots[at] == 0) {
        m_slots[at] = construct + 1;
        return 1;
      }
      if (m_constructs[m_slots[at] - 1].kvid == key) return 1 + ++m_repetitions[m_slots[at]];
    }
  }

 private:
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
  std::vector<std::uint32_t> m_slots; ///< a construct's number from 1; 0: free
  int m_shift;
  std::unordered_map<std::uint32_t, std::uint32_t> m_repetitions; ///< by slot's content
};

/// Goes over the constructs in their order: groups come before what they hold, siblings as they are declared.
class KeyWriter {
 public:
  explicit KeyWriter(Analysis& analysis)
      : m_analysis(analysis), m_texts(*analysis.texts), m_lists(analysis.constructs.size()) {
    for (const auto& program : analysis.programs)
      m_programs.push_back(keyText(program.path) + ':');
  }

  std::vector<std::uint32_t> run() {
    std::vector<std::uint32_t> repeated;
    KeyTable seen(m_analysis.constructs);
    std::uint32_t i = 0;
    for (auto& item : m_analysis.constructs) {
      const auto index = i++;
      item.kvid = keyOf(item, m_lists[index]);
      if (item.kvid.size() > kLongest) {
        std::string key = item.kvid;
        shortenKey(key, kLongest);
        item.kvid = m_texts.keep(key);
      }
      auto times = seen.add(item.kvid, index);
      if (times == 1) continue;
      // A name may hold the sign itself: `A#2` beside two of `A`.
      const Text key = item.kvid;
      do {
        item.kvid = m_texts.keep(key + '#' + std::to_string(times++));
      } while (seen.add(item.kvid, index) > 1);
      repeated.push_back(index);
    }
    return repeated;
  }

 private:
  /// Items below one, or records of one section and file.
  struct List {
    std::string_view prefix = {}; ///< of their keys: names from the outermost in, each with a period behind
    std::string_view named = {};  ///< step to the last item that has a name; without an address: there is none
    std::uint32_t fillers = 0;    ///< behind that one
  };

  /// The key in full, without a sign of repetition. `below` is the list of what the item holds.
  Text keyOf(const Construct& item, List& below) {
    std::string_view prefix, step;
    List* list = nullptr;
    switch (item.kind) {
    case Kind::group:
    case Kind::elementary:
      list = &listOf(item);
      prefix = list->prefix;
      step = nameStep(item.name);
      break;
    case Kind::filler:
      return fillerKey(listOf(item), below);
    case Kind::renames:
    case Kind::condition:
      prefix = item.parent < 0 ? prefixOfRecords(item) : m_lists[static_cast<std::size_t>(item.parent)].prefix;
      step = nameStep(item.name);
      break;
    default:
      prefix = prefixOf(item);
      step = stepOutside(item);
    }
    const Text key = join(prefix, step);
    below.prefix = {key.data(), key.size() + 1};
    if (list != nullptr) {
      list->named = {key.data() + prefix.size(), step.size()};
      list->fillers = 0;
    }
    return key;
  }

  /// Which FILLER it is behind which named sibling; what it holds leaves it out.
  Text fillerKey(List& list, List& below) {
    using namespace std::string_view_literals;
    below.prefix = list.prefix;
    const auto named = list.named.data() != nullptr ? list.named : "^"sv;
    std::array<char, 10> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), ++list.fillers).ptr;
    return join(list.prefix, "~"sv, named, "+"sv, std::string_view(digits.data(), end));
  }

  /// The parts one behind the other, with a period behind the view that is given.
  template<typename... Part>
  Text join(const Part&... parts) {
    const std::size_t length = (parts.size() + ...);
    char* const key = m_texts.room(length + 1);
    char* end = key;
    ((end = std::copy(parts.begin(), parts.end(), end)), ...);
    *end = '.';
    return std::string_view(key, length);
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
    const Text key = join(prefixOf(item), nameStep(m_analysis.dataFiles[static_cast<std::size_t>(item.file)].name));
    return {key.data(), key.size() + 1};
  }

  /// Of what is no item.
  std::string_view stepOutside(const Construct& item) {
    switch (item.kind) {
    case Kind::index:
      return signedStep("@", item.name);
    case Kind::specialRegister:
      return signedStep("!REG.", item.name);
    case Kind::callSlot:
      return slotStep("!CALL.", item.name);
    case Kind::fileSlot:
      return slotStep("!FILE.", item.name);
    case Kind::undeclared:
      return undeclaredStep(item.name);
    default:
      return nameStep(item.name);
    }
  }

  std::string_view nameStep(std::string_view name) {
    return isPlainName(name) || isKeyText(name) ? name : signedStep({}, name);
  }

  std::string_view signedStep(std::string_view sign, std::string_view name) {
    m_step = sign;
    appendKey(m_step, name);
    return m_step;
  }

  /// `SUB(1)` is SUB.1.
  std::string_view slotStep(std::string_view sign, std::string_view name) {
    const auto open = name.rfind('(');
    if (open == std::string_view::npos || !name.ends_with(')')) return signedStep(sign, name);
    signedStep(sign, name.substr(0, open));
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
  TextArena& m_texts;
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
