#include "desktop/options/option_dialog.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "desktop/dialogs/frame.hpp"
#include "desktop/options/option_page.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"
#include "platform/runtime/error.hpp"

namespace desktop {

namespace {

using platform::Node;

bool isComponent(const Node& node) {
  return node.name() == "CASE" && !node.getAttribute("ID").asText().empty();
}

// A group, a list or a list of pages stands for itself; the single options of a branch share a page.
bool isPage(const Node& option) {
  return option.name() == "GROUP" || option.name() == "LIST" || option.name() == "CASE";
}

// A choice among one is none; what it is about belongs into the caption.
QString pageCaption(const Node& option) {
  const std::vector<Node> branches = option.children();
  const bool choice = option.name() == "LIST" && branches.size() == 1 && branches[0].getAttribute("CHECKED").isNull();
  return optionCaption(option) + (choice ? QLatin1Char(' ') + optionCaption(branches[0]) : QString());
}

} // namespace

OptionDialog::OptionDialog(platform::Document document, const std::string& path, QWidget* parent)
    : QDialog(parent), m_document(std::move(document)), m_list(new QListWidget(this)),
      m_pages(new QStackedWidget(this)) {
  const Node root = m_document.selectSingleNode(path);
  if (!root) throw platform::Error("the options have nothing at " + path);
  setObjectName(QStringLiteral("optionDialog"));
  setWindowTitle(text(Text::OptionTitle));
  m_list->setAccessibleName(text(Text::OptionPages));
  m_list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  auto* middle = new QHBoxLayout;
  middle->setSpacing(2 * kSpace);
  middle->addWidget(m_list);
  middle->addWidget(m_pages, 1);
  QVBoxLayout* column = addColumn(*this);
  column->addLayout(middle, 1);
  connect(m_list, &QListWidget::currentRowChanged, m_pages, &QStackedWidget::setCurrentIndex);
  if (isComponent(root)) {
    addPages(root);
    for (const Node& other : root.parent().children())
      if (isComponent(other) && !(other == root)) addPages(other);
  } else {
    addPage(pageCaption(root), {root});
    setWindowTitle(pageCaption(root));
  }
  addOkCancel(*this, *column); // behind the pages for the Tab key
  m_list->setFixedWidth(m_list->sizeHintForColumn(0) + 4 * kSpace);
  m_list->setVisible(m_list->count() > 1);
  m_list->setCurrentRow(0);
  resize(m_list->count() > 1 ? 760 : 560, 560);
}

void OptionDialog::addPages(const Node& branch) {
  std::vector<Node> single;
  for (const Node& option : branch.children())
    if (!isPage(option)) single.push_back(option);
  if (!single.empty()) addPage(optionCaption(branch), single);
  for (const Node& option : branch.children()) {
    if (option.name() == "LIST" && option.getAttribute("DISPLAY").asText() == "page") {
      for (const Node& page : option.children())
        addPage(optionCaption(page), page.children());
    } else if (!showsAnything(option)) {
      continue;
    } else if (option.name() == "GROUP" || option.name() == "CASE") {
      addPage(optionCaption(option), option.children());
    } else if (isPage(option)) {
      addPage(pageCaption(option), {option});
    }
  }
}

void OptionDialog::addPage(const QString& caption, const std::vector<Node>& options) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, kSpace, 0);
  column->setSpacing(kSpace);
  auto* title = new QLabel(caption, page);
  QFont font = title->font();
  font.setPointSizeF(font.pointSizeF() * 1.25);
  font.setWeight(QFont::DemiBold);
  title->setFont(font);
  column->addWidget(title);
  for (const Node& option : options)
    addOption(*column, m_document, option, m_changes);
  if (!(column->expandingDirections() & Qt::Vertical)) column->addStretch(1);
  auto* scroll = new QScrollArea;
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(page);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  m_pages->addWidget(scroll);
  m_list->addItem(caption);
}

void OptionDialog::accept() {
  try {
    for (const auto& change : m_changes)
      change();
  } catch (const platform::Error& error) {
    QMessageBox::critical(this, windowTitle(), text(std::string(error.what())));
    return;
  }
  QDialog::accept();
}

} // namespace desktop
