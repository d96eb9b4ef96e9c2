#include "cobol/data_division.hpp"

#include "cobol/characters.hpp"

#include "cobol/built_in_records.hpp"
#include "cobol/data_entry.hpp"
#include "cobol/environment.hpp"
#include "cobol/file_description.hpp"
#include "cobol/item_tree.hpp"
#include "cobol/program_structure.hpp"

namespace cobol {
namespace {

Section sectionOf(Word word) {
  switch (word) {
  case Word::file:
    return Section::file;
  case Word::workingStorage:
  case Word::threadLocal:
    return Section::workingStorage;
  case Word::localStorage:
    return Section::localStorage;
  case Word::linkage:
    return Section::linkage;
  case Word::communication:
    return Section::communication;
  case Word::report:
    return Section::report;
  case Word::screen:
    return Section::screen;
  default:
    return Section::none;
  }
}

class DataReader {
 public:
  DataReader(const TokenStream& stream, const Words& words, const Options& options, Analysis& analysis,
             Diagnostics& diagnostics)
      : m_stream(stream), m_words(words), m_options(options), m_analysis(analysis), m_diagnostics(diagnostics),
        m_items(stream, options, analysis, diagnostics) {}

  void run() {
    const auto structure = findPrograms(m_stream, m_words, m_analysis, m_diagnostics);
    const auto count = m_analysis.programs.size();
    std::vector<std::vector<DeclarationPart>> parts(count);
    for (const auto& part : structure.parts)
      parts[static_cast<std::size_t>(part.program)].push_back(part);
    auto builtIns = missingRecords(structure);
    m_environments.resize(count);
    for (std::size_t p = 0; p < count; ++p) {
      const int parent = m_analysis.programs[p].parent;
      auto& environment = m_environments[p];
      if (parent >= 0) {
        // The configuration section of a program holds for the programs inside it.
        environment.pictures = m_environments[static_cast<std::size_t>(parent)].pictures;
        m_analysis.programs[p].decimalComma = m_analysis.programs[static_cast<std::size_t>(parent)].decimalComma;
      }
      for (const auto& part : parts[p])
        if (part.kind == DeclarationPart::Kind::environment)
          readEnvironment(m_stream, m_words, part.from, part.to, part.program, m_options, environment, m_analysis);
      m_items.beginProgram(static_cast<int>(p), environment.pictures);
      for (const auto name : builtIns[p])
        makeBuiltIn(name, structure.nameTokens[p]);
      for (const auto& part : parts[p])
        if (part.kind == DeclarationPart::Kind::data) readDivision(part, environment);
      if (parent < 0) m_items.addDefines();
      m_items.finish();
    }
    for (const auto& file : m_analysis.dataFiles)
      m_analysis.places.push_back({"FILE", m_analysis.texts->keep(file.name), file.declared});
  }

 private:
  /// By program: the system's records that its text needs and no copybook gives.
  std::vector<std::vector<std::string_view>> missingRecords(const ProgramStructure& structure) const {
    const auto& programs = m_analysis.programs;
    std::vector<std::vector<std::string_view>> result(programs.size());
    if (programs.empty()) return result;
    const auto add = [&](std::size_t program, std::string_view name) {
      auto& names = result[program];
      const auto record = builtInRecord(name);
      if (!record.empty() && std::find(names.begin(), names.end(), name) == names.end())
        names.push_back(record.front().name);
    };
    for (const auto& copy : m_stream.copies) {
      if (copy.file >= 0) continue;
      // A COPY inside a copybook can't be told by its line; it goes to the outermost program.
      std::size_t owner = 0;
      for (std::size_t p = 0; p < programs.size() && copy.at.file == 0; ++p)
        if (programs[p].declared.file == 0 && programs[p].declared.line <= copy.at.line) owner = p;
      add(owner, upper(copy.name));
    }
    for (std::size_t p = 0; p < programs.size(); ++p) {
      if (structure.usesCics[p] && !structure.declaresExecBlock) add(p, "DFHEIBLK");
      if (structure.usesDli[p] && !structure.declaresDliBlock) add(p, "DLZDIB");
    }
    return result;
  }

  void makeBuiltIn(std::string_view name, std::uint32_t token) {
    m_items.beginSection(name == "DFHEIBLK" ? Section::linkage : Section::workingStorage);
    for (const auto& item : builtInRecord(name))
      m_items.addMade(item, token);
  }

  void readDivision(const DeclarationPart& part, Environment& environment) {
    TokenCursor cursor(m_stream, m_words, part.from, part.to);
    DataEntryReader reader(m_stream, cursor, m_diagnostics);
    DescriptionContext context{m_stream, cursor, part.program, environment, m_items, m_analysis, m_diagnostics};
    DataEntry entry;
    Section section = Section::workingStorage;
    m_items.beginSection(section);
    while (!cursor.atEnd()) {
      if (cursor.token().has(inExec)) {
        skipExec(cursor, part.program);
        continue;
      }
      if (reader.read(section, entry)) {
        m_items.add(entry);
        continue;
      }
      const Word word = cursor.word();
      if (cursor.word(1) == Word::section && sectionOf(word) != Section::none) {
        section = sectionOf(word);
        m_items.beginSection(section);
        cursor.next();
        cursor.next();
        cursor.skipPeriod();
      } else if (word == Word::fd || word == Word::sd || word == Word::rd || word == Word::cd) {
        section = word == Word::rd ? Section::report : word == Word::cd ? Section::communication : Section::file;
        readFileDescription(context);
      } else if (word == Word::data || cursor.isPeriod() || word == Word::division) {
        cursor.next();
      } else {
        strayText(cursor);
      }
    }
  }

  void skipExec(TokenCursor& cursor, int program) {
    const auto from = cursor.index();
    bool ends = false; // the next block may follow without a period between
    while (!cursor.atEnd() && cursor.token().has(inExec) && !ends) {
      ends = cursor.text() == "END-EXEC";
      cursor.next();
    }
    m_analysis.programs[static_cast<std::size_t>(program)].execRanges.emplace_back(from, cursor.index());
  }

  /// Text that is no entry costs its sentence, but never an entry that begins on a line of its own.
  void strayText(TokenCursor& cursor) {
    m_diagnostics.add(Code::LevelBad, Severity::warning, cursor.token().position(), "no level number or header here");
    cursor.next();
    while (!cursor.atEnd() && !cursor.isPeriod() && !cursor.token().has(inExec)) {
      if (cursor.kind() == TokenKind::number && cursor.token().has(lineStart)) return;
      if (cursor.word(1) == Word::section) return;
      cursor.next();
    }
    cursor.skipPeriod();
  }

  const TokenStream& m_stream;
  const Words& m_words;
  const Options& m_options;
  Analysis& m_analysis;
  Diagnostics& m_diagnostics;
  ItemTree m_items;
  std::vector<Environment> m_environments;
};

} // namespace

void readData(const TokenStream& stream, const Options& options, Analysis& analysis, Diagnostics& diagnostics) {
  const Words words(stream.names);
  DataReader(stream, words, options, analysis, diagnostics).run();
}

} // namespace cobol
