#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "cobol/analysis.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// Finds the constructs that a written name means, by name id: the own program first, then the GLOBAL names of the
/// containing programs, nearest first, then the special registers. Qualifiers must stand in the ancestor chain, in
/// order; a file's, report's or communication description's name ends the chain.
class Resolver {
 public:
  static constexpr std::uint32_t kNone = 0xFFFFFFFFU; ///< no construct

  Resolver(const TokenStream& stream, Analysis& analysis);

  /// Names are looked up as this program sees them until the next call.
  void enterProgram(int program);
  int program() const { return m_program; }

  /// The construct of a name that the program entered declares only once, so that nothing else can be meant; else
  /// kNone.
  std::uint32_t declaredOnce(NameId name) const {
    const std::uint32_t head = m_head[name];
    return head != kNone && m_next[head] == kNone ? head : kNone;
  }
  /// Appends every candidate to `found`, in declaration order; more than one means an ambiguous name.
  void find(NameId name, std::span<const NameId> qualifiers, std::vector<std::uint32_t>& found);

  /// Whether the own program or a containing one declares the name as a data item, condition, index or constant.
  bool isDeclared(NameId name) const;
  /// The nearest ancestor of the name; kNone: there is none, so a file's name was meant.
  std::uint32_t ancestorNamed(std::uint32_t construct, NameId name) const {
    int at = m_analysis.constructs[construct].parent;
    while (at >= 0 && m_names[static_cast<std::size_t>(at)] != name)
      at = m_analysis.constructs[static_cast<std::size_t>(at)].parent;
    return at >= 0 ? static_cast<std::uint32_t>(at) : kNone;
  }

  /// Whether SPECIAL-NAMES gives the name to something that is no construct: a mnemonic, class, alphabet, character.
  bool isOtherName(NameId name) const;
  /// Whether the program or one around it has a REPOSITORY of functions.
  bool hasRepository() const { return m_hasRepository; }
  /// Whether REPOSITORY lets the name stand for a function without the word FUNCTION in front.
  bool isFunction(NameId name) const { return m_hasRepository && isInRepository(name); }
  /// The file, report or communication description of that name as the program sees it; -1: none.
  int findFile(NameId name) const;

  /// The file that holds the construct's record; -1: none.
  int fileOf(std::uint32_t construct) const;

  /// The construct of kind `??` for a name that nothing declares; one per program and written qualified name.
  std::uint32_t undeclared(NameId name, std::span<const NameId> qualifiers, std::uint32_t token);
  /// The slot `PROGRAM(k)`; `k` 0 is the returned value, -1 the communication area, written `CA`.
  std::uint32_t callSlot(std::string_view program, int k, std::uint32_t token);
  /// The slot of an external file name.
  std::uint32_t fileSlot(std::string_view name, std::uint32_t token);

 private:
  /// Constructs of one program that follow each other.
  struct Run {
    std::uint32_t begin;
    std::uint32_t end;
  };
  using Chain = std::unordered_map<std::uint64_t, std::uint32_t>;

  /// Makes the names of a program's constructs those that are looked up first; `leave` forgets them.
  void enter(const std::vector<Run>& own);
  void leave(const std::vector<Run>& own);
  /// Own candidates of a name that the program declares very often: only the subtrees of the last qualifier are
  /// searched, and what was found is kept.
  void collectAmongMany(NameId name, std::span<const NameId> qualifiers, std::vector<std::uint32_t>& found);
  void findSubtrees();
  bool isDeclaredOften(NameId name) const;
  NameId idOf(const Construct& construct) const;
  void collect(std::uint32_t head, std::span<const NameId> qualifiers, bool globalOnly,
               std::vector<std::uint32_t>& found);
  bool matches(std::uint32_t construct, std::span<const NameId> qualifiers, bool& whole) const;
  bool isGlobal(std::uint32_t construct) const;
  bool isInRepository(NameId name) const;
  std::uint32_t specialRegister(NameId name);
  std::uint32_t make(Kind kind, std::string_view name, std::uint32_t token);
  void append(const Construct& construct);

  const TokenStream& m_stream;
  Analysis& m_analysis;
  int m_program = -1;
  bool m_hasRepository = false;              ///< of functions, in the program entered or around it
  std::vector<NameId> m_names;               ///< of every construct
  std::vector<NameId> m_fileNames;           ///< of every data file
  std::vector<std::uint32_t> m_next;         ///< the next construct of the same name in the same program
  std::vector<std::vector<Run>> m_ofProgram; ///< its constructs in declaration order
  std::vector<std::uint32_t> m_subtreeEnd;   ///< one behind the last construct below each; once it is needed
  std::unordered_map<NameId, std::vector<std::uint32_t>> m_occurrences; ///< of names declared often, in this program
  std::map<std::vector<NameId>, std::vector<std::uint32_t>>
      m_foundBefore;                                     ///< name and qualifiers: such names' candidates
  std::vector<std::uint32_t> m_head;                     ///< by name id: first construct of the program entered
  Chain m_globalHead;                                    ///< program and name: first, for programs that contain others
  std::unordered_map<std::uint64_t, int> m_files;        ///< program and name
  std::unordered_map<std::string, std::uint32_t> m_made; ///< by program, kind and name
  std::string m_key;                                     ///< of what is looked up among them
  std::string m_written;                                 ///< name of the construct that is asked for
  std::unordered_map<std::uint64_t, std::uint32_t> m_registers; ///< outermost program and name
};

} // namespace cobol
