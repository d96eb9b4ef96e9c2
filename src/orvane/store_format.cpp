#include "orvane/store_format.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <numeric>

#include <fmt/format.h>

#include "cobol/keywords.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

constexpr std::string_view kMagic = "KVA\x02\r\n\x1a\n";
constexpr std::string_view kEarlierMagic = "KVA\x01\r\n\x1a\n";

std::uint64_t checksum(std::string_view bytes) {
  std::uint64_t sum = 14695981039346656037ULL;
  for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), 8);
    sum = (sum ^ word) * 1099511628211ULL;
    sum ^= sum >> 29;
  }
  for (const char c : bytes)
    sum = (sum ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  return sum;
}

class Writer {
 public:
  template<typename T>
  void value(const T& item) {
    m_bytes.append(reinterpret_cast<const char*>(&item), sizeof item);
  }
  template<typename T>
  void table(const std::vector<T>& items) {
    value(static_cast<std::uint64_t>(items.size()));
    m_bytes.append(reinterpret_cast<const char*>(items.data()), items.size() * sizeof(T));
  }
  void bytes(std::string_view bytes) { m_bytes.append(bytes); }
  std::string take() { return std::move(m_bytes); }

 private:
  std::string m_bytes;
};

class Reader {
 public:
  Reader(std::string_view bytes, const std::string& path) : m_bytes(bytes), m_path(path) {}
  template<typename T>
  void value(T& item) {
    need(sizeof item);
    std::memcpy(&item, m_bytes.data(), sizeof item);
    m_bytes.remove_prefix(sizeof item);
  }
  template<typename T>
  void table(std::vector<T>& items) {
    std::uint64_t count = 0;
    value(count);
    if (count > m_bytes.size() / sizeof(T)) damaged();
    items.resize(count);
    if (count > 0) std::memcpy(static_cast<void*>(items.data()), m_bytes.data(), count * sizeof(T));
    m_bytes.remove_prefix(count * sizeof(T));
  }
  std::string_view bytes(std::size_t count) {
    need(count);
    const std::string_view part = m_bytes.substr(0, count);
    m_bytes.remove_prefix(count);
    return part;
  }
  [[noreturn]] void damaged() const {
    throw platform::FileError(m_path, "the analysis file is damaged; verify the program again");
  }

 private:
  void need(std::size_t count) const {
    if (count > m_bytes.size()) damaged();
  }
  std::string_view m_bytes;
  const std::string& m_path;
};

// Texts are kept once. The table of ids has no texts of its own: it looks at those in the data.
class TextTable {
 public:
  TextTable(StoreData& data, std::size_t expected) : m_data(data), m_slots(std::bit_ceil(2 * expected + 16), kFree) {
    id("");
  }
  TextId id(std::string_view text) {
    if (2 * m_data.textEnds.size() >= m_slots.size()) grow();
    TextId& slot = slotOf(text);
    if (slot != kFree) return slot;
    slot = static_cast<TextId>(m_data.textEnds.size());
    m_data.textBytes += text;
    m_data.textEnds.push_back(static_cast<std::uint32_t>(m_data.textBytes.size()));
    return slot;
  }

 private:
  static constexpr TextId kFree = std::numeric_limits<TextId>::max();

  TextId& slotOf(std::string_view text) {
    std::size_t at = std::hash<std::string_view>()(text);
    for (;; ++at) {
      TextId& slot = m_slots[at & (m_slots.size() - 1)];
      if (slot == kFree || m_data.text(slot) == text) return slot;
    }
  }
  void grow() {
    m_slots.assign(2 * m_slots.size(), kFree);
    for (TextId id = 0; id < m_data.textEnds.size(); ++id)
      slotOf(m_data.text(id)) = id;
  }

  StoreData& m_data;
  std::vector<TextId> m_slots; ///< open addressing, size a power of two
};

PlaceRecord packed(const cobol::Position& at) {
  return {at.file, at.line, at.column, at.length};
}

ConstructRecord packed(const cobol::Construct& construct, TextTable& texts) {
  ConstructRecord record;
  record.offset = construct.offset;
  record.size = construct.size;
  record.position = construct.position;
  record.length = construct.length;
  record.kvid = texts.id(construct.kvid);
  record.name = texts.id(construct.name);
  record.picture = texts.id(construct.picture);
  record.usage = texts.id(construct.usage);
  record.value = texts.id(construct.value);
  record.dims = texts.id(construct.dims);
  record.parent = construct.parent;
  record.record = construct.record;
  record.redefines = construct.redefines;
  record.level = construct.level;
  record.digits = construct.digits;
  record.scale = construct.scale;
  record.occurs = construct.occurs;
  record.flags = construct.flags;
  record.declared = packed(construct.declared);
  record.kind = static_cast<std::uint8_t>(construct.kind);
  record.section = static_cast<std::uint8_t>(construct.section);
  record.isSigned = construct.isSigned ? 1 : 0;
  record.repeats = construct.repeats ? 1 : 0;
  return record;
}

// Instances grouped by construct, usages in front, in text order.
void packInstances(const cobol::Analysis& analysis, StoreData& data, TextTable& texts) {
  for (const auto& instance : analysis.instances) {
    ConstructRecord& owner = data.constructs[instance.construct];
    ++owner.instances;
    if (instance.isUsage()) ++owner.usages;
  }
  std::uint32_t next = 0;
  for (auto& owner : data.constructs) {
    owner.firstInstance = next;
    next += owner.instances;
  }
  data.instances.resize(next);
  std::vector<std::uint32_t> usageAt(data.constructs.size());
  std::vector<std::uint32_t> otherAt(data.constructs.size());
  for (std::size_t i = 0; i < data.constructs.size(); ++i) {
    usageAt[i] = data.constructs[i].firstInstance;
    otherAt[i] = data.constructs[i].firstInstance + data.constructs[i].usages;
  }
  for (const auto& instance : analysis.instances) {
    auto& at = instance.isUsage() ? usageAt[instance.construct] : otherAt[instance.construct];
    data.instances[at++] = {instance.construct, packed(instance.at),
                            texts.id(cobol::textOf(cobol::keywordOf(instance.verb))),
                            static_cast<std::uint8_t>(instance.access), instance.further};
  }
}

void packFurther(const cobol::FurtherPlaces& further, StoreData& data) {
  for (std::size_t list = 0; list < further.size(); ++list) {
    for (const auto& place : further.of(static_cast<std::uint16_t>(list)))
      data.furtherPlaces.push_back(packed(place));
    data.furtherEnds.push_back(static_cast<std::uint32_t>(data.furtherPlaces.size()));
  }
}

void packRelations(const cobol::Analysis& analysis, StoreData& data) {
  data.relations.reserve(analysis.relationships.size());
  for (const auto& relation : analysis.relationships) {
    data.relations.push_back({relation.from, relation.to, static_cast<std::uint32_t>(relation.kind), relation.firstSite,
                              relation.siteCount});
  }
  data.sites.reserve(analysis.sites.size());
  for (const auto& site : analysis.sites)
    data.sites.push_back(packed(site));
}

// Every index that a reader follows must lie inside its table.
bool consistent(const StoreData& data) {
  const auto textOk = [&](TextId id) { return id < data.textEnds.size(); };
  const auto fileOk = [&](const PlaceRecord& place) { return data.files.empty() || place.file < data.files.size(); };
  if (data.textEnds.empty() || data.textEnds.back() != data.textBytes.size() ||
      !std::is_sorted(data.textEnds.begin(), data.textEnds.end()))
    return false;
  if (data.byKvid.size() != data.constructs.size()) return false;
  for (const auto& c : data.constructs) {
    const auto indexOk = [&](std::int32_t i) {
      return i >= -1 && i < static_cast<std::int32_t>(data.constructs.size());
    };
    if (!textOk(c.kvid) || !textOk(c.name) || !textOk(c.picture) || !textOk(c.usage) || !textOk(c.value) ||
        !textOk(c.dims))
      return false;
    if (!indexOk(c.parent) || !indexOk(c.record) || !indexOk(c.redefines) || !fileOk(c.declared)) return false;
    if (std::uint64_t{c.firstInstance} + c.instances > data.instances.size() || c.usages > c.instances) return false;
  }
  for (const auto index : data.byKvid)
    if (index >= data.constructs.size()) return false;
  for (const auto& i : data.instances)
    if (i.construct >= data.constructs.size() || !fileOk(i.place) || !textOk(i.verb) ||
        (i.further != 0 && i.further >= data.furtherEnds.size()))
      return false;
  if (!std::is_sorted(data.furtherEnds.begin(), data.furtherEnds.end()) ||
      (data.furtherEnds.empty() ? 0 : data.furtherEnds.back()) != data.furtherPlaces.size() ||
      !std::all_of(data.furtherPlaces.begin(), data.furtherPlaces.end(), fileOk))
    return false;
  for (const auto& r : data.relations)
    if (r.from >= data.constructs.size() || r.to >= data.constructs.size() ||
        std::uint64_t{r.firstSite} + r.sites > data.sites.size())
      return false;
  for (const auto& f : data.files)
    if (!textOk(f.path) || !textOk(f.encoding)) return false;
  for (const auto& p : data.places)
    if (!textOk(p.kindWord) || !textOk(p.name) || !fileOk(p.place)) return false;
  for (const auto& d : data.diagnostics)
    if (!textOk(d.text)) return false;
  for (const auto& c : data.copies)
    if (!textOk(c.name) || !textOk(c.library)) return false;
  return true;
}

} // namespace

int StoreData::find(std::string_view kvid) const {
  const auto found =
      std::lower_bound(byKvid.begin(), byKvid.end(), kvid, [this](std::uint32_t index, std::string_view key) {
        return text(constructs[index].kvid) < key;
      });
  return found != byKvid.end() && text(constructs[*found].kvid) == kvid ? static_cast<int>(*found) : -1;
}

StoreData packAnalysis(const cobol::Analysis& analysis, std::uint64_t generation,
                       const std::function<std::string(const std::string&)>& storedPath) {
  StoreData data;
  TextTable texts(data, 2 * analysis.constructs.size() + analysis.places.size());
  data.generation = generation;
  data.statements = analysis.statements;
  data.statementsUnderstood = analysis.statementsUnderstood;
  for (const auto& file : analysis.files)
    data.files.push_back({texts.id(storedPath(file.path)), texts.id(file.encoding), file.size, file.hash, file.lines,
                          static_cast<std::uint32_t>(file.format)});
  data.constructs.reserve(analysis.constructs.size());
  for (const auto& construct : analysis.constructs)
    data.constructs.push_back(packed(construct, texts));
  data.byKvid.resize(data.constructs.size());
  std::iota(data.byKvid.begin(), data.byKvid.end(), 0U);
  std::sort(data.byKvid.begin(), data.byKvid.end(), [&](std::uint32_t a, std::uint32_t b) {
    return analysis.constructs[a].kvid < analysis.constructs[b].kvid;
  });
  packInstances(analysis, data, texts);
  packFurther(analysis.further, data);
  packRelations(analysis, data);
  for (const auto& place : analysis.places)
    data.places.push_back({texts.id(place.kindWord), texts.id(place.name), packed(place.at)});
  for (const auto& remark : analysis.diagnostics)
    data.diagnostics.push_back({static_cast<std::uint32_t>(remark.code), static_cast<std::uint32_t>(remark.severity),
                                packed(remark.at), texts.id(platform::toValidUtf8(remark.text))});
  for (const auto& copy : analysis.copies)
    data.copies.push_back({texts.id(copy.name), texts.id(copy.library), copy.file, packed(copy.at)});
  return data;
}

std::string storeBytes(const StoreData& data) {
  Writer out;
  out.bytes(kMagic);
  out.value(data.generation);
  out.value(data.statements);
  out.value(data.statementsUnderstood);
  out.table(data.files);
  out.table(data.constructs);
  out.table(data.byKvid);
  out.table(data.instances);
  out.table(data.furtherEnds);
  out.table(data.furtherPlaces);
  out.table(data.relations);
  out.table(data.sites);
  out.table(data.places);
  out.table(data.diagnostics);
  out.table(data.copies);
  out.table(data.textEnds);
  out.value(static_cast<std::uint64_t>(data.textBytes.size()));
  out.bytes(data.textBytes);
  std::string bytes = out.take();
  const std::uint64_t sum = checksum(bytes);
  bytes.append(reinterpret_cast<const char*>(&sum), sizeof sum);
  return bytes;
}

StoreData readStoreBytes(std::string_view bytes, const std::string& path) {
  Reader whole(bytes, path);
  std::uint64_t sum = 0;
  const bool earlier = bytes.starts_with(kEarlierMagic);
  if (bytes.size() < kMagic.size() + sizeof sum || !(earlier || bytes.starts_with(kMagic))) whole.damaged();
  const std::string_view content = bytes.substr(0, bytes.size() - sizeof sum);
  std::memcpy(&sum, bytes.data() + content.size(), sizeof sum);
  if (sum != checksum(content)) whole.damaged();
  Reader in(content.substr(kMagic.size()), path);
  StoreData data;
  in.value(data.generation);
  in.value(data.statements);
  in.value(data.statementsUnderstood);
  in.table(data.files);
  in.table(data.constructs);
  in.table(data.byKvid);
  in.table(data.instances);
  if (!earlier) {
    in.table(data.furtherEnds);
    in.table(data.furtherPlaces);
  }
  in.table(data.relations);
  in.table(data.sites);
  in.table(data.places);
  in.table(data.diagnostics);
  in.table(data.copies);
  in.table(data.textEnds);
  std::uint64_t length = 0;
  in.value(length);
  data.textBytes = std::string(in.bytes(length));
  if (!consistent(data)) in.damaged();
  return data;
}

StoreData readStore(const std::string& path) {
  return readStoreBytes(platform::readText(path), path);
}

std::string_view kindWord(std::uint8_t kind) {
  static constexpr std::string_view kWords[] = {"group",     "item",      "filler",    "renames",
                                                "condition", "switch",    "constant",  "index",
                                                "register",  "call-slot", "file-slot", "undeclared"};
  return kind < std::size(kWords) ? kWords[kind] : "";
}

std::string_view sectionWord(std::uint8_t section) {
  static constexpr std::string_view kWords[] = {"",        "file",          "working-storage", "local-storage",
                                                "linkage", "communication", "report",          "screen"};
  return section < std::size(kWords) ? kWords[section] : "";
}

std::string flagLetters(std::uint32_t flags) {
  static constexpr std::string_view kLetters = "GEYJBDMUR";
  std::string letters;
  for (std::size_t i = 0; i < kLetters.size(); ++i)
    if (flags & (1U << i)) letters += kLetters[i];
  return letters;
}

} // namespace orvane
