#pragma once

#include <QString>
#include <vector>

class QWidget;

namespace desktop {

/// A page of the user guide.
struct Topic {
  QString page;  ///< its name, as in `lists.md` without the ending
  QString title; ///< its first heading
  QString text;  ///< Markdown
};

/// All pages in the order of the contents.
const std::vector<Topic>& topics();
bool isTopic(const QString& page);

/// The page of a help context; "index" for one that has none of its own.
QString topicOf(int context);
/// The page about a widget or what it stands in.
QString topicOf(const QWidget* widget);

} // namespace desktop
