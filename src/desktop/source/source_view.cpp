#include "desktop/source/source_view.hpp"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

#include "desktop/texts.hpp"
#include "desktop/twips.hpp"
#include "orvane/program_store.hpp"

namespace desktop {

namespace {

bool isUsage(const orvane::SourceMark& mark) {
  return mark.kind != orvane::MarkKind::declaration && !mark.part;
}

} // namespace

SourceView::SourceView(orvane::BaseFolder base, std::function<cobol::Options()> options, QWidget* parent)
    : QWidget(parent), m_base(std::move(base)), m_options(std::move(options)), m_notice(new QLabel(this)),
      m_area(new TextArea(this)), m_bar(new MarkBar(this)), m_find(new FindBar(*m_area, this)) {
  setAccessibleName(text(Text::SourceView));
  m_area->setAccessibleName(text(Text::SourceView));
  setFocusProxy(m_area);
  m_notice->setText(text(Text::SourceChangedOnDisk));
  m_notice->setWordWrap(true);
  m_notice->setMargin(6);
  m_notice->setAutoFillBackground(true);
  m_notice->setObjectName(QStringLiteral("sourceNotice"));
  m_notice->hide();
  auto* middle = new QHBoxLayout;
  middle->setSpacing(0);
  middle->addWidget(m_area, 1);
  middle->addWidget(m_bar);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_notice);
  column->addLayout(middle, 1);
  column->addWidget(m_find);
  m_area->setHint(text(Text::SourceNothing));
  m_bar->onChosen = [this](int mark) { goToMark(static_cast<int>(m_firstHere) + mark); };
  const auto offer = [this](Text caption, const QKeySequence& key, Qt::ShortcutContext context, auto work) {
    auto* action = new QAction(text(caption), this);
    action->setShortcut(key);
    action->setShortcutContext(context);
    connect(action, &QAction::triggered, this, work);
    addAction(action);
    m_area->addAction(action);
  };
  offer(Text::SourceNext, Qt::Key_F4, Qt::WindowShortcut, [this] { nextUsage(); });
  offer(Text::SourcePrevious, Qt::SHIFT | Qt::Key_F4, Qt::WindowShortcut, [this] { previousUsage(); });
  offer(Text::SourceFind, QKeySequence::Find, Qt::WindowShortcut, [this] { find(); });
  offer(Text::SourceFindNext, Qt::Key_F3, Qt::WidgetWithChildrenShortcut, [this] { m_find->step(1); });
  offer(Text::SourceFindPrevious, Qt::SHIFT | Qt::Key_F3, Qt::WidgetWithChildrenShortcut, [this] { m_find->step(-1); });
}

void SourceView::attach(orvane::Workspace& workspace) {
  m_workspace = &workspace;
  const QPointer<SourceView> view(this);
  const auto follow = [view, from = &workspace](bool chosen) {
    if (view && view->m_workspace == from) view->later(chosen);
  };
  workspace.ObjectChanged.connect([follow] { follow(true); });
  workspace.SourceChanged.connect([follow] { follow(false); });
  later(true);
}

// A command may choose many datanames in turn: the last one is shown.
void SourceView::later(bool chosen) {
  m_chosen = m_chosen || chosen;
  if (m_pending) return;
  m_pending = true;
  QTimer::singleShot(0, this, [this] {
    m_pending = false;
    const bool wasChosen = std::exchange(m_chosen, false);
    if (m_workspace) follow(wasChosen);
  });
}

void SourceView::told() {
  if (onChanged) onChanged();
}

const orvane::StoreData* SourceView::data() const {
  const auto* analysis = dynamic_cast<const orvane::StoredAnalysis*>(m_store.get());
  return analysis ? &analysis->data() : nullptr;
}

void SourceView::follow(bool chosen) {
  tarnsift::Ref<tarnsift::AnalysisStore> store;
  platform::ignoring([&] { store = m_workspace->AnalysisStore(); });
  const bool otherProgram = store.get() != m_store.get();
  m_store = store;
  const orvane::StoreData* analysis = data();
  if (otherProgram) {
    m_file = -1;
    m_files.clear();
    for (std::size_t i = 0; analysis && i < analysis->files.size(); ++i)
      m_files.push_back(text(std::string(analysis->text(analysis->files[i].path))));
  }
  if (chosen || otherProgram) {
    m_mark = -1;
    const auto object = m_workspace->currentObject();
    const auto* construct = dynamic_cast<const orvane::StoredConstruct*>(object.get());
    m_marks =
        analysis && construct ? orvane::marksOf(*analysis, construct->construct()) : std::vector<orvane::SourceMark>();
  }
  const auto source = m_workspace->SourceFile();
  if (!analysis || !source) {
    m_file = -1;
    m_notice->hide();
    m_area->setHint(text(Text::SourceNothing));
    m_bar->show({}, 0);
    return told();
  }
  showText(std::stoi(source->Id()));
  showMarks();
  if (chosen) showChosen();
  told();
}

// The declaration; a construct that stands nowhere itself is shown where the analysis places it.
void SourceView::showChosen() {
  const auto object = m_workspace->currentObject();
  if (!object || std::stoi(object->FileId()) != m_file) return;
  for (int i = 0; i < static_cast<int>(m_marks.size()); ++i)
    if (const auto& mark = m_marks[static_cast<std::size_t>(i)];
        mark.kind == orvane::MarkKind::declaration && !mark.part)
      return goToMark(i);
  m_area->goTo(static_cast<int>(object->Line()), static_cast<int>(object->Column()), 1);
}

void SourceView::showText(int file) {
  if (file == m_file) return;
  m_file = file;
  orvane::SourceOnView source =
      orvane::readSource(m_base, m_options(), *data(), static_cast<std::uint32_t>(std::max(file, 0)));
  m_notice->setVisible(source.changed);
  if (source.problem.empty())
    m_area->setText(std::move(source.text));
  else
    m_area->setHint(text(source.problem));
  m_find->refresh();
}

void SourceView::showMarks() {
  const auto inFile = [](const orvane::SourceMark& mark, int file) { return static_cast<int>(mark.place.file) < file; };
  const auto first = std::lower_bound(m_marks.begin(), m_marks.end(), m_file, inFile);
  const auto last = std::lower_bound(first, m_marks.end(), m_file + 1, inFile);
  m_firstHere = static_cast<std::size_t>(first - m_marks.begin());
  m_area->setMarks({first, last});
  m_bar->show({first, last}, m_area->lineCount());
}

void SourceView::goToMark(int mark) {
  m_mark = mark;
  const orvane::PlaceRecord place = m_marks[static_cast<std::size_t>(mark)].place;
  if (static_cast<int>(place.file) != m_file) {
    showText(static_cast<int>(place.file));
    showMarks();
    showFile(m_file); // the caption follows
  }
  m_area->setCurrentMark(mark - static_cast<int>(m_firstHere));
  m_area->goTo(static_cast<int>(place.line), static_cast<int>(place.column), static_cast<int>(place.length));
  told();
}

int SourceView::usageCount() const {
  return static_cast<int>(std::count_if(m_marks.begin(), m_marks.end(), isUsage));
}

int SourceView::currentUsage() const {
  if (m_mark < 0 || !isUsage(m_marks[static_cast<std::size_t>(m_mark)])) return 0;
  return static_cast<int>(std::count_if(m_marks.begin(), m_marks.begin() + m_mark + 1, isUsage));
}

void SourceView::stepUsage(int direction) {
  const int count = static_cast<int>(m_marks.size());
  int at = m_mark < 0 && direction < 0 ? count : m_mark;
  for (int tries = 0; tries < count; ++tries) {
    at = (at + direction + count) % count;
    if (isUsage(m_marks[static_cast<std::size_t>(at)])) return goToMark(at);
  }
}

void SourceView::showFile(int file) {
  if (m_workspace && file >= 0) m_workspace->showFile(static_cast<std::uint32_t>(file));
}

void SourceView::goTo(const std::string& path, int line, int column) {
  if (m_workspace) follow(true);
  for (int file = 0; file < static_cast<int>(m_files.size()); ++file) {
    if (m_files[static_cast<std::size_t>(file)] != text(path)) continue;
    showFile(file);
    follow(false);
    m_area->goTo(line, std::max(column, 1), 1);
  }
}

} // namespace desktop
