#include "desktop/dialogs/project_name_box.hpp"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialogs/frame.hpp"
#include "desktop/texts.hpp"
#include "desktop/twips.hpp"
#include "orvane/projects.hpp"

namespace desktop {

ProjectNameBox::ProjectNameBox(orvane::RepositoryFile& repository, QWidget* parent)
    : QDialog(parent), m_repository(repository), m_edit(new QLineEdit(this)), m_reason(makeReason(this)) {
  setObjectName(QStringLiteral("projectName"));
  setWindowTitle(text(Text::ProjectNameTitle));
  QVBoxLayout* column = addColumn(*this);
  auto* label = new QLabel(text(Text::ProjectNameField), this);
  label->setBuddy(m_edit);
  m_edit->setObjectName(QStringLiteral("name"));
  m_edit->setAccessibleName(label->text().remove(QLatin1Char('&')));
  constexpr int kColumns = 48;
  m_edit->setMinimumWidth(kColumns * m_edit->fontMetrics().averageCharWidth());
  column->addWidget(label);
  column->addWidget(m_edit);
  column->addWidget(m_reason);
  column->addStretch(1);
  m_ok = addOkCancel(*this, *column)->button(QDialogButtonBox::Ok);
  connect(m_edit, &QLineEdit::textChanged, this, [this] { check(); });
  m_edit->setFocus();
  check();
}

std::string ProjectNameBox::name() const {
  return m_edit->text().trimmed().toStdString();
}

// An empty field needs no reason why it will not do.
void ProjectNameBox::check() {
  const QString why = reason();
  const bool blank = name().empty();
  m_reason->setText(blank ? QString() : why);
  m_edit->setAccessibleDescription(why);
  m_ok->setEnabled(!blank && why.isEmpty());
}

QString ProjectNameBox::reason() const {
  switch (orvane::faultOf(name())) {
  case orvane::NameFault::blank:
    return text(Text::ProjectNameBlank);
  case orvane::NameFault::quotes:
    return text(Text::ProjectNameQuotes);
  case orvane::NameFault::tooLong:
    return text(Text::ProjectNameTooLong);
  case orvane::NameFault::noFolder:
    return text(Text::ProjectNameNoFolder);
  case orvane::NameFault::controls:
    return text(Text::ProjectNameControls);
  case orvane::NameFault::none:
    break;
  }
  const auto rival = orvane::rivalOf(m_repository, name());
  if (!rival) return {};
  return text(rival->sameName ? Text::ProjectNameTaken : Text::ProjectNameAlike).arg(text(rival->project));
}

} // namespace desktop
