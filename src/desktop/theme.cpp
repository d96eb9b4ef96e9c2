#include "desktop/theme.hpp"

#include <QFont>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

namespace desktop {

namespace {

// Buttons say what they do in words.
class Style final : public QProxyStyle {
 public:
  Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
  }
};

Theme light() {
  Theme t;
  t.window = QColor(0xeb, 0xee, 0xf2);
  t.panel = QColor(0xf7, 0xf8, 0xfa);
  t.base = QColor(0xff, 0xff, 0xff);
  t.border = QColor(0xcf, 0xd5, 0xde);
  t.text = QColor(0x1b, 0x22, 0x2c);
  t.muted = QColor(0x56, 0x61, 0x70);
  t.accent = QColor(0x14, 0x62, 0xb8);
  t.onAccent = QColor(0xff, 0xff, 0xff);
  t.selected = QColor(0xcc, 0xe1, 0xf8);
  t.selectedIdle = QColor(0xe2, 0xe6, 0xec);
  t.hover = QColor(0xe3, 0xe9, 0xf1);
  t.working = QColor(0x8f, 0x5f, 0x00);
  t.affected = QColor(0xbf, 0x26, 0x2b);
  t.clean = QColor(0x19, 0x76, 0x36);
  t.mark = QColor(0xff, 0xf3, 0xc8);
  t.markCurrent = QColor(0xcc, 0xe1, 0xf8);
  return t;
}

Theme dark() {
  Theme t;
  t.dark = true;
  t.window = QColor(0x14, 0x17, 0x1c);
  t.panel = QColor(0x25, 0x2a, 0x32);
  t.base = QColor(0x1b, 0x1f, 0x26);
  t.border = QColor(0x3a, 0x42, 0x4e);
  t.text = QColor(0xe3, 0xe7, 0xed);
  t.muted = QColor(0x9d, 0xa8, 0xb7);
  t.accent = QColor(0x62, 0xa8, 0xf7);
  t.onAccent = QColor(0x0d, 0x18, 0x26);
  t.selected = QColor(0x1f, 0x45, 0x6d);
  t.selectedIdle = QColor(0x31, 0x39, 0x45);
  t.hover = QColor(0x31, 0x38, 0x43);
  t.working = QColor(0xe0, 0xae, 0x45);
  t.affected = QColor(0xf5, 0x7e, 0x75);
  t.clean = QColor(0x62, 0xbe, 0x7b);
  t.mark = QColor(0x4a, 0x3f, 0x1c);
  t.markCurrent = QColor(0x1f, 0x45, 0x6d);
  return t;
}

Theme& current() {
  static Theme theme = light();
  return theme;
}

QPalette paletteOf(const Theme& t) {
  QPalette p;
  p.setColor(QPalette::Window, t.panel);
  p.setColor(QPalette::WindowText, t.text);
  p.setColor(QPalette::Base, t.base);
  p.setColor(QPalette::AlternateBase, t.panel);
  p.setColor(QPalette::Text, t.text);
  p.setColor(QPalette::PlaceholderText, t.muted);
  p.setColor(QPalette::Button, t.panel);
  p.setColor(QPalette::ButtonText, t.text);
  p.setColor(QPalette::BrightText, t.affected);
  p.setColor(QPalette::ToolTipBase, t.base);
  p.setColor(QPalette::ToolTipText, t.text);
  p.setColor(QPalette::Highlight, t.accent);
  p.setColor(QPalette::HighlightedText, t.onAccent);
  p.setColor(QPalette::Link, t.accent);
  p.setColor(QPalette::LinkVisited, t.accent);
  p.setColor(QPalette::Mid, t.border);
  p.setColor(QPalette::Light, t.base);
  p.setColor(QPalette::Midlight, t.panel);
  p.setColor(QPalette::Dark, t.border);
  p.setColor(QPalette::Shadow, t.dark ? QColor(0, 0, 0) : QColor(0x80, 0x88, 0x94));
  QColor off = t.muted;
  off.setAlpha(140);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    p.setColor(QPalette::Disabled, role, off);
  p.setColor(QPalette::Disabled, QPalette::Highlight, t.selectedIdle);
  return p;
}

// Only what the palette cannot say; %name stands for a colour.
constexpr const char* kSheet = R"(
QMenuBar { background: %panel; border: none; padding: 2px 4px; }
QMenuBar::item { padding: 4px 10px; border-radius: 4px; background: transparent; }
QMenuBar::item:selected { background: %hover; }
QMenu { background: %base; border: 1px solid %border; padding: 4px; }
QMenu::item { padding: 5px 24px 5px 10px; border-radius: 4px; }
QMenu::item:selected { background: %selected; color: %text; }
QMenu::item:disabled { color: %off; background: transparent; }
QMenu::separator { height: 1px; background: %border; margin: 4px 8px; }
QMenu::icon { padding-left: 6px; }
QMenu::indicator { width: 14px; height: 14px; left: 8px; }
QToolTip { background: %base; color: %text; border: 1px solid %border; padding: 4px 6px; }
QHeaderView { background: %panel; border: none; }
QHeaderView::section { background: %panel; color: %muted; border: none; border-right: 1px solid %border;
  border-bottom: 1px solid %border; padding: 4px 8px; }
QHeaderView::section:hover { background: %hover; color: %text; }
QHeaderView::section:last { border-right: none; }
QTabBar { background: %panel; }
QTabBar::tab { background: transparent; color: %muted; border: none; border-bottom: 2px solid transparent;
  padding: 5px 12px 4px 12px; }
QTabBar::tab:selected { color: %text; border-bottom: 2px solid %accent; }
QTabBar::tab:hover:!selected { color: %text; background: %hover; }
QTabBar::tab:focus:selected { background: %selected; }
QToolBar { background: %panel; border: none; spacing: 2px; padding: 0px; }
QToolBar::separator { background: %border; width: 1px; margin: 5px 6px; }
QToolBar QToolButton { border: 1px solid transparent; border-radius: 5px; padding: 4px; }
QToolBar QToolButton[popupMode="1"] { padding-right: 16px; }
QToolBar QToolButton:hover { background: %hover; }
QToolBar QToolButton:pressed, QToolBar QToolButton:checked { background: %selected; }
QToolBar QToolButton:focus { border-color: %accent; }
QToolBar QToolButton::menu-button { border: none; width: 14px; border-radius: 4px; }
QToolBar QToolButton::menu-button:hover { background: %selected; }
QToolBar QToolButton#qt_toolbar_ext_button { padding: 0; }
QScrollBar { background: %base; border: none; }
QScrollBar:vertical { width: 12px; }
QScrollBar:horizontal { height: 12px; }
QScrollBar::handle { background: %off; border-radius: 3px; margin: 3px; }
QScrollBar::handle:hover, QScrollBar::handle:pressed { background: %muted; }
QScrollBar::handle:vertical { min-height: 28px; }
QScrollBar::handle:horizontal { min-width: 28px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
QAbstractScrollArea::corner { background: %base; border: none; }
QProgressBar { border: none; border-radius: 4px; background: %border; }
QProgressBar::chunk { background: %accent; border-radius: 4px; }
QGroupBox { border: 1px solid %border; border-radius: 6px; margin-top: 10px; padding: 12px 10px 8px 10px; }
QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 4px; color: %muted; }
QRadioButton, QCheckBox { spacing: 8px; padding: 2px; }
QRadioButton::indicator, QCheckBox::indicator { width: 14px; height: 14px; border: 1px solid %muted;
  background: %base; }
QRadioButton::indicator { border-radius: 8px; }
QCheckBox::indicator { border-radius: 4px; }
QRadioButton::indicator:hover, QCheckBox::indicator:hover, QRadioButton:focus, QCheckBox:focus { border-color: %accent; }
QRadioButton::indicator:checked { border: 4px solid %accent; width: 8px; height: 8px; }
QCheckBox::indicator:checked { background: %accent; border-color: %accent; image: url(:/icons/check_%tone.svg); }
QRadioButton:focus, QCheckBox:focus { border: 1px dotted %accent; border-radius: 4px; }
QPushButton { background: %base; border: 1px solid %border; border-radius: 5px; padding: 5px 16px; min-width: 56px; }
QPushButton:hover { background: %hover; }
QPushButton:pressed { background: %selected; }
QPushButton:default { background: %accent; color: %ink; border-color: %accent; }
QPushButton:default:hover { border-color: %text; }
QPushButton:focus { border: 2px solid %accent; padding: 4px 15px; }
QPushButton:default:focus { border-color: %text; }
QPushButton:disabled, QPushButton:default:disabled { background: %panel; color: %off; border-color: %border; }
QLineEdit, QComboBox, QSpinBox { background: %base; border: 1px solid %border; border-radius: 5px; padding: 4px 6px;
  selection-background-color: %accent; selection-color: %ink; }
QLineEdit:focus, QComboBox:focus, QSpinBox:focus { border-color: %accent; }
QSpinBox { padding-right: 20px; }
QSpinBox::up-button, QSpinBox::down-button { border: none; background: transparent; width: 18px; }
QSpinBox::up-button { margin: 2px 2px 0 0; }
QSpinBox::down-button { margin: 0 2px 2px 0; }
QSpinBox::up-button:hover, QSpinBox::down-button:hover { background: %hover; border-radius: 3px; }
QSpinBox::up-arrow { image: url(:/icons/arrow_up_%tone.svg); width: 10px; height: 10px; }
QSpinBox::down-arrow { image: url(:/icons/arrow_%tone.svg); width: 10px; height: 10px; }
QDialog QListWidget, QDialog QPlainTextEdit { background: %base; border: 1px solid %border; border-radius: 5px;
  padding: 3px; selection-background-color: %accent; selection-color: %ink; }
QDialog QListWidget:focus, QDialog QPlainTextEdit:focus { border-color: %accent; }
QDialog QListWidget::item { padding: 4px 6px; border-radius: 4px; color: %text; }
QDialog QListWidget::item:disabled { color: %off; }
QDialog QListWidget::item:hover { background: %hover; }
QDialog QListWidget::item:selected { background: %selected; color: %text; }
QDialog QListWidget::indicator { width: 13px; height: 13px; border: 1px solid %muted; border-radius: 4px;
  background: %base; }
QDialog QListWidget::indicator:checked { background: %accent; border-color: %accent;
  image: url(:/icons/check_%tone.svg); }
QDialog QListWidget::indicator:disabled { border-color: %border; }
QDialog QListWidget::indicator:checked:disabled { background: %off; border-color: %off; }
QComboBox QLineEdit { border: none; padding: 0; }
QComboBox::drop-down { border: none; width: 22px; }
QComboBox::down-arrow { image: url(:/icons/arrow_%tone.svg); width: 12px; height: 12px; }
QComboBox QAbstractItemView { background: %base; border: 1px solid %border; selection-background-color: %selected;
  selection-color: %text; }
QSplitter::handle { background: %window; }
QListWidget::item { padding: 4px 6px; border: none; }
QListWidget::item:hover { background: %hover; color: %text; }
QListWidget::item:selected { background: %selected; color: %text; }
)";

QString sheetOf(const Theme& t) {
  QColor off = t.muted;
  const QColor ground = t.base;
  off = QColor((off.red() + ground.red()) / 2, (off.green() + ground.green()) / 2, (off.blue() + ground.blue()) / 2);
  QString sheet = QString::fromLatin1(kSheet);
  const std::pair<const char*, QColor> names[] = {
      {"%panel", t.panel},   {"%selected", t.selected}, {"%hover", t.hover}, {"%base", t.base}, {"%border", t.border},
      {"%window", t.window}, {"%accent", t.accent},     {"%muted", t.muted}, {"%text", t.text}, {"%off", off},
      {"%ink", t.onAccent},
  };
  for (const auto& [name, colour] : names)
    sheet.replace(QLatin1String(name), colour.name());
  return sheet.replace(QLatin1String("%tone"), QLatin1String(t.dark ? "dark" : "light"));
}

bool wantsDark(const std::string& choice) {
  const std::string wanted = choice.empty() ? qEnvironmentVariable("TARNSIFT_THEME").toStdString() : choice;
  if (wanted == "dark") return true;
  if (wanted == "light") return false;
  constexpr int kHalf = 128;
  return QGuiApplication::palette().color(QPalette::Window).lightness() < kHalf;
}

} // namespace

const Theme& theme() {
  return current();
}

void applyTheme(QApplication& application, const std::string& choice) {
  current() = wantsDark(choice) ? dark() : light();
  QApplication::setStyle(new Style);
  QApplication::setPalette(paletteOf(current()));
  application.setStyleSheet(sheetOf(current()));
  // Names and captions may be in either script, whatever the locale's font covers.
  QFont font = QApplication::font();
  QStringList families = font.families();
  families << QStringLiteral("Noto Sans") << QStringLiteral("DejaVu Sans") << QStringLiteral("Noto Sans CJK JP")
           << QStringLiteral("Noto Sans CJK KR");
  font.setFamilies(families);
  QApplication::setFont(font);
}

} // namespace desktop
