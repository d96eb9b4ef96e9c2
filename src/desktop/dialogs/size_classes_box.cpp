#include "desktop/dialogs/size_classes_box.hpp"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include "desktop/dialogs/frame.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"

namespace desktop {

namespace {

// The colour of the class's bars in front of its name.
QWidget* nameOf(std::size_t size, const QString& caption, QWidget* buddy, QWidget* parent) {
  auto* whole = new QWidget(parent);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kSpace);
  auto* patch = new QLabel(whole);
  constexpr int kPatch = 12;
  patch->setFixedSize(kPatch, kPatch);
  patch->setAutoFillBackground(true);
  QPalette palette = patch->palette();
  palette.setColor(QPalette::Window, SizePicture::colourOf(size));
  patch->setPalette(palette);
  auto* label = new QLabel(caption, whole);
  label->setBuddy(buddy);
  row->addWidget(patch);
  row->addWidget(label, 1);
  return whole;
}

} // namespace

SizeClassesBox::SizeClassesBox(const QString& caption, const tarnsift::SizeLimits& proposed,
                               const std::vector<std::int64_t>& counts, QWidget* parent)
    : QDialog(parent), m_counts(counts), m_proposed(proposed) {
  setObjectName(QStringLiteral("sizeClasses"));
  setWindowTitle(text(Text::SizeTitle));
  QVBoxLayout* column = addColumn(*this);
  auto* what = new QLabel(text(Text::SizeWhat).arg(caption), this);
  what->setWordWrap(true);
  column->addWidget(what);
  if (!m_counts.empty()) {
    m_picture = new SizePicture(m_counts, proposed, this);
    m_picture->onMoved = [this](const tarnsift::SizeLimits& moved) { setLimits(moved); };
    column->addWidget(m_picture, 1);
  }
  auto* grid = new QGridLayout;
  addFields(*grid);
  column->addLayout(grid);
  m_reason = makeReason(this);
  m_reason->setMinimumHeight(m_reason->fontMetrics().lineSpacing());
  column->addWidget(m_reason);
  QDialogButtonBox* buttons = addOkCancel(*this, *column);
  m_ok = buttons->button(QDialogButtonBox::Ok);
  auto* propose = buttons->addButton(text(Text::SizePropose), QDialogButtonBox::ResetRole);
  propose->setObjectName(QStringLiteral("propose"));
  propose->setAutoDefault(false);
  connect(propose, &QPushButton::clicked, this, [this] { setLimits(m_proposed); });
  m_fields[0]->setFocus();
  m_fields[0]->selectAll();
  setLimits(proposed);
}

void SizeClassesBox::addFields(QGridLayout& grid) {
  grid.setHorizontalSpacing(2 * kSpace);
  grid.setVerticalSpacing(kSpace / 2);
  constexpr Text kCaptions[] = {Text::SizeBelowS, Text::SizeBelowM, Text::SizeBelowL};
  for (std::size_t i = 0; i < kSizeNames.size(); ++i) {
    const int at = static_cast<int>(i);
    grid.setColumnStretch(at, 1);
    m_shares[i] = makeHint({}, this);
    m_shares[i]->setObjectName(QStringLiteral("share") + QString::number(at));
    grid.addWidget(m_shares[i], 2, at);
    if (i == m_fields.size()) {
      m_rest = new QLabel(this);
      grid.addWidget(nameOf(i, QString::fromLatin1(kSizeNames[i]), nullptr, this), 0, at);
      grid.addWidget(m_rest, 1, at);
      break;
    }
    auto* field = m_fields[i] = new QSpinBox(this);
    field->setObjectName(QStringLiteral("limit") + QString::number(at));
    constexpr int kMost = 9'999'999;
    field->setRange(1, kMost);
    field->setAccelerated(true);
    const QString caption = text(kCaptions[i]);
    field->setAccessibleName(QString(caption).remove(QLatin1Char('&')));
    grid.addWidget(nameOf(i, caption, field, this), 0, at);
    grid.addWidget(field, 1, at);
    connect(field, &QSpinBox::valueChanged, this, [this] { follow(); });
  }
}

tarnsift::SizeLimits SizeClassesBox::limits() const {
  return {m_fields[0]->value(), m_fields[1]->value(), m_fields[2]->value()};
}

void SizeClassesBox::setLimits(const tarnsift::SizeLimits& limits) {
  const std::array<std::int32_t, 3> values = {limits.s, limits.m, limits.l};
  for (std::size_t i = 0; i < values.size(); ++i) {
    const QSignalBlocker quiet(m_fields[i]);
    m_fields[i]->setValue(values[i]);
  }
  follow();
}

void SizeClassesBox::follow() {
  const tarnsift::SizeLimits now = limits();
  if (m_picture) m_picture->setLimits(now);
  const SizeShares shares = sharesOf(m_counts, now);
  for (std::size_t i = 0; i < shares.size(); ++i)
    m_shares[i]->setText(m_counts.empty() ? QString() : programsText(shares[i]));
  m_rest->setText(text(Text::SizeFrom).arg(now.l));
  const bool ordered = now.s <= now.m && now.m <= now.l;
  m_reason->setText(ordered ? QString() : text(now.s > now.m ? Text::SizeOrderSM : Text::SizeOrderML));
  m_ok->setEnabled(ordered);
}

} // namespace desktop
