#include "desktop/cool_bar.hpp"

#include <QPainter>

#include "desktop/theme.hpp"
#include "desktop/twips.hpp"

namespace desktop {

CoolBar::CoolBar(platform::CoolBar& bar, platform::Toolbar& buttons, platform::ProgressBar& progress,
                 platform::Form& form, QWidget* parent)
    : QWidget(parent), m_bar(bar), m_buttons(buttons), m_progress(progress), m_tools(new ToolBar(buttons, form, this)),
      m_action(new QLabel(this)), m_meter(new QProgressBar(this)) {
  setObjectName(text(bar.Name()));
  m_action->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_meter->setObjectName(text(progress.Name()));
  m_meter->setTextVisible(false); // no text is legible on both halves
  m_action->setBuddy(m_meter);
  sync();
}

void CoolBar::sync() {
  const platform::Band& band = m_bar.band("Progress");
  m_action->setText(text(band.Caption));
  m_meter->setAccessibleName(text(band.Caption));
  m_meter->setRange(m_progress.Min, std::max(1, m_progress.Max));
  m_meter->setValue(m_progress.Value());
  const bool shown = band.Visible;
  if (m_meter->isVisibleTo(this) != shown) {
    m_meter->setVisible(shown);
    m_action->setVisible(shown);
  }
  arrange();
  m_tools->sync();
}

// The toolbar gives way to the meter, never the other way round.
void CoolBar::arrange() {
  constexpr int kMeter = 180;
  constexpr int kMeterHeight = 8;
  const bool shown = m_bar.band("Progress").Visible;
  const int wanted = shown ? std::min(width() / 2, kMeter) : 0;
  const int caption = shown ? std::min(m_action->sizeHint().width(), std::max(0, width() / 2 - wanted)) : 0;
  const int taken = shown ? wanted + caption + 3 * kSpace : 0;
  const int inset = (height() - m_tools->sizeHint().height()) / 2;
  m_tools->setGeometry(kSpace / 2, inset, width() - taken - kSpace / 2, m_tools->sizeHint().height());
  m_buttons.Left = toTwips(m_tools->x());
  m_buttons.Top = toTwips(m_tools->y());
  m_buttons.Width = toTwips(m_tools->width());
  m_buttons.Height = toTwips(m_tools->height());
  m_meter->setGeometry(width() - wanted - kSpace, (height() - kMeterHeight) / 2, wanted, kMeterHeight);
  m_action->setGeometry(width() - wanted - caption - 2 * kSpace, 0, caption, height());
}

void CoolBar::resizeEvent(QResizeEvent*) {
  arrange();
}

void CoolBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), theme().panel);
}

} // namespace desktop
