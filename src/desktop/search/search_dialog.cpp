#include "desktop/search/search_dialog.hpp"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"
#include "orvane/named_criteria.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace desktop {

namespace {

constexpr int kMostShown = 500; ///< names in the preview

QString patternsOf(const std::vector<std::string>& patterns) {
  return patterns.empty() ? text(Text::SearchNone) : text(platform::joined(patterns, ", ")).toHtmlEscaped();
}

} // namespace

SearchDialog::SearchDialog(SearchContext context, const std::string& start, QWidget* parent)
    : QDialog(parent), m_context(std::move(context)), m_tabs(new QTabWidget(this)), m_patterns(new QLabel),
      m_saved(new QListWidget), m_definition(new QLabel), m_count(new QLabel), m_matches(new QListWidget) {
  setObjectName(QStringLiteral("searchDialog"));
  setWindowTitle(text(Text::SearchTitle));
  m_fields = criterionTabs(m_tabs);
  for (const CriterionTab& tab : m_fields) {
    tab.fields->onChanged = [this] { refresh(); };
    m_tabs->addTab(tab.fields, tab.caption);
  }
  m_filterTab = m_tabs->addTab(filterTab(), text(Text::SearchFilter));
  m_savedTab = m_tabs->addTab(savedTab(), text(Text::SearchSaved));
  m_definition->setWordWrap(true);
  m_definition->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* buttons = new QDialogButtonBox(this);
  m_apply = buttons->addButton(text(Text::SearchApply), QDialogButtonBox::AcceptRole);
  m_save = buttons->addButton(text(Text::SearchSaveAs), QDialogButtonBox::ActionRole);
  buttons->addButton(text(Text::Cancel), QDialogButtonBox::RejectRole);
  auto* middle = new QHBoxLayout;
  middle->setSpacing(2 * kSpace);
  middle->addWidget(m_tabs, 5);
  middle->addWidget(preview(), 3);
  auto* column = new QVBoxLayout(this);
  column->addLayout(middle, 1);
  column->addWidget(m_definition);
  column->addWidget(buttons);
  resize(940, 480);
  listSaved({});
  show(start);
  connect(m_tabs, &QTabWidget::currentChanged, this, [this] { refresh(); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_save, &QPushButton::clicked, this, [this] { saveAs(); });
  refresh();
}

QWidget* SearchDialog::preview() {
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  m_count->setWordWrap(true);
  m_matches->setObjectName(QStringLiteral("searchMatches"));
  m_matches->setAccessibleName(text(Text::SearchMatches));
  m_matches->setSelectionMode(QAbstractItemView::NoSelection);
  m_matches->setUniformItemSizes(true);
  m_matches->setSpacing(2);
  column->addWidget(m_count);
  column->addWidget(m_matches, 1);
  auto* scope = new QLabel(m_context.scope);
  scope->setWordWrap(true);
  column->addWidget(scope);
  return side;
}

QWidget* SearchDialog::filterTab() {
  auto* tab = new QWidget(m_tabs);
  auto* column = new QVBoxLayout(tab);
  m_patterns->setWordWrap(true);
  auto* edit = new QPushButton(text(Text::SearchEditFilter));
  column->addWidget(m_patterns);
  column->addWidget(edit, 0, Qt::AlignLeft);
  column->addStretch(1);
  connect(edit, &QPushButton::clicked, this, [this] {
    if (m_context.editFilter) m_context.editFilter();
    refresh();
  });
  return tab;
}

QWidget* SearchDialog::savedTab() {
  auto* tab = new QWidget(m_tabs);
  auto* column = new QVBoxLayout(tab);
  auto* change = new QPushButton(text(Text::SearchEdit));
  auto* remove = new QPushButton(text(Text::OptionRemove));
  auto* row = new QHBoxLayout;
  row->addWidget(change);
  row->addWidget(remove);
  row->addStretch(1);
  m_saved->setAccessibleName(text(Text::SearchSaved));
  column->addWidget(m_saved, 1);
  column->addLayout(row);
  connect(m_saved, &QListWidget::currentRowChanged, this, [this] { refresh(); });
  connect(m_saved, &QListWidget::itemActivated, this, [this] {
    if (m_apply->isEnabled()) accept();
  });
  connect(change, &QPushButton::clicked, this, [this] { edit(); });
  connect(remove, &QPushButton::clicked, this, [this] { this->remove(); });
  return tab;
}

void SearchDialog::listSaved(const QString& current) {
  m_saved->clear();
  for (const orvane::SavedCriterion& saved : orvane::savedCriteria(m_context.options)) {
    auto* item = new QListWidgetItem(text(saved.name), m_saved);
    item->setToolTip(text(saved.definition));
    if (item->text().compare(current, Qt::CaseInsensitive) == 0) m_saved->setCurrentItem(item);
  }
}

QString SearchDialog::selectedSaved() const {
  return m_saved->currentItem() ? m_saved->currentItem()->text() : QString();
}

// Opens on the tab of a criterion with its parts in the fields.
void SearchDialog::show(const std::string& criterion) {
  for (const CriterionTab& tab : m_fields)
    tab.fields->clear();
  if (criterion == orvane::kProjectFilter) return m_tabs->setCurrentIndex(m_filterTab);
  if (criterion.starts_with(orvane::kSavedCriterion)) {
    listSaved(text(criterion.substr(orvane::kSavedCriterion.size())));
    return m_tabs->setCurrentIndex(m_savedTab);
  }
  int first = -1;
  for (const std::string& part : orvane::criterionParts(criterion))
    for (int tab = 0; tab < static_cast<int>(m_fields.size()); ++tab)
      if (m_fields[static_cast<std::size_t>(tab)].fields->takePart(part) && first < 0) first = tab;
  m_tabs->setCurrentIndex(std::max(first, 0));
  m_tabs->currentWidget()->setFocus();
}

std::string SearchDialog::composed() const {
  std::vector<std::string> parts;
  for (const CriterionTab& tab : m_fields)
    tab.fields->addParts(parts);
  return orvane::joinedCriteria(parts);
}

std::string SearchDialog::criterion() const {
  if (m_tabs->currentIndex() == m_filterTab) return std::string(orvane::kProjectFilter);
  if (m_tabs->currentIndex() == m_savedTab)
    return selectedSaved().isEmpty() ? "" : std::string(orvane::kSavedCriterion) + selectedSaved().toStdString();
  return composed();
}

// What is chosen, how many names it matches, and whether it can be applied.
void SearchDialog::refresh() {
  const orvane::PatternFilter filter = orvane::patternFilter(m_context.options);
  m_patterns->setText(text(Text::SearchFilterIs).arg(patternsOf(filter.like), patternsOf(filter.unlike)));
  m_matches->clear();
  const std::string chosen = criterion();
  m_definition->setText(chosen.empty() ? text(Text::SearchEmpty) : text(chosen));
  m_save->setEnabled(!composed().empty() && m_tabs->currentIndex() < m_filterTab);
  m_apply->setEnabled(false);
  m_count->clear();
  if (chosen.empty()) return;
  try {
    const orvane::Criterion matches = orvane::projectCriterion(m_context.options, chosen);
    m_apply->setEnabled(true);
    const orvane::StoreData* analysis = m_context.program ? m_context.program() : nullptr;
    if (!analysis) return m_count->setText(text(Text::SearchNoProgram));
    qlonglong count = 0;
    for (std::uint32_t i = 0; i < analysis->constructs.size(); ++i) {
      if (!matches(*analysis, i)) continue;
      if (++count <= kMostShown) m_matches->addItem(text(std::string(analysis->text(analysis->constructs[i].name))));
    }
    m_count->setText(text(Text::SearchCount).arg(QLocale().toString(count), m_context.programName));
  } catch (const platform::Error& error) {
    m_definition->setText(text(std::string(error.what())));
  }
}

void SearchDialog::saveAs() {
  bool accepted = false;
  const QString name = QInputDialog::getText(this, text(Text::SearchSaveAs), text(Text::SearchName), QLineEdit::Normal,
                                             selectedSaved(), &accepted);
  if (!accepted) return;
  try {
    orvane::saveCriterion(m_context.options, {name.toStdString(), composed()});
    if (m_context.saveOptions) m_context.saveOptions();
    listSaved(name.trimmed());
    m_tabs->setCurrentIndex(m_savedTab);
  } catch (const platform::Error& error) {
    QMessageBox::warning(this, windowTitle(), text(std::string(error.what())));
  }
}

void SearchDialog::edit() {
  for (const orvane::SavedCriterion& saved : orvane::savedCriteria(m_context.options))
    if (text(saved.name) == selectedSaved()) return show(saved.definition);
}

void SearchDialog::remove() {
  if (selectedSaved().isEmpty()) return;
  try {
    orvane::removeCriterion(m_context.options, selectedSaved().toStdString());
    if (m_context.saveOptions) m_context.saveOptions();
  } catch (const platform::Error& error) {
    QMessageBox::warning(this, windowTitle(), text(std::string(error.what())));
  }
  listSaved({});
  refresh();
}

} // namespace desktop
