#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "cobol/analysis.hpp"
#include "cobol/data_entry.hpp"
#include "cobol/picture.hpp"

namespace cobol {

/// Makes constructs of entries, in declaration order: the tree below each record, redefined and renamed items, copied
/// types, conditions, index names, constants; at the end of a program's entries the size of every elementary item.
class ItemTree {
 public:
  ItemTree(const TokenStream& stream, const Options& options, Analysis& analysis, Diagnostics& diagnostics);

  void beginProgram(int program, const PictureRules& rules);
  /// Records of a section; `file` is the FD, SD, RD or CD that they belong to, or -1.
  void beginSection(Section section, int file = -1);
  /// The construct made of the entry, or -1.
  int add(const DataEntry& entry);
  /// An item that no token declares: at the program's name, flagged implicit. Redefines names the item before it.
  struct MadeItem {
    int level = 0;
    std::string_view name = {}; ///< empty: FILLER
    std::string_view picture = {};
    Usage usage = Usage::none;
    std::uint32_t occurs = 0;
    bool redefinesLast = false;
  };
  int addMade(const MadeItem& item, std::uint32_t token);
  /// An item of a CD that a token declares, below the record made before.
  int addAt(const MadeItem& item, std::uint32_t nameToken);
  /// An index name of a table.
  void addIndex(std::uint32_t nameToken, int table);
  /// Constants that directives define, for a program that declares no such names itself.
  void addDefines();
  /// Sizes of everything added since beginProgram.
  void finish();

 private:
  /// What layout needs no more once sizes are known.
  struct Facts {
    Usage own = Usage::none;
    Representation held; ///< as its own clauses or those of its groups say
    bool syncBelow = false;
    bool noStorage = false;    ///< PictureMissing is no fault here
    std::uint32_t picture = 0; ///< in m_pictures
    std::uint32_t pictureToken = 0;
    std::int64_t fixedBytes = 0;
    std::int64_t literalLength = 0; ///< of an item that may take its length from there
    int lastChild = -1;
    int previousSameName = -1;
    NameId name = 0;
  };
  /// A program has many items and few pictures; items of one picture are mostly held alike as well.
  struct KnownPicture {
    std::string_view text;
    bool hasNames = false; ///< constants as counts in parentheses
    bool isShaped = false; ///< `shape` is that of items held like `held`
    Representation held;
    Shape shape;
  };

  /// Adds a construct of the section in hand. The reference holds until the next one is added.
  Construct& append();
  /// The same for an entry, with its name.
  Construct& append(const DataEntry& entry);
  /// Puts it below what it belongs to at level 01, which makes it global with that.
  void putInto(Construct& construct, int record) const;
  /// The innermost open item that one of the level belongs to; -1: none.
  int enclosing(int level) const;
  /// Lets REDEFINES, RENAMES and the like find the item.
  void makeKnown(int item, NameId name);
  /// The last child of a parent, of -1 the last record.
  int lastChild(int parent) const { return parent < 0 ? m_lastRoot : facts(parent).lastChild; }
  /// Makes an item the last child of its parent (-1: a record) and the one that following levels are measured by.
  void hang(int index, int parent);
  int addCondition(const DataEntry& entry);
  int addRenames(const DataEntry& entry);
  int addConstant(const DataEntry& entry);
  int addItem(const DataEntry& entry);
  void noteFacts(const DataEntry& entry, int parent, std::uint32_t picture);
  void setOccurs(const DataEntry& entry, int item);
  void setRedefines(const DataEntry& entry, int item);
  void copyType(const DataEntry& entry, int item);
  DataReference& refer(DataReference::Role role, std::uint32_t token, int construct);
  void referUses(const DataEntry& entry, int construct);
  void referPictureCounts(std::uint32_t token, int construct);
  int findSibling(NameId name, int parent) const;
  int findInRecord(std::uint32_t token, int record) const;
  int findAnywhere(std::uint32_t token, int except) const;
  bool qualifiersMatch(std::uint32_t token, int item) const;
  std::optional<std::int64_t> numberOf(std::uint32_t token) const;
  std::optional<std::int64_t> constantOf(std::uint32_t from, std::uint32_t to);
  std::optional<std::int64_t> lengthOf(std::uint32_t token);
  std::string_view valueText(std::uint32_t from, std::uint32_t to);
  /// The number of a picture, by the name id of its text.
  std::uint32_t pictureNumber(NameId name, std::string_view text) {
    const std::uint32_t known = m_pictureOf[name];
    return known != 0 ? known : addPicture(name, text);
  }
  std::uint32_t addPicture(NameId name, std::string_view text);
  std::uint32_t madePicture(std::string_view text);
  const Shape& knownShape(const Facts& facts) {
    KnownPicture& picture = m_pictures[facts.picture];
    if (!picture.isShaped || picture.held != facts.held) readShape(picture, facts);
    return picture.shape;
  }
  void readShape(KnownPicture& picture, const Facts& facts);
  void forgetShapes();
  /// False where no size can be trusted for want of a good picture.
  bool finishLeaf(Construct& construct, const Facts& facts);
  void remarkPicture(const Construct& construct, const Facts& facts);

  Construct& at(int index) { return m_analysis.constructs[static_cast<std::size_t>(index)]; }
  const Construct& at(int index) const { return m_analysis.constructs[static_cast<std::size_t>(index)]; }
  int last() const { return static_cast<int>(m_analysis.constructs.size()) - 1; }
  Facts& facts(int index) { return m_facts[static_cast<std::size_t>(index)]; }
  const Facts& facts(int index) const { return m_facts[static_cast<std::size_t>(index)]; }
  const Token& token(std::uint32_t index) const { return m_stream.tokens[index]; }
  void remark(Code code, Severity severity, std::uint32_t token, std::string_view text);

  const TokenStream& m_stream;
  const Options& m_options;
  Analysis& m_analysis;
  Diagnostics& m_diagnostics;
  PictureRules m_rules;
  std::vector<KnownPicture> m_pictures{1}; ///< behind an empty one
  std::string_view m_madeText;             ///< the picture of the item made last
  std::uint32_t m_madePicture = 0;         ///< and its number
  std::size_t m_begin = 0;                 ///< first construct of the program's entries
  Construct m_blank;    ///< what constructs of the section in hand begin as: program, section and file
  int m_innermost = -1; ///< the item added last; those around it are open as well
  int m_lastItem = -1;  ///< the item that conditions belong to
  int m_record = -1;
  int m_lastRoot = -1;
  std::size_t m_copied = 0;               ///< items made by copying types
  std::size_t m_measured = 0;             ///< items looked at for the sake of lengths in constants
  std::vector<Facts> m_facts;             ///< by construct
  std::vector<int> m_latest;              ///< by name id: the latest item of this name, -1: none
  std::vector<std::uint32_t> m_pictureOf; ///< by name id: the picture of this text, in m_pictures
  std::unordered_map<NameId, std::int64_t> m_constants;
};

} // namespace cobol
