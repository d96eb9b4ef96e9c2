#include "desktop/source/workspace_bar.hpp"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>

#include "desktop/icons.hpp"
#include "desktop/source/source_colours.hpp"
#include "desktop/source/source_view.hpp"
#include "desktop/texts.hpp"

namespace desktop {

namespace {

constexpr int kLegendFrom = 760; ///< width, pixels, from which there is room for the legend

QToolButton* button(QWidget* parent, const std::string& key, const QString& tip) {
  auto* made = new QToolButton(parent);
  made->setIcon(icon(key));
  made->setAutoRaise(true);
  made->setToolTip(tip);
  made->setAccessibleName(tip);
  return made;
}

// What the colours of the marks mean.
class Legend final : public QWidget {
 public:
  explicit Legend(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    using orvane::MarkKind;
    for (const auto& [kind, caption] :
         {std::pair(MarkKind::declaration, Text::SourceDeclaration), std::pair(MarkKind::read, Text::SourceReads),
          std::pair(MarkKind::write, Text::SourceWrites)}) {
      auto* label = new QLabel(this);
      label->setText(QStringLiteral("<span style='color:%1'>\u25a0</span> %2")
                         .arg(SourceColours(palette()).of(kind).name(), text(caption).toHtmlEscaped()));
      row->addWidget(label);
    }
  }
};

} // namespace

WorkspaceBar::WorkspaceBar(SourceView& view, QWidget* parent)
    : QWidget(parent), m_view(view), m_files(new QComboBox(this)), m_usages(new QLabel(this)),
      m_legend(new Legend(this)), m_previous(button(this, "Up", text(Text::SourcePrevious))),
      m_next(button(this, "Down", text(Text::SourceNext))) {
  QToolButton* find = button(this, "Find", text(Text::SourceFind));
  m_files->setAccessibleName(text(Text::SourceFile));
  m_files->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_files->setMinimumContentsLength(18);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(6, 3, 6, 3);
  row->setSpacing(6);
  row->addWidget(m_files, 1);
  row->addStretch(1);
  row->addWidget(m_legend);
  row->addSpacing(6);
  row->addWidget(m_usages);
  row->addWidget(m_previous);
  row->addWidget(m_next);
  row->addWidget(find);
  connect(m_files, &QComboBox::activated, this, [this](int file) { m_view.showFile(file); });
  connect(m_previous, &QToolButton::clicked, this, [this] { m_view.previousUsage(); });
  connect(m_next, &QToolButton::clicked, this, [this] { m_view.nextUsage(); });
  connect(find, &QToolButton::clicked, this, [this] { m_view.find(); });
  m_view.onChanged = [this] { refresh(); };
  refresh();
}

QSize WorkspaceBar::sizeHint() const {
  return {400, std::max(30, m_files->sizeHint().height() + 6)};
}

void WorkspaceBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  m_legend->setVisible(width() >= kLegendFrom);
}

void WorkspaceBar::refresh() {
  const QSignalBlocker quiet(m_files);
  const auto& files = m_view.files();
  bool same = m_files->count() == static_cast<int>(files.size());
  for (int i = 0; same && i < m_files->count(); ++i)
    same = m_files->itemData(i).toString() == files[static_cast<std::size_t>(i)];
  if (!same) {
    m_files->clear();
    for (const QString& file : files) {
      m_files->addItem(file.section(QLatin1Char('\\'), -1), file);
      m_files->setItemData(m_files->count() - 1, file, Qt::ToolTipRole);
    }
  }
  m_files->setCurrentIndex(m_view.currentFile());
  m_files->setEnabled(m_files->count() > 1);
  const int count = m_view.usageCount(), current = m_view.currentUsage();
  if (m_view.marks().empty())
    m_usages->clear();
  else if (count == 0)
    m_usages->setText(text(Text::SourceNoUsages));
  else if (current > 0)
    m_usages->setText(text(Text::SourceUsageCount).arg(current).arg(count));
  else
    m_usages->setText(text(Text::SourceUsages).arg(count));
  m_previous->setEnabled(count > 0);
  m_next->setEnabled(count > 0);
}

} // namespace desktop
