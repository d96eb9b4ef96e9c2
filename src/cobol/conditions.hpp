#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cobol {

/// Conditional compilation: which text counts, told by the directives met so far.
class Conditions {
 public:
  using Constants = std::map<std::string, std::string, std::less<>>;

  explicit Conditions(bool allBranches, Constants constants = {})
      : m_allBranches(allBranches), m_constants(std::move(constants)) {}

  enum class Outcome { done, otherDirective };
  /// Takes one directive, in capitals and without `>>` or `$`.
  Outcome take(std::string_view directive);
  /// What a directive DEFINE or CONSTANT defines, in capitals; `name` lies in `directive`.
  struct Definition {
    std::string_view name;
    std::string value; ///< empty where the directive does not tell it
  };
  static std::optional<Definition> definitionOf(std::string_view directive);
  /// Whether text that stands here counts.
  bool active() const { return m_inactive == 0 || m_allBranches; }
  /// Defined by now.
  const Constants& constants() const { return m_constants; }

 private:
  struct Level {
    bool taken = false; ///< a branch has been chosen
    bool active = false;
    bool evaluate = false;
    std::string subject; ///< of EVALUATE; empty: TRUE
  };
  void enter(Level level);
  void branch(bool holds);
  void leave();
  void define(std::string_view text);
  bool holdsWhen(const std::string& subject, std::string_view text) const;

  bool m_allBranches;
  std::size_t m_inactive = 0; ///< levels whose branch does not count
  std::vector<Level> m_levels;
  Constants m_constants;
};

/// Evaluates `A DEFINED AND B = 1 OR NOT (C > "x")`; an unknown constant is not defined and compares unequal.
bool holdsCondition(std::string_view condition, const Conditions::Constants& constants);

} // namespace cobol
