#include "desktop/icons.hpp"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include "desktop/theme.hpp"

// A static library's resources are not found by themselves.
static void loadIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace desktop {

namespace {

// The drawings name their colours; the theme gives them when an icon is painted.
QByteArray tinted(QByteArray drawing, bool enabled) {
  const Theme& t = theme();
  const QColor ink = enabled ? t.text : t.muted;
  const std::pair<const char*, QColor> inks[] = {
      {"currentColor", ink},
      {"accent", enabled ? t.accent : ink},
      {"working", enabled ? t.working : ink},
      {"affected", enabled ? t.affected : ink},
      {"clean", enabled ? t.clean : ink},
      {"onAccent", t.onAccent},
  };
  for (const auto& [name, colour] : inks)
    drawing.replace(QByteArray("\"") + name + "\"", QByteArray("\"") + colour.name().toLatin1() + "\"");
  return drawing;
}

class SvgIcon final : public QIconEngine {
 public:
  explicit SvgIcon(QByteArray drawing) : m_drawing(std::move(drawing)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const bool enabled = mode != QIcon::Disabled;
    QSvgRenderer renderer(tinted(m_drawing, enabled));
    const int side = std::min(rect.width(), rect.height());
    const QRect square(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2, side, side);
    painter->save();
    constexpr double kDisabled = 0.45;
    if (!enabled) painter->setOpacity(kDisabled);
    renderer.render(painter, square);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new SvgIcon(m_drawing); }

 private:
  QByteArray m_drawing;
};

} // namespace

QIcon icon(const std::string& key) {
  loadIcons();
  QFile file(QStringLiteral(":/icons/") + QString::fromStdString(key));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QIcon(new SvgIcon(file.readAll()));
}

QIcon statusIcon(int smallIcon) {
  switch (smallIcon) {
  case 1:
    return icon("Working");
  case 2:
    return icon("Affected");
  case 3:
    return icon("Clean");
  default:
    return {};
  }
}

} // namespace desktop
