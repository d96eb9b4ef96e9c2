#pragma once

#include <optional>
#include <vector>

#include <QAbstractScrollArea>
#include <QTextLayout>

#include "cobol/shading.hpp"
#include "orvane/source_on_view.hpp"

namespace desktop {

/// A place in the text: line from 1, index into the line's characters as Qt counts them.
struct TextPlace {
  int line = 1;
  int index = 0;
  auto operator<=>(const TextPlace&) const = default;
};

/// A found piece of one line.
struct TextMatch {
  TextPlace at;
  int length = 0;
};

/// Paints the lines of a source with their numbers, shading and marks; text can be selected and copied. Only what is in
/// sight is laid out, so the size of the file does not matter.
class TextArea : public QAbstractScrollArea {
 public:
  explicit TextArea(QWidget* parent = nullptr);

  void setText(cobol::ShadedText text);
  /// What stands instead of a text.
  void setHint(const QString& hint);
  int lineCount() const { return static_cast<int>(m_text.lines.size()); }
  QString line(int number) const; ///< from 1; cut where a line is longer than anybody reads

  /// The marks of this file, ascending.
  void setMarks(std::vector<orvane::SourceMark> marks);
  const std::vector<orvane::SourceMark>& marks() const { return m_marks; }
  /// Frames one of them; -1: none.
  void setCurrentMark(int index);

  /// Ascending; the current one is shown stronger.
  void setMatches(std::vector<TextMatch> matches, int current);

  /// Makes a piece of a line the current one and brings it into sight: line and column as the analysis counts them.
  void goTo(int line, int column, int length);
  int currentLine() const { return m_currentLine; }
  /// The line at the top of the viewport, from 1.
  int firstVisibleLine() const;
  QString selectedText() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void measure();
  void updateRanges();
  int gutterWidth() const;
  std::unique_ptr<QTextLayout> layoutOf(int number, const class SourceColours& colours) const;
  void paintLine(class QPainter& painter, int number, int top, const class SourceColours& colours) const;
  void paintMarks(class QPainter& painter, const QTextLine& line, int number, QPointF at,
                  const class SourceColours& colours) const;
  TextPlace placeAt(QPoint point) const;
  void bringIntoSight(int line, int column, int length);
  void select(TextPlace anchor, TextPlace caret);
  void copy() const;

  cobol::ShadedText m_text;
  QString m_hint;
  std::vector<orvane::SourceMark> m_marks;
  int m_currentMark = -1;
  std::vector<TextMatch> m_matches;
  int m_currentMatch = -1;
  int m_currentLine = 0;
  TextPlace m_anchor, m_caret;
  int m_lineHeight = 16;
  double m_charWidth = 8;
  std::size_t m_longest = 0; ///< characters of the longest line
};

} // namespace desktop
