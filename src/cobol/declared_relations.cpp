#include "cobol/declared_relations.hpp"

#include "cobol/record_layout.hpp"

namespace cobol {
namespace {

class DeclaredRelations {
 public:
  explicit DeclaredRelations(Analysis& analysis) : m_analysis(analysis), m_roots(redefinitionRoots(analysis)) {}

  void run() {
    for (std::size_t i = 0; i < m_analysis.constructs.size(); ++i) {
      const auto& item = m_analysis.constructs[i];
      if (item.parent < 0) continue;
      if (item.kind == Kind::condition) add(static_cast<int>(i), item.parent, RelationKind::Condition, item.declared);
      if (item.kind == Kind::index) add(static_cast<int>(i), item.parent, RelationKind::Index, item.declared);
    }
    for (const auto& reference : m_analysis.references) {
      if (reference.target < 0 || reference.construct < 0) continue;
      using Role = DataReference::Role;
      if (reference.role == Role::redefines)
        add(reference.construct, rootOf(reference.target), RelationKind::Redefinition, reference.at);
      const bool second = reference.role == Role::renamesLast;
      if (second &&
          m_analysis.constructs[static_cast<std::size_t>(reference.construct)].renamesFirst == reference.target)
        continue;
      if (second || reference.role == Role::renamesFirst)
        add(reference.construct, reference.target, RelationKind::Renaming, reference.at);
    }
  }

 private:
  int rootOf(int item) const { return m_roots[static_cast<std::size_t>(item)]; }
  void add(int from, int to, RelationKind kind, const Position& at) {
    if (from == to) return;
    m_analysis.relate(kind, static_cast<std::uint32_t>(from), static_cast<std::uint32_t>(to), at);
  }

  Analysis& m_analysis;
  const std::vector<int> m_roots;
};

} // namespace

void addDeclaredRelations(Analysis& analysis) {
  DeclaredRelations(analysis).run();
}

} // namespace cobol
