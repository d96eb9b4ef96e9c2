#include "desktop/source/source_colours.hpp"

namespace desktop {

SourceColours::SourceColours(const QPalette& palette)
    : text(palette.color(QPalette::Text)), paper(palette.color(QPalette::Base)),
      m_dark(palette.color(QPalette::Base).lightness() < 128) {
  gutter = m_dark ? paper.lighter(115) : paper.darker(103);
  gutterText = m_dark ? QColor(0x8b, 0x94, 0x9e) : QColor(0x6e, 0x77, 0x81);
  currentLine = m_dark ? QColor(255, 255, 255, 14) : QColor(0, 0, 0, 10);
  find = m_dark ? QColor(0xd2, 0x99, 0x22, 110) : QColor(0xff, 0xd3, 0x3d, 130);
  selection = palette.color(QPalette::Highlight);
  selection.setAlpha(110);
}

QColor SourceColours::of(cobol::Shade shade) const {
  using cobol::Shade;
  switch (shade) {
  case Shade::margin:
    return m_dark ? QColor(0x6e, 0x76, 0x81) : QColor(0x8c, 0x95, 0x9f);
  case Shade::comment:
    return m_dark ? QColor(0x8b, 0xa8, 0x88) : QColor(0x4f, 0x70, 0x4c);
  case Shade::directive:
    return m_dark ? QColor(0xd2, 0xa8, 0xff) : QColor(0x82, 0x50, 0xdf);
  case Shade::header:
    return m_dark ? QColor(0xff, 0xa6, 0x57) : QColor(0x95, 0x38, 0x00);
  case Shade::keyword:
    return m_dark ? QColor(0x79, 0xc0, 0xff) : QColor(0x05, 0x50, 0xae);
  case Shade::constant:
  case Shade::number:
    return m_dark ? QColor(0x7e, 0xe0, 0xc8) : QColor(0x0a, 0x6b, 0x5b);
  case Shade::literal:
    return m_dark ? QColor(0xe6, 0xb3, 0x86) : QColor(0x8a, 0x4b, 0x08);
  case Shade::picture:
    return m_dark ? QColor(0xd2, 0xa8, 0xff) : QColor(0x6f, 0x42, 0xc1);
  case Shade::embedded:
    return m_dark ? QColor(0xff, 0x9b, 0xce) : QColor(0x99, 0x28, 0x6e);
  }
  return text;
}

QColor SourceColours::of(orvane::MarkKind kind) const {
  using orvane::MarkKind;
  switch (kind) {
  case MarkKind::declaration:
    return m_dark ? QColor(0x9d, 0xa7, 0xb3) : QColor(0x57, 0x60, 0x6a);
  case MarkKind::read:
    return m_dark ? QColor(0x4d, 0x9f, 0xff) : QColor(0x1f, 0x6f, 0xeb);
  case MarkKind::write:
    return m_dark ? QColor(0xff, 0x6b, 0x5e) : QColor(0xd1, 0x24, 0x2f);
  case MarkKind::both:
    return m_dark ? QColor(0xd4, 0x8c, 0xff) : QColor(0x8a, 0x2f, 0xd6);
  }
  return text;
}

} // namespace desktop
