#include "desktop/form_dialog.hpp"

#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "desktop/qt_screen.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"

namespace desktop {

namespace {

template<typename C>
std::vector<C*> all(const platform::Form& form) {
  std::vector<C*> found;
  for (const auto& control : form.controls())
    if (auto* one = dynamic_cast<C*>(control.get())) found.push_back(one);
  return found;
}

QString withoutAccessKey(const std::string& caption) {
  return text(caption).remove(QLatin1Char('&'));
}

} // namespace

FormDialog::FormDialog(platform::Form& form, QtScreen& screen, QWidget* parent)
    : QDialog(parent), m_form(form), m_screen(screen) {
  setObjectName(text(form.Name()));
  setModal(true);
  build();
  follow();
  connectWhile(form.Changed, m_lifetime, [this] { follow(); });
}

// What the analyst does reaches the model; then everything may look different, or be over.
template<typename Action>
void FormDialog::act(Action action) {
  action();
  follow();
}

void FormDialog::build() {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2 * kSpace, 2 * kSpace, 2 * kSpace, 2 * kSpace);
  layout->setSpacing(kSpace);
  addOptions(layout);
  addFields(layout);
  addLoose(layout);
  layout->addStretch();
  layout->addSpacing(kSpace);
  addButtons(layout);
  constexpr int kLeastWidth = 380;
  setMinimumWidth(kLeastWidth);
}

void FormDialog::addOptions(QBoxLayout* layout) {
  std::vector<std::string> groups; // names of the control arrays in order of appearance
  for (const auto* option : all<platform::OptionButton>(m_form))
    if (std::find(groups.begin(), groups.end(), option->Name()) == groups.end()) groups.push_back(option->Name());
  if (groups.empty()) return;
  const auto frames = all<platform::Frame>(m_form);
  auto* row = new QHBoxLayout;
  row->setSpacing(2 * kSpace);
  layout->addLayout(row);
  for (std::size_t i = 0; i < groups.size(); ++i) {
    auto* box = new QGroupBox(i < frames.size() ? text(frames[i]->Caption) : QString(), this);
    auto* lines = new QVBoxLayout(box);
    for (auto* option : all<platform::OptionButton>(m_form)) {
      if (option->Name() != groups[i]) continue;
      auto* button = new QRadioButton(text(option->Caption), box);
      button->setObjectName(text(option->Name()) + QString::number(option->Index()));
      lines->addWidget(button);
      m_options[option] = button;
      m_screen.bind(*option, button);
      connect(button, &QRadioButton::clicked, this, [this, option] { act([option] { option->choose(); }); });
    }
    row->addWidget(box);
  }
}

void FormDialog::addFields(QBoxLayout* layout) {
  std::vector<platform::Label*> labels;
  for (auto* label : all<platform::Label>(m_form))
    if (!dynamic_cast<platform::Frame*>(label)) labels.push_back(label);
  std::size_t next = 0;
  for (auto* box : all<platform::ComboBox>(m_form)) {
    auto* field = new QComboBox(this);
    field->setObjectName(text(box->Name()) + QString::number(box->Index()));
    field->setEditable(true);
    field->setInsertPolicy(QComboBox::NoInsert);
    for (const auto& item : box->Items)
      field->addItem(text(item));
    field->setEditText(text(box->Text()));
    field->lineEdit()->selectAll();
    if (next < labels.size()) {
      auto* label = new QLabel(text(labels[next]->Caption), this);
      label->setBuddy(field);
      field->setAccessibleName(withoutAccessKey(labels[next]->Caption));
      layout->addWidget(label);
      ++next;
    }
    layout->addWidget(field);
    m_boxes[box] = field;
    m_screen.bind(*box, field);
    connect(field, &QComboBox::editTextChanged, this,
            [this, box](const QString& typed) { act([&] { box->setText(typed.toStdString()); }); });
    connect(field, &QComboBox::activated, this,
            [this, box](int at) { act([&] { box->pick(static_cast<std::size_t>(at) + 1); }); });
  }
}

// Labels beside no field are sentences.
void FormDialog::addLoose(QBoxLayout* layout) {
  const std::size_t used = m_boxes.size();
  std::size_t seen = 0;
  for (auto* label : all<platform::Label>(m_form)) {
    if (dynamic_cast<platform::Frame*>(label) || seen++ < used) continue;
    auto* sentence = new QLabel(text(label->Caption), this);
    sentence->setWordWrap(true);
    layout->addWidget(sentence);
  }
}

void FormDialog::addButtons(QBoxLayout* layout) {
  auto* row = new QHBoxLayout;
  row->setSpacing(kSpace);
  row->addStretch();
  layout->addLayout(row);
  const auto buttons = all<platform::CommandButton>(m_form);
  for (auto* button : buttons) {
    auto* push = new QPushButton(text(button->Caption), this);
    push->setObjectName(text(button->Name()));
    push->setAutoDefault(false);
    push->setDefault(button->Default);
    constexpr int kLeastButton = 88;
    push->setMinimumWidth(kLeastButton);
    row->addWidget(push);
    m_buttons[button] = push;
    m_screen.bind(*button, push);
    connect(push, &QPushButton::clicked, this, [this, button] { act([button] { button->press(); }); });
  }
}

void FormDialog::follow() {
  setWindowTitle(text(m_form.Caption));
  for (const auto& [model, push] : m_buttons)
    push->setEnabled(model->Enabled);
  for (const auto& [model, radio] : m_options) {
    radio->setEnabled(model->Enabled);
    radio->setChecked(model->Value());
  }
  for (const auto& [model, field] : m_boxes) {
    field->setEnabled(model->Enabled);
    if (field->currentText() == text(model->Text())) continue;
    const QSignalBlocker quiet(field);
    field->setEditText(text(model->Text()));
  }
  if (!m_form.Visible() && isVisible()) QDialog::reject();
}

void FormDialog::closeEvent(QCloseEvent* event) {
  act([this] { m_form.unload(); });
  if (m_form.Visible()) event->ignore();
}

void FormDialog::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter && event->key() != Qt::Key_Escape) return QDialog::keyPressEvent(event);
  event->accept();
  for (const auto& [button, push] : m_buttons) {
    const bool meant = enter ? (push->hasFocus() || (button->Default && !focusedButton())) : button->Cancel;
    if (!meant || !push->isEnabled()) continue;
    return act([button = button] { button->press(); });
  }
}

bool FormDialog::focusedButton() const {
  return qobject_cast<QPushButton*>(focusWidget()) != nullptr;
}

} // namespace desktop
