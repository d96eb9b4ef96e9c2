#include "desktop/options/option_page.hpp"

#include <memory>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "desktop/options/option_captions.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"

namespace desktop {

namespace {

using platform::Document;
using platform::Node;

constexpr int kIndent = 22;           ///< pixels of what depends on a switch
constexpr int kLargestNumber = 32767; ///< numbers are 16 bits wide
constexpr int kLabelWidth = 220;

bool isOn(const Node& node, const char* name) {
  return node.getAttribute(name).asText() == "true";
}

void setOn(Node node, const char* name, bool on) {
  node.setAttribute(name, on ? "true" : "false");
}

// What was pasted may hold characters that no document can.
std::string typed(QString value) {
  value.removeIf([](QChar c) { return c.category() == QChar::Other_Control || c.unicode() >= 0xfffe; });
  return value.toStdString();
}

QVBoxLayout* columnIn(QWidget* widget, int left) {
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(left, 0, 0, 0);
  column->setSpacing(kSpace);
  return column;
}

void addChildren(QVBoxLayout& column, const Document& document, const Node& parent, OptionChanges& changes) {
  for (const Node& child : parent.children())
    addOption(column, document, child, changes);
}

void addLabelled(QVBoxLayout& column, const Node& option, QWidget* editor) {
  auto* row = new QHBoxLayout;
  auto* label = new QLabel(optionCaption(option));
  label->setMinimumWidth(kLabelWidth);
  label->setBuddy(editor);
  editor->setAccessibleName(label->text());
  row->addWidget(label);
  const bool narrow = editor->maximumWidth() < QWIDGETSIZE_MAX;
  row->addWidget(editor, 1, narrow ? Qt::AlignLeading : Qt::Alignment());
  column.addLayout(row);
}

void addSwitch(QVBoxLayout& column, const Document& document, const Node& option, OptionChanges& changes) {
  auto* box = new QCheckBox(optionCaption(option));
  box->setChecked(isOn(option, "VALUE"));
  column.addWidget(box);
  changes.emplace_back([box, option, was = box->isChecked()] {
    if (box->isChecked() != was) setOn(option, "VALUE", box->isChecked());
  });
  if (!option.firstChild()) return;
  auto* dependent = new QWidget;
  addChildren(*columnIn(dependent, kIndent), document, option, changes);
  dependent->setEnabled(box->isChecked());
  QObject::connect(box, &QCheckBox::toggled, dependent, &QWidget::setEnabled);
  column.addWidget(dependent);
}

// VALUES, where an option has it, lists what it can be.
void addText(QVBoxLayout& column, Node option, OptionChanges& changes) {
  const QString value = text(option.getAttribute("VALUE").asText());
  const std::string values = option.getAttribute("VALUES").asText();
  if (!values.empty()) {
    auto* choice = new QComboBox;
    choice->addItems(text(values).split(QLatin1Char('|')));
    if (choice->findText(value) < 0) choice->addItem(value);
    choice->setCurrentText(value);
    choice->setEditable(isOn(option, "OPEN"));
    addLabelled(column, option, choice);
    changes.emplace_back([choice, option, value]() mutable {
      if (choice->currentText() != value) option.setAttribute("VALUE", typed(choice->currentText()));
    });
    return;
  }
  auto* edit = new QLineEdit(value);
  addLabelled(column, option, edit);
  changes.emplace_back([edit, option]() mutable {
    if (edit->isModified()) option.setAttribute("VALUE", typed(edit->text()));
  });
}

void addNumber(QVBoxLayout& column, Node option, OptionChanges& changes) {
  auto* spin = new QSpinBox;
  spin->setRange(0, kLargestNumber);
  spin->setValue(text(option.getAttribute("VALUE").asText()).toInt());
  spin->setMaximumWidth(120);
  addLabelled(column, option, spin);
  changes.emplace_back([spin, option, was = spin->value()]() mutable {
    if (spin->value() != was) option.setAttribute("VALUE", std::to_string(spin->value()));
  });
}

void addHeading(QVBoxLayout& column, const Node& option, QWidget* editor) {
  const bool named = !option.getAttribute("CAPTION").asText().empty();
  const QString caption = optionCaption(named || !option.parent() ? option : option.parent());
  editor->setAccessibleName(caption);
  if (!named) return;
  auto* label = new QLabel(caption);
  label->setBuddy(editor);
  column.addWidget(label);
}

// No lower than so many entries.
void setLines(QListWidget& view, int count) {
  constexpr int kPadding = 8;
  view.setMinimumHeight(count * (view.fontMetrics().height() + kPadding) + kSpace);
}

// Entries with a tick each; what a tick stands for is fixed.
void addTicks(QVBoxLayout& column, const Node& list, OptionChanges& changes) {
  auto* view = new QListWidget;
  for (const Node& entry : list.children()) {
    auto* item = new QListWidgetItem(optionCaption(entry), view);
    item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setCheckState(isOn(entry, "CHECKED") ? Qt::Checked : Qt::Unchecked);
  }
  addHeading(column, list, view);
  setLines(*view, std::clamp(view->count(), 4, 8));
  column.addWidget(view);
  changes.emplace_back([view, entries = list.children()] {
    for (int i = 0; i < view->count(); ++i) {
      const bool on = view->item(i)->checkState() == Qt::Checked;
      const Node& entry = entries[static_cast<std::size_t>(i)];
      if (on != isOn(entry, "CHECKED")) setOn(entry, "CHECKED", on);
    }
  });
}

// Texts that the analyst adds, changes and takes out, each with a tick. An entry that stays keeps its element.
void addStrings(QVBoxLayout& column, Document document, Node list, OptionChanges& changes) {
  auto* view = new QListWidget;
  std::vector<Node> entries = list.children();
  std::erase_if(entries, [](const Node& entry) { return entry.getAttribute("VALUE").isNull(); });
  constexpr int kEntry = Qt::UserRole;
  const auto addItem = [view](const QString& value, bool ticked, int entry) {
    auto* item = new QListWidgetItem(value, view);
    item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
    item->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    item->setData(kEntry, entry);
    return item;
  };
  for (std::size_t i = 0; i < entries.size(); ++i)
    addItem(text(entries[i].getAttribute("VALUE").asText()), isOn(entries[i], "CHECKED"), static_cast<int>(i));
  addHeading(column, list, view);
  setLines(*view, 4);
  column.addWidget(view);
  auto* add = new QPushButton(text(Text::OptionAdd));
  auto* remove = new QPushButton(text(Text::OptionRemove));
  auto* row = new QHBoxLayout;
  row->addWidget(add);
  row->addWidget(remove);
  row->addStretch(1);
  column.addLayout(row);
  QObject::connect(add, &QPushButton::clicked, view, [view, addItem] {
    QListWidgetItem* item = addItem(QString(), true, -1);
    view->setCurrentItem(item);
    view->editItem(item);
  });
  QObject::connect(remove, &QPushButton::clicked, view, [view] { delete view->takeItem(view->currentRow()); });
  remove->setEnabled(false);
  QObject::connect(view, &QListWidget::currentRowChanged, remove, [remove](int at) { remove->setEnabled(at >= 0); });
  for (const auto& [key, button] : {std::pair(Qt::Key_Insert, add), std::pair(Qt::Key_Delete, remove)})
    QObject::connect(new QShortcut(key, view, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, button,
                     &QPushButton::click);
  changes.emplace_back([view, document, list, entries]() mutable {
    std::vector<bool> kept(entries.size(), false);
    for (int i = 0; i < view->count(); ++i) {
      const QListWidgetItem* item = view->item(i);
      const int at = item->data(kEntry).toInt();
      const bool untouched =
          at >= 0 && item->text().toStdString() == entries[static_cast<std::size_t>(at)].getAttribute("VALUE").asText();
      const std::string value = untouched ? item->text().toStdString() : typed(item->text().trimmed());
      if (value.empty() && !untouched) continue;
      Node entry = at >= 0 ? entries[static_cast<std::size_t>(at)] : list.appendChild(document.createElement("STRING"));
      if (at >= 0) kept[static_cast<std::size_t>(at)] = true;
      if (entry.getAttribute("VALUE").asText() != value) entry.setAttribute("VALUE", value);
      const bool on = item->checkState() == Qt::Checked;
      if (at < 0 || on != isOn(entry, "CHECKED")) setOn(entry, "CHECKED", on);
    }
    for (std::size_t i = 0; i < entries.size(); ++i)
      if (!kept[i]) list.removeChild(entries[i]);
  });
}

// One of several branches: what belongs to the chosen one is shown below.
void addChoice(QVBoxLayout& column, const Document& document, Node list, OptionChanges& changes) {
  auto* choice = new QComboBox;
  auto* pages = new QStackedWidget;
  const std::vector<Node> branches = list.children();
  for (const Node& branch : branches) {
    choice->addItem(optionCaption(branch));
    auto* page = new QWidget;
    QVBoxLayout* inner = columnIn(page, 0);
    addChildren(*inner, document, branch, changes);
    if (!(inner->expandingDirections() & Qt::Vertical)) inner->addStretch(1);
    pages->addWidget(page);
    if (branch.getAttribute("NAME").asText() == list.getAttribute("VALUE").asText())
      choice->setCurrentIndex(choice->count() - 1);
  }
  pages->setCurrentIndex(choice->currentIndex());
  const QString value = text(list.getAttribute("VALUE").asText());
  if (!value.isEmpty() &&
      value != text(branches[static_cast<std::size_t>(choice->currentIndex())].getAttribute("NAME").asText()))
    choice->setCurrentIndex(-1); // it names none of them
  QObject::connect(choice, &QComboBox::currentIndexChanged, pages, &QStackedWidget::setCurrentIndex);
  if (branches.size() > 1)
    addLabelled(column, list, choice);
  else
    choice->setParent(pages), choice->hide();
  column.addWidget(pages, 1);
  changes.emplace_back([choice, list, branches, was = choice->currentIndex()]() mutable {
    if (choice->currentIndex() != was)
      list.setAttribute("VALUE",
                        branches[static_cast<std::size_t>(choice->currentIndex())].getAttribute("NAME").asText());
  });
}

bool isTickList(const Node& list) {
  for (const Node& entry : list.children())
    if (entry.getAttribute("CHECKED").isNull()) return false;
  return true;
}

} // namespace

bool showsAnything(const Node& option) {
  const std::string kind = option.name();
  if (kind == "STRINGS") return true;
  if (kind == "LIST" && option.firstChild() && isTickList(option)) return true;
  if (kind == "LIST" && option.children().size() > 1) return true;
  if (kind != "LIST" && kind != "GROUP" && kind != "CASE" && !option.getAttribute("VALUE").isNull()) return true;
  for (const Node& child : option.children())
    if (showsAnything(child)) return true;
  return false;
}

QString optionCaption(const Node& option) {
  const std::string caption = option.getAttribute("CAPTION").asText();
  return captionInLanguage(caption.empty() ? option.getAttribute("NAME").asText() : caption);
}

void addOption(QVBoxLayout& column, Document document, const Node& option, OptionChanges& changes) {
  const std::string kind = option.name();
  if (kind == "BOOL") return addSwitch(column, document, option, changes);
  if (kind == "NUMBER") return addNumber(column, option, changes);
  if (kind == "STRINGS") return addStrings(column, document, option, changes);
  if (kind == "LIST" && isTickList(option)) return addTicks(column, option, changes);
  if (kind == "LIST") return addChoice(column, document, option, changes);
  if (kind != "GROUP" && kind != "CASE" && !option.getAttribute("VALUE").isNull())
    return addText(column, option, changes);
  if (!showsAnything(option)) return; // it stays as it is
  auto* group = new QGroupBox(optionCaption(option));
  auto* inner = new QVBoxLayout(group);
  inner->setSpacing(kSpace);
  addChildren(*inner, document, option, changes);
  column.addWidget(group);
}

} // namespace desktop
