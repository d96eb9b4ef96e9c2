#include "desktop/theme.hpp"

#include <cmath>
#include <gtest/gtest.h>

#include "desktop/icons.hpp"

namespace {

double luminance(const QColor& colour) {
  const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
  const double first = luminance(a) + 0.05, second = luminance(b) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

} // namespace

TEST(Theme, TextsAreLegibleOnTheirGrounds) {
  auto& application = *qobject_cast<QApplication*>(QApplication::instance());
  for (const char* name : {"dark", "light"}) {
    desktop::applyTheme(application, name);
    const desktop::Theme& t = desktop::theme();
    EXPECT_EQ(t.dark, std::string(name) == "dark");
    for (const QColor& ground : {t.base, t.panel, t.hover, t.selected, t.selectedIdle, t.mark, t.markCurrent})
      EXPECT_GE(contrast(t.text, ground), 4.5) << name << " text on " << ground.name().toStdString();
    for (const QColor& ink : {t.muted, t.accent, t.working, t.affected, t.clean})
      for (const QColor& ground : {t.base, t.panel})
        EXPECT_GE(contrast(ink, ground), 4.5)
            << name << " " << ink.name().toStdString() << " on " << ground.name().toStdString();
    EXPECT_GE(contrast(t.onAccent, t.accent), 4.5) << name;
  }
}

TEST(Icons, EveryKeyOfTheToolbarIsDrawn) {
  for (const char* key : {"Save", "Print", "Note", "Run", "Filter", "MoveBad", "MoveGood", "MoveSuspicious", "Delete",
                          "Report", "Options", "Columns", "Synonyms", "App"}) {
    const QImage picture = desktop::icon(key).pixmap(QSize(24, 24)).toImage();
    int drawn = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        drawn += qAlpha(picture.pixel(x, y)) > 0 ? 1 : 0;
    EXPECT_GT(drawn, 40) << key;
  }
  EXPECT_TRUE(desktop::icon("Nothing").isNull());
}
