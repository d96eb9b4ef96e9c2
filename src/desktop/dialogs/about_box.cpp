#include "desktop/dialogs/about_box.hpp"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/dialogs/frame.hpp"
#include "desktop/icons.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"

namespace desktop {

namespace {

struct Library {
  const char* name;
  const char* licence;
};

constexpr Library kLibraries[] = {
    {"Qt", "LGPL 3"},
    {"SQLite", "Public domain"},
    {"libxml2", "MIT"},
    {"libxslt", "MIT"},
    {"libxlsxwriter", "BSD"},
    {"zlib", "zlib"},
    {"{fmt}", "MIT"},
    {"CLI11", "BSD"},
    {"JSON for Modern C++", "MIT"},
};

QLabel* heading(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  QFont font = label->font();
  constexpr double kLarger = 1.7;
  font.setPointSizeF(font.pointSizeF() * kLarger);
  font.setWeight(QFont::DemiBold);
  label->setFont(font);
  return label;
}

QWidget* libraries(QWidget* parent) {
  auto* box = new QGroupBox(text(Text::AboutLibraries), parent);
  auto* grid = new QGridLayout(box);
  grid->setHorizontalSpacing(3 * kSpace);
  grid->setVerticalSpacing(kSpace / 2);
  int row = 0;
  for (const Library& library : kLibraries) {
    QString name = QString::fromLatin1(library.name);
    if (row == 0) name += QLatin1Char(' ') + QString::fromLatin1(qVersion());
    grid->addWidget(new QLabel(name, box), row, 0);
    grid->addWidget(makeHint(QString::fromLatin1(library.licence), box), row, 1);
    ++row;
  }
  grid->setColumnStretch(0, 1);
  return box;
}

} // namespace

AboutBox::AboutBox(const QString& name, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("aboutBox"));
  setWindowTitle(text(Text::AboutTitle).arg(name));
  QVBoxLayout* column = addColumn(*this);
  auto* top = new QHBoxLayout;
  top->setSpacing(2 * kSpace);
  column->addLayout(top);
  auto* picture = new QLabel(this);
  constexpr int kIcon = 64;
  picture->setPixmap(icon("App").pixmap(QSize(kIcon, kIcon), devicePixelRatio()));
  top->addWidget(picture, 0, Qt::AlignTop);
  auto* lines = new QVBoxLayout;
  lines->setSpacing(kSpace / 2);
  top->addLayout(lines, 1);
  lines->addWidget(heading(name, this));
  QLabel* version = makeHint(text(Text::AboutVersion).arg(QStringLiteral(TARNSIFT_VERSION)), this);
  version->setObjectName(QStringLiteral("version"));
  version->setTextInteractionFlags(Qt::TextSelectableByMouse);
  lines->addWidget(version);
  auto* what = new QLabel(text(Text::AboutWhat), this);
  what->setWordWrap(true);
  constexpr int kTextWidth = 320;
  what->setMinimumWidth(kTextWidth);
  lines->addWidget(what);
  column->addSpacing(kSpace);
  column->addWidget(libraries(this));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* close = buttons->button(QDialogButtonBox::Close);
  close->setText(text(Text::Close));
  close->setIcon({});
  close->setObjectName(QStringLiteral("close"));
  close->setDefault(true);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  column->addSpacing(kSpace);
  column->addWidget(buttons);
  close->setFocus();
}

} // namespace desktop
