#include "cobol/declared_relations.hpp"

#include "cobol/record_layout.hpp"

namespace cobol {
namespace {

class DeclaredRelations {
 public:
  explicit DeclaredRelations(Analysis& analysis) : m_analysis(analysis), m_roots(analysis) {}

  void run() {
    int index = 0;
    for (const auto& item : m_analysis.constructs) {
      const int i = index++;
      if (item.kind < Kind::condition || item.parent < 0) continue; // as most
      if (item.kind == Kind::condition) add(i, item.parent, RelationKind::Condition, item.declared);
      if (item.kind == Kind::index) add(i, item.parent, RelationKind::Index, item.declared);
    }
    for (const auto& reference : m_analysis.references) {
      if (reference.target < 0 || reference.construct < 0) continue;
      using Role = DataReference::Role;
      if (reference.role == Role::redefines)
        add(reference.construct, m_roots.of(reference.target), RelationKind::Redefinition, reference.at);
      const bool second = reference.role == Role::renamesLast;
      if (second &&
          m_analysis.constructs[static_cast<std::size_t>(reference.construct)].renamesFirst == reference.target)
        continue;
      if (second || reference.role == Role::renamesFirst)
        add(reference.construct, reference.target, RelationKind::Renaming, reference.at);
    }
  }

 private:
  void add(int from, int to, RelationKind kind, const Position& at) {
    if (from == to) return;
    m_analysis.relate(kind, static_cast<std::uint32_t>(from), static_cast<std::uint32_t>(to), at);
  }

  Analysis& m_analysis;
  RedefinitionRoots m_roots;
};

} // namespace

void addDeclaredRelations(Analysis& analysis) {
  DeclaredRelations(analysis).run();
}

} // namespace cobol
