#pragma once

#include <QUrl>
#include <QWidget>

class QLineEdit;
class QListWidget;
class QTextBrowser;
class QToolButton;

namespace desktop {

/// The user guide: contents at the left, which a search narrows as it is typed, the page at the right.
class HelpWindow final : public QWidget {
 public:
  explicit HelpWindow(QWidget* parent);
  /// Shows a page of the guide by its name.
  void open(const QString& page);
  QString page() const { return m_page; }

 private:
  void narrow();
  void pageChanged(const QUrl& source);
  void markWords();
  QStringList words() const;

  QString m_page;
  QLineEdit* m_search;
  QListWidget* m_pages;
  QTextBrowser* m_text;
  QToolButton* m_back;
  QToolButton* m_forward;
};

} // namespace desktop
