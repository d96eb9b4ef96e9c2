#include "desktop/start/start_window.hpp"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QThreadPool>
#include <QUrl>

#include "desktop/icons.hpp"
#include "desktop/start/analyse_dialog.hpp"
#include "desktop/start/run_dialog.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"
#include "orvane/projects.hpp"
#include "platform/runtime/error.hpp"

namespace desktop {

namespace {

enum Role { kBase = Qt::UserRole, kGone };

/// Two lines: the project, under it the folder; what is gone is said at the right.
class RecentDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    return {200, 2 * option.fontMetrics.height() + 3 * kSpace};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const Theme& t = theme();
    const bool gone = index.data(kGone).toBool();
    const bool selected = option.state & QStyle::State_Selected;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect card = option.rect.adjusted(2, 1, -2, -1);
    if (selected || (option.state & QStyle::State_MouseOver)) {
      const bool active = option.state & QStyle::State_HasFocus || option.state & QStyle::State_Active;
      painter->setBrush(!selected ? t.hover : active ? t.selected : t.selectedIdle);
      painter->setPen(Qt::NoPen);
      painter->drawRoundedRect(card, 5, 5);
    }
    if (option.state & QStyle::State_HasFocus) {
      painter->setBrush(Qt::NoBrush);
      painter->setPen(t.accent);
      painter->drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    }
    QRect line = card.adjusted(kSpace + 4, kSpace, -kSpace - 4, 0);
    line.setHeight(option.fontMetrics.height());
    QFont bold = option.font;
    bold.setWeight(QFont::DemiBold);
    if (gone) {
      painter->setPen(t.affected);
      painter->drawText(line, Qt::AlignRight | Qt::AlignVCenter, text(Text::StartGone));
    }
    const bool isHint = !(index.flags() & Qt::ItemIsEnabled);
    painter->setFont(isHint ? option.font : bold);
    painter->setPen(gone || isHint ? t.muted : t.text);
    painter->drawText(line, Qt::AlignVCenter, index.data(Qt::DisplayRole).toString());
    painter->setFont(option.font);
    painter->setPen(selected ? t.text : t.muted);
    line.translate(0, line.height() + 2);
    painter->drawText(line, Qt::AlignVCenter,
                      option.fontMetrics.elidedText(index.data(kBase).toString(), Qt::ElideMiddle, line.width()));
    painter->restore();
  }
};

QLabel* label(const QString& words, double scale, QFont::Weight weight, const QColor& colour) {
  auto* made = new QLabel(words);
  QFont font = made->font();
  font.setPointSizeF(font.pointSizeF() * scale);
  font.setWeight(weight);
  made->setFont(font);
  QPalette colours = made->palette();
  colours.setColor(QPalette::WindowText, colour);
  made->setPalette(colours);
  made->setWordWrap(true);
  return made;
}

QPushButton* button(Text id, const char* name) {
  auto* made = new QPushButton(text(id));
  made->setObjectName(QString::fromLatin1(name));
  return made;
}

} // namespace

StartWindow::StartWindow(tarnsift::Ref<tarnsift::SettingsStore> settings)
    : askFolder([](QWidget* parent, const QString& title) { return QFileDialog::getExistingDirectory(parent, title); }),
      m_settings(std::move(settings)) {
  setObjectName(QStringLiteral("startWindow"));
  setWindowTitle(QStringLiteral("Tarnsift"));
  setAcceptDrops(true);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(actions());
  row->addWidget(recents(), 1);
  resize(820, 540);
  connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this, [this] {
    if (onHelp) onHelp();
  });
  refresh();
}

QWidget* StartWindow::actions() {
  auto* side = new QWidget(this);
  constexpr int kWidth = 270, kIcon = 44;
  side->setFixedWidth(kWidth);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(3 * kSpace, 4 * kSpace, 3 * kSpace, 3 * kSpace);
  column->setSpacing(kSpace);
  auto* picture = new QLabel;
  picture->setPixmap(icon("App").pixmap(QSize(kIcon, kIcon), devicePixelRatio()));
  column->addWidget(picture);
  column->addWidget(label(QStringLiteral("Tarnsift"), 1.9, QFont::DemiBold, theme().text));
  column->addWidget(label(text(Text::StartPurpose), 1, QFont::Normal, theme().muted));
  column->addSpacing(2 * kSpace);
  auto* analyseButton = button(Text::StartAnalyse, "startAnalyse");
  analyseButton->setDefault(true);
  auto* openButton = button(Text::StartOpenBase, "startOpenBase");
  auto* help = button(Text::StartHelp, "startHelp");
  column->addWidget(analyseButton);
  column->addWidget(openButton);
  column->addStretch();
  column->addWidget(help);
  connect(analyseButton, &QPushButton::clicked, this, [this] { analyse(); });
  connect(openButton, &QPushButton::clicked, this, [this] {
    const QString folder = askFolder(this, text(Text::StartChooseBase));
    if (!folder.isEmpty()) openBase(folder.toStdString());
  });
  connect(help, &QPushButton::clicked, this, [this] {
    if (onHelp) onHelp();
  });
  return side;
}

QWidget* StartWindow::recents() {
  auto* side = new QWidget(this);
  side->setObjectName(QStringLiteral("startSide"));
  side->setAutoFillBackground(true);
  QPalette ground = side->palette();
  ground.setColor(QPalette::Window, theme().base);
  side->setPalette(ground);
  m_notice = label({}, 1, QFont::Normal, theme().affected);
  m_notice->setObjectName(QStringLiteral("startNotice"));
  m_notice->setTextFormat(Qt::PlainText);
  m_list = new QListWidget;
  m_list->setObjectName(QStringLiteral("startRecent"));
  m_list->setFrameShape(QFrame::NoFrame);
  m_list->setItemDelegate(new RecentDelegate(m_list));
  m_list->setMouseTracking(true);
  m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  auto* title = label(text(Text::StartRecent), 1.15, QFont::DemiBold, theme().text);
  title->setBuddy(m_list);
  m_list->setAccessibleName(text(Text::StartRecent));
  m_open = button(Text::StartOpen, "startOpen");
  m_verify = button(Text::StartVerify, "startVerify");
  m_remove = button(Text::StartRemove, "startRemove");
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(kSpace);
  for (QPushButton* one : {m_open, m_verify, m_remove})
    buttons->addWidget(one);
  buttons->addStretch();
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(3 * kSpace, 4 * kSpace, 3 * kSpace, 3 * kSpace);
  column->setSpacing(kSpace);
  column->addWidget(m_notice);
  column->addWidget(title);
  column->addWidget(m_list, 1);
  column->addLayout(buttons);
  connect(m_list, &QListWidget::currentRowChanged, this, [this] { follow(); });
  connect(m_list, &QListWidget::itemActivated, this, [this] { openChosen(); });
  connect(m_open, &QPushButton::clicked, this, [this] { openChosen(); });
  connect(m_verify, &QPushButton::clicked, this, [this] { verifyChosen(); });
  connect(m_remove, &QPushButton::clicked, this, [this] { removeChosen(); });
  connect(new QShortcut(QKeySequence::Delete, m_list, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
          this, [this] { removeChosen(); });
  return side;
}

void StartWindow::refresh() {
  const int row = std::max(0, m_list->currentRow());
  m_projects = recentProjects(*m_settings);
  m_list->clear();
  for (const RecentProject& one : m_projects) {
    auto* item = new QListWidgetItem(text(one.project), m_list);
    item->setData(kBase, text(one.base));
    item->setToolTip(text(one.base));
    item->setData(Qt::AccessibleTextRole, text(one.project + ", " + one.base));
  }
  if (m_projects.empty()) {
    auto* hint = new QListWidgetItem(text(Text::StartNoRecent), m_list);
    hint->setFlags(Qt::NoItemFlags);
  }
  m_list->setCurrentRow(std::min(row, static_cast<int>(m_projects.size()) - 1));
  if (m_projects.empty()) m_list->setCurrentRow(-1);
  follow();
  lookWhatIsGone();
  if (!m_projects.empty()) m_list->setFocus();
}

// A folder may lie on a disk that takes its time.
void StartWindow::lookWhatIsGone() {
  QThreadPool::globalInstance()->start([page = QPointer<StartWindow>(this), projects = m_projects] {
    std::vector<bool> gone;
    for (const RecentProject& one : projects)
      gone.push_back(!QFileInfo(text(one.base + "/Orvane.db")).isFile() ||
                     !QFileInfo(text(one.base + "/Projects/" + one.project)).isDir());
    QMetaObject::invokeMethod(qApp, [page, projects, gone] {
      if (!page || page->m_projects != projects) return;
      for (std::size_t i = 0; i < gone.size(); ++i) {
        QListWidgetItem* item = page->m_list->item(static_cast<int>(i));
        item->setData(kGone, static_cast<bool>(gone[i]));
        const QString words = item->text() + QStringLiteral(", ") + item->data(kBase).toString();
        if (gone[i]) item->setData(Qt::AccessibleTextRole, words + QStringLiteral(", ") + text(Text::StartGone));
      }
      page->follow();
    });
  });
}

std::optional<RecentProject> StartWindow::chosen() const {
  const int row = m_list->currentRow();
  if (row < 0 || row >= static_cast<int>(m_projects.size())) return {};
  return m_projects[static_cast<std::size_t>(row)];
}

void StartWindow::follow() {
  const bool any = chosen().has_value();
  const bool gone = any && m_list->currentItem()->data(kGone).toBool();
  m_open->setEnabled(any && !gone);
  m_verify->setEnabled(any && !gone);
  m_remove->setEnabled(any);
  m_notice->setVisible(!m_notice->text().isEmpty());
}

void StartWindow::say(const QString& sentence) {
  m_notice->setText(sentence);
  follow();
}

void StartWindow::openChosen() {
  if (const auto one = chosen(); one && m_open->isEnabled()) {
    say({});
    if (onOpen) onOpen(*one);
  }
}

void StartWindow::verifyChosen() {
  if (const auto one = chosen())
    run({.base = one->base, .project = one->project, .sources = {}, .copybookFolders = {}});
}

void StartWindow::removeChosen() {
  const auto one = chosen();
  if (!one) return;
  say({});
  forgetProject(*one, *m_settings);
  refresh();
}

void StartWindow::openBase(const std::string& folder) {
  say({});
  try {
    const orvane::BaseFolder base = orvane::BaseFolder::open(folder);
    std::vector<std::string> names;
    {
      const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
      names = orvane::projectNames(*repository);
    }
    if (names.empty()) return say(text(Text::StartNoProject).arg(text(base.path())));
    const std::string name = names.size() == 1 ? names.front() : chooseProject(names);
    if (!name.empty() && onOpen) onOpen({base.path(), name});
  } catch (const platform::Error& error) {
    say(QFileInfo::exists(text(folder + "/Orvane.db")) ? text(std::string(error.what()))
                                                       : text(Text::StartNoBase).arg(text(folder)));
  }
}

std::string StartWindow::chooseProject(const std::vector<std::string>& names) {
  QDialog dialog(this);
  dialog.setObjectName(QStringLiteral("chooseProject"));
  dialog.setWindowTitle(text(Text::StartChooseProject));
  auto* list = new QListWidget;
  list->setAccessibleName(dialog.windowTitle());
  for (const std::string& name : names)
    list->addItem(text(name));
  list->setCurrentRow(0);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Open)->setText(text(Text::StartOpen));
  buttons->button(QDialogButtonBox::Cancel)->setText(text(Text::Cancel));
  auto* column = new QVBoxLayout(&dialog);
  column->addWidget(list);
  column->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  connect(list, &QListWidget::itemActivated, &dialog, &QDialog::accept);
  if (dialog.exec() != QDialog::Accepted || list->currentRow() < 0) return {};
  return names[static_cast<std::size_t>(list->currentRow())];
}

void StartWindow::analyse(const QStringList& sources) {
  say({});
  AnalyseDialog dialog(this);
  if (!sources.isEmpty()) dialog.addSources(sources);
  if (dialog.exec() == QDialog::Accepted) run(dialog.request());
}

void StartWindow::run(AnalysisRequest request) {
  say({});
  RunDialog dialog(std::move(request), this);
  const bool wanted = dialog.exec() == QDialog::Accepted;
  if (dialog.project()) rememberProject(*dialog.project(), *m_settings);
  refresh();
  if (wanted && onOpen) onOpen(*dialog.project());
}

void StartWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  if (onClosed) onClosed();
}

void StartWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void StartWindow::dropEvent(QDropEvent* event) {
  QStringList paths;
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile()) paths << url.toLocalFile();
  if (paths.isEmpty()) return;
  event->acceptProposedAction();
  QMetaObject::invokeMethod(
      this, [this, paths] { analyse(paths); }, Qt::QueuedConnection);
}

} // namespace desktop
