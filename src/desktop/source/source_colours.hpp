#pragma once

#include <QColor>
#include <QPalette>

#include "cobol/shading.hpp"
#include "orvane/source_on_view.hpp"

namespace desktop {

/// The colours of the source view, for a light or a dark palette.
struct SourceColours {
  explicit SourceColours(const QPalette& palette);
  QColor of(cobol::Shade shade) const;
  QColor of(orvane::MarkKind kind) const; ///< strong: frames and ticks; behind text with kMarkAlpha
  static constexpr int kMarkAlpha = 70;

  QColor text, paper, gutter, gutterText, currentLine, find, selection;

  struct Tint;

 private:
  QColor pick(const Tint& tint) const;
  bool m_dark;
};

} // namespace desktop
