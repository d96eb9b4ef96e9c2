#pragma once

#include <QDialog>
#include <QStringList>
#include <functional>

class QPlainTextEdit;

namespace desktop {

/// Asks for a comment of any number of lines. Ctrl+Enter accepts it, Esc gives up.
class CommentBox final : public QDialog {
 public:
  /// `recent` are offered for taking over, the latest first.
  CommentBox(const QString& prompt, const QString& title, const QString& comment, const QStringList& recent,
             QWidget* parent);

  /// As it was given, byte by byte, when the analyst has not touched it; else with "\n" between lines.
  QString comment() const;
  std::function<void()> onHelp; ///< F1

 private:
  void addRecent(const QStringList& recent);
  QString m_before;
  QPlainTextEdit* m_edit;
};

} // namespace desktop
