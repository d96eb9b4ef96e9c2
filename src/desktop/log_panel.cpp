#include "desktop/log_panel.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/icons.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"

namespace desktop {

namespace {

QToolButton* button(QWidget* parent, const char* iconKey, Text tip) {
  auto* made = new QToolButton(parent);
  made->setIcon(icon(iconKey));
  made->setAutoRaise(true);
  made->setToolTip(text(tip));
  made->setAccessibleName(text(tip) + QStringLiteral(": ") + text(Text::ActivityLog));
  return made;
}

} // namespace

LogPanel::LogPanel(tarnsift::Ref<orvane::Log> log, QWidget* parent)
    : QWidget(parent), m_log(std::move(log)), m_lines(new QListWidget(this)) {
  setObjectName(QStringLiteral("activityLog"));
  auto* title = new QLabel(text(Text::ActivityLog), this);
  QToolButton* minimize = button(this, "Minimize", Text::Minimize);
  minimize->setObjectName(QStringLiteral("minimizeLog"));
  QToolButton* close = button(this, "Close", Text::Close);
  close->setObjectName(QStringLiteral("closeLog"));
  auto* bar = new QHBoxLayout;
  bar->setContentsMargins(kSpace, 2, 2, 2);
  bar->setSpacing(2);
  bar->addWidget(title);
  bar->addStretch();
  bar->addWidget(minimize);
  bar->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(bar);
  layout->addWidget(m_lines);
  m_lines->setFrameShape(QFrame::NoFrame);
  m_lines->setAccessibleName(text(Text::ActivityLog));
  m_lines->setWordWrap(true);
  m_lines->setSelectionMode(QAbstractItemView::ExtendedSelection);
  for (const auto& line : m_log->lines())
    add(line);
  connect(minimize, &QToolButton::clicked, this, [this] { m_log->setMinimized(true); });
  connect(close, &QToolButton::clicked, this, [this] { m_log->setVisible(false); });
  m_log->onLine = [this](const std::string& line) { add(line); };
  m_log->onShown = [this] { follow(); };
  setVisible(m_log->Visible() && !m_log->Minimized());
}

LogPanel::~LogPanel() {
  m_log->onLine = {};
  m_log->onShown = {};
}

void LogPanel::add(const std::string& line) {
  m_lines->addItem(text(line));
  m_lines->scrollToBottom();
}

void LogPanel::follow() {
  setVisible(m_log->Visible() && !m_log->Minimized());
  if (onShown) onShown();
}

void LogPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), theme().panel);
}

} // namespace desktop
