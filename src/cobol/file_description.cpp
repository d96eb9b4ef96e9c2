#include "cobol/file_description.hpp"

#include <array>

namespace cobol {
namespace {

using Role = DataReference::Role;

class DescriptionReader {
 public:
  explicit DescriptionReader(DescriptionContext& context) : m_context(context), m_cursor(context.cursor) {}

  void run() {
    const Word kind = m_cursor.word();
    m_cursor.next();
    if (!m_cursor.isWord()) return;
    open(kind);
    if (kind == Word::cd) {
      m_context.items.beginSection(Section::communication, m_file);
      communication();
    } else {
      while (!done())
        kind == Word::rd ? reportClause() : fileClause();
      m_context.items.beginSection(kind == Word::rd ? Section::report : Section::file, m_file);
    }
    m_cursor.skipPeriod();
  }

 private:
  DataFile& file() { return m_context.analysis.dataFiles[static_cast<std::size_t>(m_file)]; }

  void open(Word kind) {
    const Token& name = m_cursor.token();
    auto& files = m_context.environment.files;
    auto& all = m_context.analysis.dataFiles;
    const auto known = files.find(name.text);
    if (known != files.end()) {
      m_file = known->second;
    } else {
      m_file = static_cast<int>(all.size());
      all.push_back({});
      file().name = m_cursor.text();
      file().program = m_context.program;
      files[name.text] = m_file;
    }
    file().sort = kind == Word::sd   ? DataFile::Sort::sd
                  : kind == Word::rd ? DataFile::Sort::rd
                  : kind == Word::cd ? DataFile::Sort::cd
                                     : DataFile::Sort::fd;
    file().declared = name.position();
    m_name = m_cursor.index();
    m_cursor.next();
  }

  bool done() {
    if (m_cursor.atEnd() || m_cursor.isPeriod()) return true;
    const bool entry = m_cursor.kind() == TokenKind::number && m_cursor.token().has(lineStart) &&
                       m_cursor.kind(1) == TokenKind::word && m_cursor.word(1) == Word::none &&
                       (m_cursor.text() == "01" || m_cursor.text() == "1");
    const bool header = m_cursor.word(1) == Word::section || m_cursor.word(1) == Word::division;
    if (!entry && !header) return false;
    m_context.diagnostics.add(Code::PeriodMissing, Severity::warning, m_cursor.token().position(),
                              "period missing before this word");
    return true;
  }

  void refer(Role role) {
    if (const auto token = m_cursor.takeName())
      m_context.analysis.references.push_back({.role = role,
                                               .token = *token,
                                               .at = m_context.stream.tokens[*token].position(),
                                               .program = m_context.program,
                                               .file = m_file});
  }
  bool atUserWord() const { return m_cursor.isWord() && m_cursor.word() == Word::none; }

  void fileClause() {
    switch (m_cursor.word()) {
    case Word::global:
      file().global = true;
      return m_cursor.next();
    case Word::external:
      file().external = true;
      return m_cursor.next();
    case Word::record:
      return recordClause();
    case Word::block:
      return blockClause();
    case Word::label:
    case Word::data:
      m_cursor.next();
      if (!m_cursor.take(Word::record)) m_cursor.take(Word::dataRecords);
      m_cursor.take(Word::is);
      while (!done() && atUserWord())
        m_cursor.next();
      return;
    case Word::codeSet:
    case Word::recording:
      m_cursor.next();
      while (m_cursor.word() == Word::mode || m_cursor.word() == Word::is)
        m_cursor.next();
      if (atUserWord()) m_cursor.next();
      return;
    case Word::value:
      m_cursor.next();
      m_cursor.take(Word::of);
      while (!done() && atUserWord()) {
        m_cursor.next();
        m_cursor.take(Word::is);
        if (atUserWord()) {
          refer(Role::fileValue);
        } else {
          m_cursor.next();
        }
      }
      return;
    case Word::linage:
    case Word::footing:
    case Word::top:
    case Word::bottom:
      m_cursor.next();
      while (m_cursor.word() == Word::is || m_cursor.word() == Word::at)
        m_cursor.next();
      if (atUserWord()) refer(Role::linage);
      return;
    case Word::report:
    case Word::reports:
      m_cursor.next();
      m_cursor.take(Word::is);
      while (!done() && atUserWord())
        m_cursor.next();
      return;
    default:
      return m_cursor.next();
    }
  }

  /// Its RECORDS must not be taken for a RECORD clause.
  void blockClause() {
    m_cursor.next();
    m_cursor.take(Word::contains);
    m_cursor.takeInteger();
    if (m_cursor.take(Word::to)) m_cursor.takeInteger();
    if (m_cursor.take(Word::characters) || m_cursor.take(Word::dataRecords) || m_cursor.word() != Word::record) return;
    const Word following = m_cursor.word(1);
    const bool clause = following == Word::contains || following == Word::is || following == Word::varying ||
                        m_cursor.kind(1) == TokenKind::number;
    if (!clause) m_cursor.next();
  }

  void recordClause() {
    m_cursor.next();
    while (m_cursor.word() == Word::is || m_cursor.word() == Word::contains || m_cursor.word() == Word::varying ||
           m_cursor.word() == Word::in || m_cursor.word() == Word::size || m_cursor.word() == Word::from)
      m_cursor.next();
    const auto first = m_cursor.takeInteger();
    m_cursor.take(Word::characters);
    std::optional<std::int64_t> last;
    if (m_cursor.take(Word::to)) last = m_cursor.takeInteger();
    if (first || last) file().minimumSize = std::max(first.value_or(0), last.value_or(0));
    m_cursor.take(Word::characters);
    if (!m_cursor.take(Word::depending)) return;
    m_cursor.take(Word::on);
    refer(Role::recordVarying);
  }

  void reportClause() {
    switch (m_cursor.word()) {
    case Word::global:
      file().global = true;
      return m_cursor.next();
    case Word::controls:
      m_cursor.next();
      m_cursor.take(Word::is);
      m_cursor.take(Word::final);
      while (!done() && atUserWord())
        refer(Role::reportControl);
      return;
    default:
      return m_cursor.next();
    }
  }

  // Communication ----------------------------------------------------------------------------------------------------

  enum class Direction : std::uint8_t { input, output, both };
  struct Field {
    std::string_view picture = {};
    std::uint32_t token = 0; ///< 0: not named
  };

  void communication() {
    Direction direction = Direction::input;
    std::array<Field, 11> in{
        {{"X(12)"}, {"X(12)"}, {"X(12)"}, {"X(12)"}, {"9(6)"}, {"9(8)"}, {"X(12)"}, {"9(4)"}, {"X"}, {"XX"}, {"9(6)"}}};
    std::array<Field, 6> both{{{"9(6)"}, {"9(8)"}, {"X(12)"}, {"9(4)"}, {"X"}, {"XX"}}};
    // COUNT, LENGTH, STATUS; then ERROR KEY and DESTINATION of each entry
    std::array<Field, 5> out{{{"9(4)"}, {"9(4)"}, {"XX"}, {"X"}, {"X(12)"}}};
    std::uint32_t entries = 1;
    std::vector<std::uint32_t> indexNames;
    std::size_t unnamed = 0;
    const auto field = [&](std::size_t inPlace, std::size_t outPlace, std::size_t bothPlace) {
      m_cursor.next();
      while (!done() && !atUserWord())
        m_cursor.next();
      if (!atUserWord()) return;
      const auto token = m_cursor.index();
      m_cursor.next();
      if (direction == Direction::input && inPlace < in.size()) in[inPlace].token = token;
      if (direction == Direction::output && outPlace < out.size()) out[outPlace].token = token;
      if (direction == Direction::both && bothPlace < both.size()) both[bothPlace].token = token;
    };
    constexpr std::size_t kNone = 99;
    while (!done()) {
      switch (m_cursor.word()) {
      case Word::input:
        direction = Direction::input;
        m_cursor.next();
        break;
      case Word::output:
        direction = Direction::output;
        m_cursor.next();
        break;
      case Word::inputOutputMode:
        direction = Direction::both;
        m_cursor.next();
        break;
      case Word::queue:
        field(0, kNone, kNone);
        break;
      case Word::subQueue1:
        field(1, kNone, kNone);
        break;
      case Word::subQueue2:
        field(2, kNone, kNone);
        break;
      case Word::subQueue3:
        field(3, kNone, kNone);
        break;
      case Word::date:
        field(4, kNone, 0);
        break;
      case Word::time:
        field(5, kNone, 1);
        break;
      case Word::source:
        field(6, kNone, kNone);
        break;
      case Word::terminal:
        field(kNone, kNone, 2);
        break;
      case Word::length:
        field(7, 1, 3);
        break;
      case Word::end:
        field(8, kNone, 4);
        break;
      case Word::status:
        field(9, 2, 5);
        break;
      case Word::count:
        field(10, 0, kNone);
        break;
      case Word::error:
        field(kNone, 3, kNone);
        break;
      case Word::destination:
        if (m_cursor.word(1) == Word::count) {
          m_cursor.next();
        } else if (m_cursor.word(1) == Word::table) {
          m_cursor.next();
          m_cursor.next();
        } else {
          field(kNone, 4, kNone);
        }
        break;
      case Word::occurs:
        m_cursor.next();
        entries = static_cast<std::uint32_t>(std::clamp<std::int64_t>(m_cursor.takeInteger().value_or(1), 1, 100000));
        break;
      case Word::indexed:
        m_cursor.next();
        m_cursor.take(Word::by);
        while (atUserWord()) {
          indexNames.push_back(m_cursor.index());
          m_cursor.next();
        }
        break;
      case Word::filler:
        ++unnamed;
        m_cursor.next();
        break;
      default:
        // The short form: names alone, in the order of the record.
        if (atUserWord() && direction != Direction::output) {
          if (direction == Direction::input && unnamed < in.size()) in[unnamed++].token = m_cursor.index();
          if (direction == Direction::both && unnamed < both.size()) both[unnamed++].token = m_cursor.index();
        }
        m_cursor.next();
      }
    }
    auto& items = m_context.items;
    items.addMade({.level = 1}, m_name);
    if (direction == Direction::input) return make(in.data(), in.size(), 2);
    if (direction == Direction::both) return make(both.data(), both.size(), 2);
    make(out.data(), 3, 2);
    const int table = items.addMade({.level = 2, .occurs = entries}, m_name);
    for (const auto index : indexNames)
      items.addIndex(index, table);
    make(out.data() + 3, 2, 3);
  }

  void make(const Field* fields, std::size_t count, int level) {
    for (std::size_t i = 0; i < count; ++i) {
      const Field& field = fields[i];
      if (field.token == 0) {
        m_context.items.addMade({.level = level, .picture = field.picture}, m_name);
      } else {
        const auto name = m_context.stream.textOf(m_context.stream.tokens[field.token]);
        m_context.items.addAt({.level = level, .name = name, .picture = field.picture}, field.token);
      }
    }
  }

  DescriptionContext& m_context;
  TokenCursor& m_cursor;
  int m_file = -1;
  std::uint32_t m_name = 0; ///< token of the description's name
};

} // namespace

void readFileDescription(DescriptionContext& context) {
  DescriptionReader(context).run();
}

} // namespace cobol
