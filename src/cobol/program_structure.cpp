#include "cobol/program_structure.hpp"

#include "cobol/characters.hpp"

#include <algorithm>
#include <unordered_map>

#include "cobol/kvid.hpp"
#include "cobol/token_cursor.hpp"

namespace cobol {
namespace {

constexpr std::size_t kLongestPath = 4096; // of programs in each other

enum class Mark : std::uint8_t { start, environment, data, procedure, end };

/// A place where something begins or ends.
struct Event {
  Mark mark{};
  std::uint32_t from = 0;   ///< first token of the header
  std::uint32_t before = 0; ///< where the text before it ends
  std::uint32_t to = 0;     ///< one behind the header, of start and end only
  std::uint32_t name = 0;   ///< token of the program's name; 0: none
  int key = -1;             ///< equal names have equal keys
  bool isClass = false;
};

/// Whether the word can open or close anything: those that can stand first among the words.
constexpr bool isLookedAt(Word word) {
  return word != Word::none && word <= Word::threadLocal;
}

/// Runs over all tokens once and notes headers.
class EventScan {
 public:
  EventScan(const TokenStream& stream, const Words& words) : m_stream(stream), m_words(words) {}

  void run() {
    const auto begin = m_stream.tokens.begin(), end = m_stream.tokens.end();
    // A literal may read like one of these words as well, but that is rare: the kind is asked for afterwards.
    const auto isWanted = [&words = m_words](const Token& token) {
      return isLookedAt(words.of(token.text)) && token.kind == TokenKind::word;
    };
    for (auto at = std::find_if(begin, end, isWanted); at != end; at = std::find_if(at + 1, end, isWanted))
      lookAt(static_cast<std::uint32_t>(at - begin), m_words.of(at->text));
  }

  std::vector<Event> events;
  std::vector<std::uint32_t> m_cics;
  std::vector<std::uint32_t> m_dli;
  bool declaresExecBlock = false;
  bool declaresDliBlock = false;

 private:
  enum class State : std::uint8_t { header, environment, data, procedure };

  Word wordAt(std::uint32_t index, bool exec = false) const {
    if (index >= m_stream.tokens.size()) return Word::none;
    const Token& token = m_stream.tokens[index];
    return exec ? m_words.of(token.text) : m_words.of(token);
  }
  bool periodAt(std::uint32_t index) const {
    return index < m_stream.tokens.size() && m_stream.tokens[index].kind == TokenKind::period;
  }
  void lookAt(std::uint32_t i, Word word) {
    if (!m_stream.tokens[i].has(inExec)) return header(i, word);
    if (word == Word::cics && i > 0 && wordAt(i - 1, true) == Word::exec) m_cics.push_back(i);
    if (word == Word::dli && i > 0 && wordAt(i - 1, true) == Word::exec) m_dli.push_back(i);
  }
  void add(Mark mark, std::uint32_t from, State state) {
    // IDENTIFICATION DIVISION stands in front of PROGRAM-ID, or of the factory or the object of a class.
    const std::uint32_t before = m_pending != kNone ? m_pending : from;
    events.push_back({.mark = mark, .from = mark == Mark::start ? before : from, .before = before});
    m_pending = kNone;
    m_state = state;
  }

  /// A header stands first on its line or behind a period; the same words elsewhere are plain text.
  bool beginsSentence(std::uint32_t i) const {
    return i == 0 || m_stream.tokens[i].has(lineStart) || periodAt(i - 1) ||
           m_stream.tokens[i].file != m_stream.tokens[i - 1].file;
  }

  void header(std::uint32_t i, Word word) {
    switch (word) {
    case Word::identification:
      if (wordAt(i + 1) == Word::division && beginsSentence(i)) {
        m_pending = i;
        m_state = State::header;
      }
      break;
    case Word::programId:
    case Word::functionId:
    case Word::classId:
    case Word::methodId:
      start(i, word);
      break;
    case Word::environment:
      if (wordAt(i + 1) == Word::division && beginsSentence(i)) add(Mark::environment, i, State::environment);
      break;
    case Word::configuration:
    case Word::inputOutput:
      if (m_state == State::header && wordAt(i + 1) == Word::section) add(Mark::environment, i, State::environment);
      break;
    case Word::specialNames:
    case Word::fileControl:
    case Word::ioControl:
    case Word::sourceComputer:
      if (m_state == State::header && periodAt(i + 1)) add(Mark::environment, i, State::environment);
      break;
    case Word::data:
      if (wordAt(i + 1) == Word::division && beginsSentence(i)) add(Mark::data, i, State::data);
      break;
    case Word::file:
    case Word::workingStorage:
    case Word::localStorage:
    case Word::linkage:
    case Word::communication:
    case Word::report:
    case Word::screen:
    case Word::threadLocal:
      if ((m_state == State::header || m_state == State::environment) && wordAt(i + 1) == Word::section)
        add(Mark::data, i, State::data);
      break;
    case Word::procedure:
      if (wordAt(i + 1) == Word::division && beginsSentence(i)) add(Mark::procedure, i, State::procedure);
      break;
    case Word::dfheiblk:
    case Word::eibtime:
      if (i > 0 && m_stream.tokens[i - 1].kind == TokenKind::number) declaresExecBlock = true;
      break;
    case Word::dibstat:
      if (i > 0 && m_stream.tokens[i - 1].kind == TokenKind::number) declaresDliBlock = true;
      break;
    case Word::end:
      finish(i);
      break;
    default:
      break;
    }
  }

  void start(std::uint32_t i, Word word) {
    std::uint32_t at = i + 1;
    if (periodAt(at)) ++at;
    add(Mark::start, i, State::header);
    name(events.back(), at);
    events.back().isClass = word == Word::classId;
  }

  void finish(std::uint32_t i) {
    const Word what = wordAt(i + 1);
    if (what != Word::program && what != Word::function && what != Word::class_ && what != Word::method) return;
    add(Mark::end, i, State::procedure);
    name(events.back(), i + 2);
  }

  void name(Event& event, std::uint32_t at) {
    event.to = at;
    if (at < m_stream.tokens.size()) {
      const Token& token = m_stream.tokens[at];
      if (token.kind == TokenKind::word || token.kind == TokenKind::literal || token.kind == TokenKind::number) {
        event.name = at;
        event.to = at + 1;
        event.key = m_keys.try_emplace(upper(m_stream.textOf(token)), static_cast<int>(m_keys.size())).first->second;
      }
    }
    if (periodAt(event.to)) ++event.to;
  }

  static constexpr std::uint32_t kNone = ~0U;
  const TokenStream& m_stream;
  const Words& m_words;
  std::unordered_map<std::string, int> m_keys;
  std::uint32_t m_pending = kNone;
  State m_state = State::header;
};

/// The file's name without folders and extension, for a source that names no program.
std::string stemOf(const TokenStream& stream) {
  if (stream.files.empty()) return "PROGRAM";
  std::string_view path = stream.files.front().path;
  if (const auto slash = path.find_last_of("/\\"); slash != std::string_view::npos) path.remove_prefix(slash + 1);
  if (const auto dot = path.find('.'); dot != std::string_view::npos && dot > 0) path = path.substr(0, dot);
  return path.empty() ? "PROGRAM" : upper(path);
}

/// Puts the events together into programs.
class Assembly {
 public:
  Assembly(const TokenStream& stream, const Words& words, std::vector<Event>& events, Analysis& analysis,
           Diagnostics& diagnostics)
      : m_stream(stream), m_words(words), m_events(events), m_analysis(analysis), m_diagnostics(diagnostics) {
    m_ends.resize(events.size());
    m_starts.resize(events.size());
    for (std::size_t i = events.size(); i-- > 0;)
      linkEqualNames(i);
  }

  ProgramStructure run() {
    for (std::size_t i = 0; i < m_events.size(); ++i) {
      const Event& event = m_events[i];
      closePart(event.before);
      switch (event.mark) {
      case Mark::start:
        open(i);
        break;
      case Mark::environment:
        openPart(event.from, DeclarationPart::Kind::environment);
        break;
      case Mark::data:
        openPart(event.from, DeclarationPart::Kind::data);
        break;
      case Mark::procedure:
        openProcedure(event);
        break;
      case Mark::end:
        end(event);
        break;
      }
    }
    const auto last = static_cast<std::uint32_t>(m_stream.tokens.empty() ? 0 : m_stream.tokens.size() - 1);
    closePart(last);
    while (!m_open.empty())
      close(last);
    return std::move(m_result);
  }

 private:
  static constexpr std::size_t kNever = ~std::size_t{0};
  struct Open {
    int program = 0;
    std::size_t event = 0;
    bool inProcedure = false; ///< text behind a contained program goes on with procedure text
  };

  /// m_ends[i], m_starts[i]: the next END and the next start of the same name behind event i.
  void linkEqualNames(std::size_t i) {
    const Event& event = m_events[i];
    m_ends[i] = m_starts[i] = kNever;
    if (event.key < 0) return;
    const auto key = static_cast<std::size_t>(event.key);
    if (key >= m_nextEnd.size()) {
      m_nextEnd.resize(key + 1, kNever);
      m_nextStart.resize(key + 1, kNever);
    }
    m_ends[i] = m_nextEnd[key];
    m_starts[i] = m_nextStart[key];
    if (event.mark == Mark::end) m_nextEnd[key] = i;
    if (event.mark == Mark::start) m_nextStart[key] = i;
  }

  /// A program contains what begins before its END, unless a program of its own name begins anew before.
  bool contains(const Open& outer, std::size_t event) const {
    const std::size_t finish = m_ends[outer.event];
    return finish != kNever && finish > event && m_starts[outer.event] > finish;
  }

  void open(std::size_t i) {
    const Event& event = m_events[i];
    while (!m_open.empty() && !contains(m_open.back(), i))
      close(event.from);
    Program program;
    const bool named = event.name != 0;
    program.name = named ? upper(m_stream.textOf(m_stream.tokens[event.name])) : stemOf(m_stream);
    program.parent = m_open.empty() ? -1 : m_open.back().program;
    program.path = program.parent < 0
                       ? program.name
                       : m_analysis.programs[static_cast<std::size_t>(program.parent)].path + "/" + program.name;
    shortenKey(program.path, kLongestPath);
    const std::uint32_t nameToken = named ? event.name : event.from;
    program.declared = m_stream.tokens[nameToken].position();
    program.beginToken = event.from;
    for (std::uint32_t at = event.to; named && at < m_stream.tokens.size(); ++at) {
      const Token& token = m_stream.tokens[at];
      if (token.kind == TokenKind::period || token.kind == TokenKind::end || token.has(areaA)) break;
      if (m_words.of(token) == Word::common) program.common = true;
    }
    program.isClass = event.isClass;
    m_open.push_back({.program = static_cast<int>(m_analysis.programs.size()), .event = i});
    m_analysis.programs.push_back(std::move(program));
    m_result.nameTokens.push_back(nameToken);
  }

  Program& current() { return m_analysis.programs[static_cast<std::size_t>(m_open.back().program)]; }

  void openPart(std::uint32_t from, DeclarationPart::Kind kind) {
    if (m_open.empty()) return;
    m_result.parts.push_back({.kind = kind, .program = m_open.back().program, .from = from});
    m_open.back().inProcedure = false; // the object of a class stands behind its factory
    m_partOpen = true;
  }
  void openProcedure(const Event& event) {
    if (m_open.empty()) return;
    if (current().procedureToken == 0) current().procedureToken = event.from;
    m_open.back().inProcedure = true;
    m_procedureFrom = event.from;
  }
  void closePart(std::uint32_t to) {
    if (m_partOpen) m_result.parts.back().to = to;
    m_partOpen = false;
    if (!m_open.empty() && m_open.back().inProcedure && m_procedureFrom < to)
      current().procedureRanges.emplace_back(m_procedureFrom, to);
    m_procedureFrom = to;
  }
  void close(std::uint32_t to) {
    current().endToken = to;
    m_open.pop_back();
    m_procedureFrom = to;
  }
  void end(const Event& event) {
    auto found = m_open.size();
    while (found > 0 && m_events[m_open[found - 1].event].key != event.key)
      --found;
    if (m_open.empty()) return;
    if (found == 0) {
      m_diagnostics.add(Code::DivisionMissing, Severity::warning, m_stream.tokens[event.from].position(),
                        "END PROGRAM names no open program; the innermost one is closed");
      found = m_open.size();
    }
    while (m_open.size() > found)
      close(event.from);
    close(event.to);
  }

  const TokenStream& m_stream;
  const Words& m_words;
  std::vector<Event>& m_events;
  Analysis& m_analysis;
  Diagnostics& m_diagnostics;
  ProgramStructure m_result;
  std::vector<Open> m_open;
  std::vector<std::size_t> m_ends, m_starts, m_nextEnd, m_nextStart;
  std::uint32_t m_procedureFrom = 0;
  bool m_partOpen = false;
};

/// By program: whether it holds one of the tokens; the innermost program around a token counts.
std::vector<bool> programsWith(const std::vector<std::uint32_t>& tokens, const Analysis& analysis) {
  std::vector<bool> result(analysis.programs.size());
  for (std::size_t p = 0; p < analysis.programs.size(); ++p)
    for (const auto& [from, to] : analysis.programs[p].procedureRanges) {
      const auto first = std::lower_bound(tokens.begin(), tokens.end(), from);
      if (first != tokens.end() && *first < to) result[p] = true;
    }
  return result;
}

/// BASIS and the INSERT and DELETE lines behind it change a text by line numbers; that text is not read.
void remarkBasis(const TokenStream& stream, std::uint32_t to, Diagnostics& diagnostics) {
  for (std::uint32_t i = 0; i < to; ++i) {
    const Token& token = stream.tokens[i];
    if (token.kind != TokenKind::word || !token.has(lineStart)) continue;
    const std::string_view text = stream.textOf(token);
    if (text != "BASIS" && text != "INSERT" && text != "DELETE") continue;
    diagnostics.add(Code::DirectiveUnknown, Severity::warning, token.position(),
                    std::string(text) + " lines are not supported; the text they change is not read");
  }
}

/// About as many as there are data descriptions: few have less than five tokens, as `05 A PIC X.` has.
std::size_t aboutEntries(const ProgramStructure& structure) {
  std::size_t tokens = 0;
  for (const auto& part : structure.parts)
    if (part.kind == DeclarationPart::Kind::data) tokens += part.to - part.from;
  return tokens / 5;
}

} // namespace

ProgramStructure findPrograms(const TokenStream& stream, const Words& words, Analysis& analysis,
                              Diagnostics& diagnostics) {
  EventScan scan(stream, words);
  scan.run();
  analysis.isCobol = !scan.events.empty();
  if (scan.events.empty()) return {};
  remarkBasis(stream, scan.events.front().from, diagnostics);
  if (scan.events.front().mark != Mark::start) {
    diagnostics.add(Code::DivisionMissing, Severity::warning, stream.tokens[scan.events.front().from].position(),
                    "no PROGRAM-ID; the program takes the name of its file");
    scan.events.insert(scan.events.begin(), Event{.mark = Mark::start});
  }
  auto structure = Assembly(stream, words, scan.events, analysis, diagnostics).run();
  analysis.constructs.reserve(aboutEntries(structure));
  structure.usesCics = programsWith(scan.m_cics, analysis);
  structure.usesDli = programsWith(scan.m_dli, analysis);
  structure.declaresExecBlock = scan.declaresExecBlock;
  structure.declaresDliBlock = scan.declaresDliBlock;
  return structure;
}

} // namespace cobol
