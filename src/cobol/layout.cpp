#include "cobol/layout.hpp"

#include <optional>
#include <unordered_map>

#include "cobol/record_layout.hpp"

namespace cobol {
namespace {

/// Joins records that share storage.
class Areas {
 public:
  explicit Areas(std::size_t count) : m_above(count) {
    for (std::size_t i = 0; i < count; ++i)
      m_above[i] = static_cast<int>(i);
  }
  int find(int item) {
    while (above(item) != item) {
      above(item) = above(above(item));
      item = above(item);
    }
    return item;
  }
  void join(int a, int b) {
    a = find(a);
    b = find(b);
    // The earlier one leads, so areas come in the order of their first declaration.
    above(std::max(a, b)) = std::min(a, b);
  }

 private:
  int& above(int item) { return m_above[static_cast<std::size_t>(item)]; }
  std::vector<int> m_above;
};

class Layout {
 public:
  Layout(Analysis& analysis, const Options& options, Diagnostics& diagnostics)
      : m_analysis(analysis), m_options(options), m_layout(analysis, options, diagnostics),
        m_areas(analysis.constructs.size()) {}

  void run() {
    layOutRecords();
    join();
    place();
    if (m_variable >= 0) markVariable(static_cast<std::size_t>(m_variable));
    layOutWithoutStorage(m_analysis, m_options);
  }

 private:
  Construct& at(int index) { return m_analysis.constructs[static_cast<std::size_t>(index)]; }

  void layOutRecords() {
    std::vector<Construct*> renames;
    for (auto& item : m_analysis.constructs) {
      if (item.kind == Kind::renames) {
        renames.push_back(&item);
      } else if (item.hasStorage()) {
        if (item.parent < 0) m_records.push_back(static_cast<int>(&item - m_analysis.constructs.data()));
        if ((item.flags & variableSize) != 0 && m_variable < 0) m_variable = std::max(item.record, 0);
      }
    }
    for (const int record : m_records)
      m_layout.layOut(record);
    for (Construct* item : renames)
      placeRenames(*item);
  }

  void placeRenames(Construct& item) {
    if (item.renamesFirst < 0 || item.renamesLast < 0) {
      if (item.parent >= 0) item.position = at(item.parent).position; // no record in a copied type
      return;
    }
    const auto& first = at(item.renamesFirst);
    const auto& last = at(item.renamesLast);
    item.position = first.position;
    item.length = std::max<std::int64_t>(0, saturatingAdd(last.position, last.size) - first.position);
    item.size = item.length;
  }

  /// What shares an area.
  void join() {
    std::unordered_map<std::string_view, int> externals;
    for (const int i : m_records) {
      if (at(i).redefines >= 0) m_areas.join(i, at(at(i).redefines).record);
      if ((at(i).flags & external) != 0 && at(i).file < 0 && at(i).kind != Kind::filler) {
        const auto [found, isNew] = externals.try_emplace(at(i).name, i);
        if (!isNew) m_areas.join(found->second, i);
      }
    }
    std::unordered_map<std::string, int> externalFiles;
    for (const auto& file : m_analysis.dataFiles) {
      if (file.records.empty() || file.sort == DataFile::Sort::rd) continue;
      for (const int record : file.records)
        m_areas.join(file.records.front(), record);
      if (file.sharesAreaWith >= 0) {
        const auto& other = m_analysis.dataFiles[static_cast<std::size_t>(file.sharesAreaWith)];
        if (!other.records.empty()) m_areas.join(other.records.front(), file.records.front());
      }
      if (file.external) {
        const auto [found, isNew] = externalFiles.try_emplace(file.name, file.records.front());
        if (!isNew) m_areas.join(found->second, file.records.front());
      }
    }
  }

  /// Bases of the areas, then offsets of everything in them and dims.
  void place() {
    const auto bases = placeAreas();
    int record = -1, area = -1;
    std::int64_t base = 0;
    for (auto& item : m_analysis.constructs) {
      if (!item.hasStorage()) continue;
      if (item.record >= 0) {
        if (item.record != record) {
          record = item.record;
          area = at(m_areas.find(record)).area;
          base = bases[static_cast<std::size_t>(area)];
        }
        item.area = area;
        item.offset = saturatingAdd(base, item.position);
      }
      writeDims(item);
    }
  }

  /// Numbers the areas at their leading records; where each begins.
  std::vector<std::int64_t> placeAreas() {
    std::vector<std::int64_t> bases; // first the sizes
    for (const int i : m_records) {
      const int leader = m_areas.find(i);
      if (leader == i) {
        at(i).area = static_cast<int>(bases.size());
        bases.push_back(0);
      }
      auto& size = bases[static_cast<std::size_t>(at(leader).area)];
      size = std::max(size, at(i).size);
      if (at(i).file >= 0)
        size = std::max(size, m_analysis.dataFiles[static_cast<std::size_t>(at(i).file)].minimumSize);
    }
    std::int64_t next = 0;
    for (auto& base : bases) {
      const auto size = base;
      base = next >= kOffsetLimit ? kOffsetLimit : (next + 15) / 16 * 16;
      next = saturatingAdd(saturatingAdd(base, size), 16);
    }
    return bases;
  }

  /// Flag D: tables of variable count, the groups around them and what comes behind them. The readers flagged the
  /// tables; all that it can reach stands in their records.
  void markVariable(std::size_t from) {
    const auto count = m_analysis.constructs.size();
    std::vector<bool> holds(count), behind(count);
    for (auto i = from; i < count; ++i) {
      auto& item = m_analysis.constructs[i];
      if (!item.hasStorage() || item.kind == Kind::renames) continue;
      const auto parent = static_cast<std::size_t>(item.parent);
      if (item.redefines >= 0) {
        behind[i] = behind[static_cast<std::size_t>(m_layout.rootOf(static_cast<int>(i)))];
      } else {
        behind[i] = item.parent >= 0 && (behind[parent] || holds[parent]);
      }
      if ((item.flags & variableSize) == 0) continue;
      for (int up = item.parent; up >= 0 && !holds[static_cast<std::size_t>(up)]; up = at(up).parent)
        holds[static_cast<std::size_t>(up)] = true;
    }
    for (auto i = from; i < count; ++i)
      if (holds[i] || behind[i])
        m_analysis.constructs[i].flags = static_cast<std::uint16_t>(m_analysis.constructs[i].flags | variableSize);
  }

  void writeDims(Construct& item) {
    if (item.parent >= 0 && item.kind != Kind::renames) item.dims = at(item.parent).dims;
    if (!item.repeats) return;
    m_dims = item.dims;
    if (!m_dims.empty()) m_dims += ',';
    m_dims += std::to_string(item.occurs) + 'x' + std::to_string(item.length);
    item.dims = m_analysis.texts->keep(m_dims);
  }

  Analysis& m_analysis;
  const Options& m_options;
  RecordLayout m_layout;
  Areas m_areas;
  std::vector<int> m_records;
  int m_variable = -1; ///< the first record with a table of variable count
  std::string m_dims;  ///< the one in hand
};

struct AreasEnd {
  int areas = 0;
  std::int64_t offset = 0;
};

AreasEnd endOf(const std::vector<Construct>& constructs) {
  AreasEnd end;
  for (const auto& item : constructs) {
    if (item.area < 0) continue;
    end.areas = std::max(end.areas, item.area + 1);
    end.offset = std::max(end.offset, saturatingAdd(item.offset, item.size));
  }
  return end;
}

} // namespace

void layOut(Analysis& analysis, const Options& options, Diagnostics& diagnostics) {
  Layout(analysis, options, diagnostics).run();
}

void layOutWithoutStorage(Analysis& analysis, const Options& options) {
  std::optional<AreasEnd> end; // sought for the first register that needs an area
  std::int64_t without = 0;
  for (auto& item : analysis.constructs) {
    if (item.hasStorage() && item.area >= 0) continue; // a 66 without a record has none
    if (item.kind == Kind::specialRegister && item.length > 0) {
      if (item.area >= 0) continue;
      if (!end) end = endOf(analysis.constructs);
      item.area = end->areas++;
      item.size = item.length;
      item.offset = (saturatingAdd(end->offset, 16) + 15) / 16 * 16;
      end->offset = saturatingAdd(item.offset, item.size);
      continue;
    }
    item.offset = -++without;
    item.size = 0;
    if (item.kind != Kind::condition || !options.conditionStorage || item.parent < 0) continue;
    const auto& parent = analysis.constructs[static_cast<std::size_t>(item.parent)];
    item.offset = parent.offset;
    item.size = parent.size;
    item.area = parent.area;
  }
}

} // namespace cobol
