#include "desktop/start/analyse_dialog.hpp"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QStandardPaths>
#include <QThreadPool>

#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"
#include "orvane/projects.hpp"
#include "platform/runtime/error.hpp"

namespace desktop {

/// What another thread looks for; it may outlive the dialog.
struct AnalyseDialog::Survey {
  std::vector<std::string> paths;
  std::atomic<bool> cancel = false;
  std::atomic<bool> done = false;
  orvane::SourceSurvey result; ///< once done
};

namespace {

constexpr int kListHeight = 88;
constexpr int kOwn = Qt::UserRole; // of a copybook folder: added by the analyst

QLabel* heading(Text id, QWidget* buddy) {
  auto* label = new QLabel(text(id));
  QFont font = label->font();
  font.setWeight(QFont::DemiBold);
  label->setFont(font);
  label->setBuddy(buddy);
  buddy->setAccessibleName(text(id).remove(QLatin1Char('&')));
  return label;
}

QLabel* muted(QWidget* parent) {
  auto* label = new QLabel(parent);
  QPalette colours = label->palette();
  colours.setColor(QPalette::WindowText, theme().muted);
  label->setPalette(colours);
  label->setWordWrap(true);
  return label;
}

QPushButton* button(Text id, const char* name, QWidget* parent) {
  auto* made = new QPushButton(text(id), parent);
  made->setObjectName(QString::fromLatin1(name));
  made->setAutoDefault(false);
  return made;
}

// "cobol" says little; then the folder around it gives the name.
QString nameFor(const QString& source) {
  static const QStringList kCommon = {QStringLiteral("cobol"),   QStringLiteral("cbl"),    QStringLiteral("cob"),
                                      QStringLiteral("src"),     QStringLiteral("source"), QStringLiteral("sources"),
                                      QStringLiteral("programs")};
  QFileInfo place(source);
  if (place.isFile()) place = QFileInfo(place.absolutePath());
  if (kCommon.contains(place.fileName().toLower()) && !QFileInfo(place.absolutePath()).fileName().isEmpty())
    place = QFileInfo(place.absolutePath());
  QString name = place.fileName();
  name.remove(QLatin1Char('\'')).remove(QLatin1Char('"')).remove(QLatin1Char('\\'));
  return name.isEmpty() ? QStringLiteral("project") : name;
}

bool isBase(const QString& folder) {
  return QFileInfo::exists(folder + QStringLiteral("/Orvane.db"));
}

bool isTaken(const QString& folder) {
  return QFileInfo::exists(folder) && !QDir(folder).isEmpty();
}

// In the analyst's documents, else beside the sources; a folder with something else in it is left alone.
QString baseFor(const QString& source, const QString& name) {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const bool hasDocuments = QFileInfo(documents).isDir() && QFileInfo(documents).isWritable();
  const QString wanted = hasDocuments
                             ? documents + QStringLiteral("/Tarnsift/") + name
                             : QFileInfo(source).absolutePath() + QLatin1Char('/') + name + QStringLiteral("-tarnsift");
  QString free = wanted;
  for (int number = 2; isTaken(free) && !isBase(free); ++number)
    free = wanted + QLatin1Char('-') + QString::number(number);
  return free;
}

bool canBeMade(const QString& folder) {
  QFileInfo place(folder);
  while (!place.exists() && place.absolutePath() != place.absoluteFilePath())
    place = QFileInfo(place.absolutePath());
  return place.isDir() && place.isWritable();
}

} // namespace

AnalyseDialog::AnalyseDialog(QWidget* parent)
    : QDialog(parent),
      askFolder([](QWidget* owner, const QString& title) { return QFileDialog::getExistingDirectory(owner, title); }),
      askFiles([](QWidget* owner) { return QFileDialog::getOpenFileNames(owner, text(Text::AnalyseFiles)); }),
      m_sources(new QListWidget(this)), m_found(muted(this)), m_copybooks(new QListWidget(this)),
      m_name(new QLineEdit(this)), m_base(new QLineEdit(this)), m_note(muted(this)), m_go(new QPushButton(this)) {
  setObjectName(QStringLiteral("analyseDialog"));
  setWindowTitle(text(Text::AnalyseTitle));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(2 * kSpace, 2 * kSpace, 2 * kSpace, 2 * kSpace);
  column->setSpacing(kSpace);
  addSourcePart(*column);
  column->addSpacing(kSpace);
  addCopybookPart(*column);
  column->addSpacing(kSpace);
  addPlacePart(*column);
  column->addSpacing(kSpace);
  auto* row = new QHBoxLayout;
  m_go->setText(text(Text::AnalyseGo));
  m_go->setObjectName(QStringLiteral("analyseGo"));
  m_go->setDefault(true);
  auto* cancel = button(Text::Cancel, "analyseCancel", this);
  row->addStretch();
  row->addWidget(m_go);
  row->addWidget(cancel);
  column->addLayout(row);
  connect(m_go, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  constexpr int kBetween = 25; // milliseconds
  m_watch.setInterval(kBetween);
  connect(&m_watch, &QTimer::timeout, this, [this] { takeSurvey(); });
  setMinimumWidth(620);
  check();
}

AnalyseDialog::~AnalyseDialog() {
  if (m_survey) m_survey->cancel = true;
}

void AnalyseDialog::addSourcePart(QBoxLayout& column) {
  m_sources->setObjectName(QStringLiteral("analyseSources"));
  m_sources->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_sources->setFixedHeight(kListHeight);
  m_sources->setTextElideMode(Qt::ElideMiddle);
  auto* folder = button(Text::AnalyseAddFolder, "analyseAddFolder", this);
  auto* files = button(Text::AnalyseAddFiles, "analyseAddFiles", this);
  auto* remove = button(Text::AnalyseRemove, "analyseRemove", this);
  auto* grid = new QGridLayout;
  grid->addWidget(m_sources, 0, 0, 4, 1, Qt::AlignTop);
  grid->addWidget(folder, 0, 1);
  grid->addWidget(files, 1, 1);
  grid->addWidget(remove, 2, 1);
  grid->setRowStretch(3, 1);
  column.addWidget(heading(Text::AnalyseSources, m_sources));
  column.addLayout(grid);
  column.addWidget(m_found);
  m_found->setObjectName(QStringLiteral("analyseFound"));
  connect(folder, &QPushButton::clicked, this, [this] {
    if (const QString path = askFolder(this, text(Text::AnalyseFolder)); !path.isEmpty()) addSources({path});
  });
  connect(files, &QPushButton::clicked, this, [this] { addSources(askFiles(this)); });
  const auto removeChosen = [this] {
    qDeleteAll(m_sources->selectedItems());
    survey();
  };
  connect(remove, &QPushButton::clicked, this, removeChosen);
  connect(new QShortcut(QKeySequence::Delete, m_sources, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
          this, removeChosen);
}

void AnalyseDialog::addCopybookPart(QBoxLayout& column) {
  m_copybooks->setObjectName(QStringLiteral("analyseCopybooks"));
  m_copybooks->setFixedHeight(kListHeight);
  m_copybooks->setTextElideMode(Qt::ElideMiddle);
  auto* add = button(Text::AnalyseAddCopybooks, "analyseAddCopybooks", this);
  auto* grid = new QGridLayout;
  grid->addWidget(m_copybooks, 0, 0, 2, 1, Qt::AlignTop);
  grid->addWidget(add, 0, 1);
  grid->setRowStretch(1, 1);
  column.addWidget(heading(Text::AnalyseCopybooks, m_copybooks));
  column.addLayout(grid);
  connect(add, &QPushButton::clicked, this, [this] {
    const QString path = askFolder(this, text(Text::AnalyseFolder));
    if (path.isEmpty()) return;
    addCopybooks(path, true);
    m_copybooks->item(m_copybooks->count() - 1)->setData(kOwn, true);
    check();
  });
  connect(m_copybooks, &QListWidget::itemChanged, this, [this] { check(); });
}

void AnalyseDialog::addPlacePart(QBoxLayout& column) {
  m_name->setObjectName(QStringLiteral("analyseName"));
  m_base->setObjectName(QStringLiteral("analyseBase"));
  m_note->setObjectName(QStringLiteral("analyseNote"));
  auto* choose = button(Text::AnalyseChoose, "analyseChoose", this);
  auto* grid = new QGridLayout;
  grid->addWidget(heading(Text::AnalyseName, m_name), 0, 0);
  grid->addWidget(m_name, 0, 1, 1, 2);
  grid->addWidget(heading(Text::AnalyseBase, m_base), 1, 0);
  grid->addWidget(m_base, 1, 1);
  grid->addWidget(choose, 1, 2);
  column.addLayout(grid);
  column.addWidget(m_note);
  connect(m_name, &QLineEdit::textEdited, this, [this] {
    m_nameIsOwn = !m_name->text().isEmpty();
    propose();
  });
  connect(m_base, &QLineEdit::textEdited, this, [this] {
    m_baseIsOwn = !m_base->text().isEmpty();
    check();
  });
  connect(choose, &QPushButton::clicked, this, [this] {
    const QString path = askFolder(this, text(Text::AnalyseBaseFolder));
    if (path.isEmpty()) return;
    m_baseIsOwn = true;
    m_base->setText(path);
    check();
  });
}

void AnalyseDialog::addSources(const QStringList& paths) {
  for (const QString& path : paths) {
    const QString whole = QFileInfo(path).absoluteFilePath();
    if (m_sources->findItems(whole, Qt::MatchExactly).isEmpty()) m_sources->addItem(whole);
  }
  survey();
}

void AnalyseDialog::addCopybooks(const QString& folder, bool ticked) {
  if (!m_copybooks->findItems(folder, Qt::MatchExactly).isEmpty()) return;
  auto* item = new QListWidgetItem(folder);
  item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
  item->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
  const QSignalBlocker quiet(m_copybooks);
  m_copybooks->addItem(item);
}

// Proposals of sources that were taken out again.
void AnalyseDialog::dropProposals() {
  const auto& wanted = m_known.copybookFolders;
  for (int row = m_copybooks->count() - 1; row >= 0; --row) {
    const QListWidgetItem* item = m_copybooks->item(row);
    if (!item->data(kOwn).toBool() &&
        std::find(wanted.begin(), wanted.end(), item->text().toStdString()) == wanted.end())
      delete m_copybooks->takeItem(row);
  }
}

// A newer question replaces the one under way.
void AnalyseDialog::survey() {
  if (m_survey) m_survey->cancel = true;
  m_survey = std::make_shared<Survey>();
  for (int row = 0; row < m_sources->count(); ++row)
    m_survey->paths.push_back(m_sources->item(row)->text().toStdString());
  QThreadPool::globalInstance()->start([task = m_survey] {
    platform::ignoring([&] { task->result = orvane::surveySources(task->paths, &task->cancel); });
    task->done = true;
  });
  m_watch.start();
  propose();
}

void AnalyseDialog::takeSurvey() {
  if (!m_survey || !m_survey->done) return;
  m_watch.stop();
  m_known = std::move(m_survey->result);
  m_survey = nullptr;
  dropProposals();
  for (const std::string& folder : m_known.copybookFolders)
    addCopybooks(text(folder), true);
  check();
}

void AnalyseDialog::propose() {
  const QString first = m_sources->count() > 0 ? m_sources->item(0)->text() : QString();
  if (!m_nameIsOwn) m_name->setText(first.isEmpty() ? QString() : nameFor(first));
  if (!m_baseIsOwn)
    m_base->setText(first.isEmpty() ? QString() : QDir::toNativeSeparators(baseFor(first, m_name->text())));
  check();
}

std::vector<std::string> AnalyseDialog::tickedFolders() const {
  std::vector<std::string> folders;
  for (int row = 0; row < m_copybooks->count(); ++row)
    if (m_copybooks->item(row)->checkState() == Qt::Checked)
      folders.push_back(m_copybooks->item(row)->text().toStdString());
  return folders;
}

QString AnalyseDialog::trouble() const {
  try {
    orvane::checkProjectName(m_name->text().trimmed().toStdString());
  } catch (const platform::Error& error) {
    return text(std::string(error.what()));
  }
  const QString base = m_base->text().trimmed();
  if (!QDir::isAbsolutePath(base)) return text(Text::AnalyseNoBase);
  if (!canBeMade(base)) return text(Text::AnalyseBaseClosed).arg(base);
  return {};
}

void AnalyseDialog::check() {
  const bool looking = m_survey != nullptr;
  const std::size_t programs = looking ? 0 : orvane::programCount(m_known, tickedFolders());
  QString found;
  if (m_sources->count() == 0)
    found = text(Text::AnalyseNoSources);
  else if (looking)
    found = text(Text::AnalyseLooking);
  else
    found = text(Text::AnalyseFound).arg(programs);
  for (const std::string& problem : m_known.problems)
    if (!looking) found += QLatin1Char('\n') + text(problem);
  m_found->setText(found);
  QString note;
  bool isGood = false;
  if (m_sources->count() > 0) {
    note = trouble();
    isGood = note.isEmpty();
    const QString base = m_base->text().trimmed();
    if (isGood && isBase(base))
      note = QFileInfo::exists(base + QStringLiteral("/Projects/") + m_name->text().trimmed())
                 ? text(Text::AnalyseKnownProject)
                 : text(Text::AnalyseKnownBase);
    else if (isGood)
      note = text(Text::AnalyseNewBase);
  }
  m_note->setText(note);
  m_go->setEnabled(isGood && programs > 0);
}

AnalysisRequest AnalyseDialog::request() const {
  AnalysisRequest request;
  request.base = m_base->text().trimmed().toStdString();
  request.project = m_name->text().trimmed().toStdString();
  for (int row = 0; row < m_sources->count(); ++row)
    request.sources.push_back(m_sources->item(row)->text().toStdString());
  request.copybookFolders = tickedFolders();
  return request;
}

} // namespace desktop
