#include "cobol/environment.hpp"

#include "cobol/characters.hpp"

#include "cobol/token_cursor.hpp"

namespace cobol {
namespace {

/// An assignment name without label and organisation: `UT-S-CUSTIN` and `AS-CUSTIN` are CUSTIN.
std::string withoutPrefix(std::string name) {
  static constexpr std::string_view kPrefixes[] = {"S", "AS", "UT", "UR", "DA", "DK", "MS", "I", "R", "D", "W"};
  const auto isPrefix = [](std::string_view part) {
    for (const auto prefix : kPrefixes)
      if (part == prefix) return true;
    return part.size() == 6 && part.starts_with("SYS");
  };
  for (auto dash = name.find('-'); dash != std::string::npos && dash + 1 < name.size(); dash = name.find('-')) {
    if (!isPrefix(std::string_view(name).substr(0, dash))) {
      // A label may stand in front of the organisation: `CUST-AS-CUSTIN`.
      const auto next = name.find('-', dash + 1);
      if (next == std::string::npos || !isPrefix(std::string_view(name).substr(dash + 1, next - dash - 1))) break;
    }
    name.erase(0, dash + 1);
  }
  return name;
}

class EnvironmentReader {
 public:
  EnvironmentReader(const TokenStream& stream, TokenCursor cursor, int program, const Options& options,
                    Environment& environment, Analysis& analysis)
      : m_stream(stream), m_cursor(cursor), m_program(program), m_options(options), m_environment(environment),
        m_analysis(analysis) {}

  void run() {
    while (!m_cursor.atEnd()) {
      switch (m_cursor.word()) {
      case Word::sourceComputer:
        sourceComputer();
        break;
      case Word::specialNames:
        specialNames();
        break;
      case Word::repository:
        repository();
        break;
      case Word::select:
        select();
        break;
      case Word::same:
        same();
        break;
      default:
        m_cursor.next();
        break;
      }
    }
  }

 private:
  Program& program() { return m_analysis.programs[static_cast<std::size_t>(m_program)]; }

  void refer(DataReference::Role role, std::optional<std::uint32_t> token, int file = -1) {
    if (!token) return;
    m_analysis.references.push_back(
        {.role = role, .token = *token, .at = m_stream.tokens[*token].position(), .program = m_program, .file = file});
  }

  void sourceComputer() {
    m_cursor.next();
    m_cursor.skipPeriod();
    for (; !m_cursor.atEnd() && !m_cursor.isPeriod(); m_cursor.next())
      if (m_cursor.word() == Word::debugging) program().debugging = true;
  }

  /// FUNCTION name … [INTRINSIC], FUNCTION ALL INTRINSIC; classes and programs need nothing.
  void repository() {
    m_cursor.next();
    m_cursor.skipPeriod();
    bool functions = false;
    for (; !m_cursor.atEnd() && !m_cursor.isPeriod(); m_cursor.next()) {
      if (!m_cursor.isWord()) continue;
      if (m_cursor.word() == Word::function || m_cursor.word() == Word::class_ || m_cursor.word() == Word::program) {
        functions = m_cursor.word() == Word::function;
      } else if (functions && m_cursor.word() == Word::all) {
        program().intrinsicsNeedNoWord = true;
      } else if (functions) {
        program().functions.push_back(m_cursor.token().text);
      }
    }
  }

  // SPECIAL-NAMES ----------------------------------------------------------------------------------------------------

  bool atParagraph() const {
    switch (m_cursor.word()) {
    case Word::inputOutput:
    case Word::fileControl:
    case Word::repository:
    case Word::select:
    case Word::ioControl:
    case Word::objectComputer:
    case Word::sourceComputer:
      return true;
    default:
      return false;
    }
  }

  void specialNames() {
    m_cursor.next();
    while (!m_cursor.atEnd() && !atParagraph()) {
      switch (m_cursor.word()) {
      case Word::currency:
        currency();
        break;
      case Word::decimalPoint:
        m_cursor.next();
        m_cursor.take(Word::is);
        if (m_cursor.take(Word::comma)) m_environment.pictures.decimalComma = program().decimalComma = true;
        break;
      case Word::crt:
        m_cursor.next();
        if (!m_cursor.take(Word::status)) break;
        m_cursor.take(Word::is);
        refer(DataReference::Role::crtStatus, m_cursor.takeName());
        break;
      case Word::cursor:
        m_cursor.next();
        m_cursor.take(Word::is);
        refer(DataReference::Role::cursor, m_cursor.takeName());
        break;
      case Word::on:
      case Word::off:
        switchCondition();
        break;
      case Word::symbolic:
        symbolicCharacters();
        break;
      case Word::alphabet:
      case Word::class_:
        m_cursor.next();
        otherName();
        break;
      case Word::is:
        m_cursor.next();
        otherName();
        break;
      default:
        mnemonic();
        break;
      }
    }
  }

  void otherName() {
    if (!m_cursor.isWord() || m_cursor.word() != Word::none) return;
    program().otherNames.push_back(m_cursor.token().text);
    m_cursor.next();
  }

  /// `SYSOUT LISTING` gives a mnemonic without IS; words that follow each other otherwise end in one as well.
  void mnemonic() {
    const bool system = m_cursor.isWord() && m_cursor.word() == Word::none;
    m_cursor.next();
    if (system && m_cursor.isWord() && m_cursor.word() == Word::none) otherName();
  }

  void currency() {
    m_cursor.next();
    m_cursor.take(Word::sign);
    m_cursor.take(Word::is);
    if (m_cursor.kind() != TokenKind::literal) return;
    const auto text = m_cursor.text();
    m_cursor.next();
    PictureRules::Currency currency{.symbol = text.empty() ? '$' : text.front(), .length = 1};
    m_cursor.take(Word::with);
    if (m_cursor.take(Word::pic)) {
      m_cursor.take(Word::symbol);
      if (m_cursor.kind() == TokenKind::literal && !m_cursor.text().empty()) {
        currency.symbol = m_cursor.text().front();
        currency.length = static_cast<int>(std::max<std::size_t>(text.size(), 1));
        m_cursor.next();
      }
    }
    if (currency.symbol >= 'a' && currency.symbol <= 'z')
      currency.symbol = static_cast<char>(currency.symbol - 'a' + 'A');
    m_environment.pictures.currencies.push_back(currency);
  }

  void switchCondition() {
    const bool isOn = m_cursor.word() == Word::on;
    m_cursor.next();
    m_cursor.take(Word::status);
    m_cursor.take(Word::is);
    if (!m_cursor.isWord()) return;
    Construct construct;
    construct.name = m_cursor.text();
    construct.kind = Kind::switchName;
    construct.program = m_program;
    construct.value = isOn ? "ON" : "OFF";
    construct.declared = m_cursor.token().position();
    construct.token = m_cursor.index();
    if (m_cursor.token().has(replaced)) construct.flags |= nameReplaced;
    m_analysis.constructs.push_back(std::move(construct));
    m_cursor.next();
  }

  void symbolicCharacters() {
    m_cursor.next();
    m_cursor.take(Word::characters);
    for (bool names = true; !m_cursor.atEnd() && !m_cursor.isPeriod();) {
      if (m_cursor.isWord() && m_cursor.word() == Word::none && names) {
        otherName();
      } else if (m_cursor.word() == Word::is || m_cursor.kind() == TokenKind::number) {
        m_cursor.next();
      } else {
        return;
      }
    }
  }

  // FILE-CONTROL -----------------------------------------------------------------------------------------------------

  void select() {
    m_cursor.next();
    m_cursor.take(Word::optional);
    if (!m_cursor.isWord()) return;
    const int file = static_cast<int>(m_analysis.dataFiles.size());
    DataFile description;
    description.name = m_cursor.text();
    description.program = m_program;
    description.declared = m_cursor.token().position();
    m_environment.files[m_cursor.token().text] = file;
    m_cursor.next();
    m_analysis.dataFiles.push_back(std::move(description));
    while (!m_cursor.atEnd() && !m_cursor.isPeriod() && m_cursor.word() != Word::select)
      clause(file);
    m_cursor.skipPeriod();
  }

  void clause(int file) {
    DataFile& description = m_analysis.dataFiles[static_cast<std::size_t>(file)];
    using Role = DataReference::Role;
    switch (m_cursor.word()) {
    case Word::assign:
      return assign(file);
    case Word::organization:
      m_cursor.next();
      m_cursor.take(Word::is);
      return organization(description);
    case Word::sequential:
    case Word::indexed:
    case Word::line:
      return organization(description);
    case Word::relative:
      if (m_cursor.word(1) == Word::key || m_cursor.word(1) == Word::is || description.organisation == "RELATIVE") {
        m_cursor.next();
        m_cursor.takeFillers();
        return refer(Role::relativeKey, m_cursor.takeName(), file);
      }
      return organization(description);
    case Word::record:
      m_cursor.next();
      if (m_cursor.word() == Word::delimiter) {
        m_cursor.next();
        m_cursor.take(Word::is);
        return m_cursor.next();
      }
      m_cursor.takeFillers();
      return key(Role::recordKey, file);
    case Word::alternate:
      m_cursor.next();
      m_cursor.take(Word::record);
      m_cursor.takeFillers();
      return key(Role::alternateKey, file);
    case Word::status:
      m_cursor.next();
      m_cursor.takeFillers();
      refer(Role::fileStatus, m_cursor.takeName(), file);
      if (m_cursor.isWord() && m_cursor.word() == Word::none) refer(Role::fileStatus, m_cursor.takeName(), file);
      return;
    case Word::password:
      m_cursor.next();
      m_cursor.takeFillers();
      return refer(Role::password, m_cursor.takeName(), file);
    case Word::access:
    case Word::reserve:
    case Word::lock:
    case Word::sharing:
      m_cursor.next();
      m_cursor.takeFillers();
      if (m_cursor.word() != Word::relative) m_cursor.next();
      return;
    case Word::suppress:
      // SUPPRESS WHEN literal
      m_cursor.next();
      if (m_cursor.take(Word::when)) m_cursor.next();
      return;
    default:
      return m_cursor.next();
    }
  }

  void organization(DataFile& description) {
    if (m_cursor.take(Word::line)) {
      description.organisation = "LINE SEQUENTIAL";
      m_cursor.take(Word::sequential);
    } else if (m_cursor.take(Word::indexed)) {
      description.organisation = "INDEXED";
    } else if (m_cursor.take(Word::relative)) {
      description.organisation = "RELATIVE";
    } else {
      // RECORD SEQUENTIAL and BINARY SEQUENTIAL are plain sequential files.
      if (m_cursor.word() != Word::sequential && m_cursor.word(1) == Word::sequential) m_cursor.next();
      m_cursor.next();
      description.organisation = "SEQUENTIAL";
    }
  }

  void assign(int file) {
    m_cursor.next();
    for (;;) {
      const Word word = m_cursor.word();
      const bool device = word == Word::to || word == Word::external || word == Word::dynamic || word == Word::using_ ||
                          word == Word::disk || word == Word::random;
      if (!device ||
          (word == Word::disk && m_cursor.kind(1) != TokenKind::word && m_cursor.kind(1) != TokenKind::literal))
        break;
      m_cursor.next();
    }
    auto& description = m_analysis.dataFiles[static_cast<std::size_t>(file)];
    if (m_cursor.kind() == TokenKind::literal || m_cursor.kind() == TokenKind::number) {
      description.assignName = withoutPrefix(upper(m_cursor.text()));
      m_cursor.next();
    } else if (m_cursor.isWord()) {
      description.assignName = withoutPrefix(upper(m_cursor.text()));
      refer(DataReference::Role::assign, m_cursor.takeName(), file);
    }
    // More assignment names may follow; only the first one counts.
    while ((m_cursor.isWord() && m_cursor.word() == Word::none) || m_cursor.kind() == TokenKind::literal)
      m_cursor.next();
  }

  void key(DataReference::Role role, int file) {
    const auto name = m_cursor.takeName();
    const bool split = m_cursor.word() == Word::source || m_cursor.isSymbol("=");
    if (!split) return refer(role, name, file);
    if (name) program().otherNames.push_back(m_stream.tokens[*name].text); // of the key, not of an item
    m_cursor.next();
    m_cursor.take(Word::is);
    while (m_cursor.isWord() && m_cursor.word() == Word::none)
      refer(role, m_cursor.takeName(), file);
  }

  // I-O-CONTROL ------------------------------------------------------------------------------------------------------

  void same() {
    m_cursor.next();
    const bool record = m_cursor.take(Word::record);
    const bool sorting = m_cursor.take(Word::sort) || m_cursor.take(Word::sortMerge);
    m_cursor.take(Word::area);
    m_cursor.take(Word::for_);
    std::vector<int> files;
    bool onlyKeyed = true;
    while (m_cursor.isWord() &&
           (m_cursor.word() == Word::none || m_environment.files.contains(m_cursor.token().text))) {
      if (const auto found = m_environment.files.find(m_cursor.token().text); found != m_environment.files.end()) {
        files.push_back(found->second);
        const auto& organisation = m_analysis.dataFiles[static_cast<std::size_t>(found->second)].organisation;
        onlyKeyed = onlyKeyed && (organisation == "INDEXED" || organisation == "RELATIVE");
      }
      m_cursor.next();
    }
    const bool shares =
        record ||
        (!sorting && (m_options.sameArea == SameArea::always || (m_options.sameArea == SameArea::vsam && onlyKeyed)));
    for (std::size_t i = 1; shares && i < files.size(); ++i)
      m_analysis.dataFiles[static_cast<std::size_t>(files[i])].sharesAreaWith = files.front();
  }

  const TokenStream& m_stream;
  TokenCursor m_cursor;
  const int m_program;
  const Options& m_options;
  Environment& m_environment;
  Analysis& m_analysis;
};

} // namespace

void readEnvironment(const TokenStream& stream, const Words& words, std::uint32_t from, std::uint32_t to, int program,
                     const Options& options, Environment& environment, Analysis& analysis) {
  EnvironmentReader(stream, TokenCursor(stream, words, from, to), program, options, environment, analysis).run();
}

} // namespace cobol
