#include "desktop/source/source_colours.hpp"

namespace desktop {

// Red, green, blue on light and on dark paper.
struct SourceColours::Tint {
  QRgb light, dark;
};

namespace {

// In the order of their kinds.
constexpr SourceColours::Tint kShades[] = {
    {0x8c959f, 0x6e7681}, // margin
    {0x4f704c, 0x8ba888}, // comment
    {0x8250df, 0xd2a8ff}, // directive
    {0x953800, 0xffa657}, // header
    {0x0550ae, 0x79c0ff}, // keyword
    {0x0a6b5b, 0x7ee0c8}, // constant
    {0x0a6b5b, 0x7ee0c8}, // number
    {0x8a4b08, 0xe6b386}, // literal
    {0x6f42c1, 0xd2a8ff}, // picture
    {0x99286e, 0xff9bce}, // embedded
};
constexpr SourceColours::Tint kMarks[] = {
    {0x57606a, 0x9da7b3}, // declaration
    {0x1f6feb, 0x4d9fff}, // read
    {0xd1242f, 0xff6b5e}, // write
    {0x8a2fd6, 0xd48cff}, // both
};
static_assert(std::size(kShades) == static_cast<std::size_t>(cobol::Shade::embedded) + 1);
static_assert(std::size(kMarks) == static_cast<std::size_t>(orvane::MarkKind::both) + 1);

} // namespace

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
  return pick(kShades[static_cast<std::size_t>(shade)]);
}

QColor SourceColours::of(orvane::MarkKind kind) const {
  return pick(kMarks[static_cast<std::size_t>(kind)]);
}

QColor SourceColours::pick(const Tint& tint) const {
  return QColor(m_dark ? tint.dark : tint.light);
}

} // namespace desktop
