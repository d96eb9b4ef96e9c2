#include <algorithm>
#include <map>

#include "platform/files/files.hpp"
#include "platform/runtime/formats.hpp"
#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/options/option_tree.hpp"
#include "tarnsift/reports/escape_html.hpp"
#include "tarnsift/reports/line_marks.hpp"
#include "tarnsift/reports/report_program.hpp"
#include "tarnsift/reports/reports.hpp"
#include "tarnsift/search/program_work.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

std::string EscapeHtml(std::string_view text) {
  static constexpr std::pair<std::string_view, std::string_view> kEscapes[] = {
      {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&rsquo;"}};
  std::string escaped(text);
  for (const auto& [plain, code] : kEscapes)
    escaped = platform::replaceAll(std::move(escaped), plain, code);
  return escaped;
}

LineMarks::LineMarks(std::size_t lineCount, int neighbourhood)
    : m_marks(lineCount + static_cast<std::size_t>(neighbourhood) + 1, LineMark::hidden),
      m_lineCount(static_cast<std::int64_t>(lineCount)), m_neighbourhood(neighbourhood) {}

void LineMarks::mark(std::int64_t line) {
  if (line < 0 || line >= static_cast<std::int64_t>(m_marks.size())) return;
  const auto context = [this](std::int64_t neighbour) {
    LineMark& mark = m_marks[static_cast<std::size_t>(neighbour)];
    if (mark == LineMark::hidden) mark = LineMark::context;
  };
  for (std::int64_t k = 1; k <= m_neighbourhood && line - k > 0; ++k)
    context(line - k);
  m_marks[static_cast<std::size_t>(line)] = LineMark::bold;
  for (std::int64_t k = 1; k <= m_neighbourhood && line + k <= m_lineCount; ++k)
    context(line + k);
}

namespace {

using platform::LoadResString;

constexpr std::int64_t kMostContext = 32767; // lines; the option is a 16-bit number

using LinesByFile = std::map<std::string, std::vector<std::int64_t>>; ///< marked lines by file id

std::string styleSheet() {
  std::string style = platform::readText(platform::nativePath(orvaneName(1) + "\\AffectedCodeRM.xsl"));
  style = platform::replaceAll(std::move(style), "$$Line No.$$", LoadResString(556));
  return platform::replaceAll(std::move(style), "$$Report generated at$$", EscapeHtml(LoadResString(557)));
}

// Where the affected names of the program stand, gathered in one walk for all its files.
LinesByFile markedLines(AnalysisStore& store, bool showUnused) {
  LinesByFile lines;
  const auto rows =
      store.Database()->OpenRecordset("select * from Constructs where " + globals().StatusColumn + " = 1");
  for (; !rows->Eof(); rows->MoveNext()) {
    Ref<StoreConstruct> construct;
    platform::ignoring([&] { construct = store.ObjectById(rows->Field("KVID").asText()); });
    if (!construct) continue;
    const Ref<InstanceCursor> usages = construct->Related("Instances");
    if (usages->AtEnd() && !showUnused) continue;
    lines[construct->FileId()].push_back(construct->Line());
    for (; !usages->AtEnd(); usages->MoveNext()) {
      const Ref<StoreConstruct> usage = usages->Current();
      lines[usage->FileId()].push_back(usage->Line());
    }
  }
  return lines;
}

class AffectedCodeReport {
 public:
  explicit AffectedCodeReport(frmMain& window)
      : m_window(window), m_writer(*window.ReportWriter),
        m_neighbourhood(static_cast<int>(std::clamp<std::int64_t>(
            Value(optionValue("./GROUP[@NAME='AffectedCodeReport']/NUMBER[@NAME='NeighbourhoodSize']")).asInteger(), 0,
            kMostContext))) {
    if (!m_window.blbSource) m_window.blbSource = theHostFactory().createBarelineBox();
  }

  void writeProgram(const platform::ListItem& program) {
    const OpenStore store(program);
    m_programHead = program.Text;
    const LinesByFile lines =
        markedLines(*store.operator->(), optionIsOn("./GROUP[@NAME='AffectedCodeReport']/BOOL[@NAME='ShowUnused']"));
    const Ref<SourceFiles> files = store->Files();
    for (std::size_t i = 1; i <= files->Count(); ++i) {
      const Ref<SourceFile> file = files->Item(i);
      if (const auto marked = lines.find(file->Id()); marked != lines.end())
        reportProgram(m_window, program, [&] { writeFile(*file, marked->second); });
    }
  }

 private:
  void writeFile(SourceFile& file, const std::vector<std::int64_t>& lines) {
    BarelineBox& source = *m_window.blbSource;
    source.LoadFile(belowBase(file.Path()));
    m_fileHead = "    " + file.Path();
    LineMarks marks(source.LineCount(), m_neighbourhood);
    for (const std::int64_t line : lines)
      marks.mark(line);
    bool Skipping = true;
    for (std::size_t j = 1; j <= source.LineCount(); ++j) {
      const LineMark mark = marks.of(j);
      if (mark != LineMark::hidden) {
        writeHead();
        writeLine(source.Line(j), j, mark);
        Skipping = false;
      } else if (!Skipping) {
        writeRecord("Source", "...");
        Skipping = true;
      }
    }
  }

  // The heads wait for the first line that is shown.
  void writeHead() {
    std::string head;
    if (!m_programHead.empty()) head += "<b style=\"font-size: 12pt\">" + EscapeHtml(m_programHead) + "</b>";
    if (!m_fileHead.empty()) head += " &nbsp;[" + EscapeHtml(m_fileHead) + "]";
    m_programHead.clear();
    m_fileHead.clear();
    if (!head.empty()) writeRecord("ProgramName", head);
  }

  void writeLine(std::string line, std::size_t number, LineMark mark) {
    if (line.ends_with('\r')) line.pop_back();
    line = EscapeHtml(line);
    m_writer.BeginRecord();
    m_writer.Field("Source", mark == LineMark::bold ? "<b>" + line + "</b>" : line);
    m_writer.Field("LineNo", platform::formatSixDigits(static_cast<std::int64_t>(number)));
    m_writer.EndRecord();
  }

  void writeRecord(const std::string& key, const std::string& value) {
    m_writer.BeginRecord();
    m_writer.Field(key, value);
    m_writer.EndRecord();
  }

  frmMain& m_window;
  ReportWriter& m_writer;
  int m_neighbourhood;
  std::string m_programHead;
  std::string m_fileHead;
};

} // namespace

void reportAffectedCode(frmMain& window) {
  AffectedCodeReport report(window);
  StartProgress(window, LoadResString(518), static_cast<int>(window.lvPrograms.ListItems.Count()));
  window.ReportWriter->BeginReport(
      "<LCRecordFormat><ProgramName RAW=\"no\"/><Source RAW=\"no\"/><LineNo/></LCRecordFormat>", LoadResString(519),
      styleSheet());
  for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
    const platform::ListItem& program = window.lvPrograms.ListItems.Item(i);
    StartStep(window, program.Text);
    if (countOf(program.SubItems(2)) != 0) reportProgram(window, program, [&] { report.writeProgram(program); });
    FinishStep(window, 1);
  }
  window.ReportWriter->EndReport("");
  FinishProgress(window);
  window.ReportWriter->Show(window);
}

} // namespace tarnsift
