#include "desktop/help/topics.hpp"

#include <QFile>
#include <QRegularExpression>
#include <QWidget>

// A static library's resources are not found by themselves.
static void loadGuide() {
  Q_INIT_RESOURCE(guide);
}

namespace desktop {

namespace {

struct ContextPage {
  int context;
  const char* page;
};

constexpr ContextPage kContexts[] = {
    {2400010, "window"},    {2400020, "menu-file"}, {2400030, "menu-edit"},
    {2400040, "menu-view"}, {2400050, "menu-help"}, {2400170, "comments"},
};

struct WidgetPage {
  const char* name; ///< of the widget's object
  const char* page;
};

constexpr WidgetPage kWidgets[] = {
    {"lvPrograms", "panes"},     {"activityLog", "panes"},
    {"lvList0", "lists"},        {"lvList1", "lists"},
    {"lvList2", "lists"},        {"tsLists", "lists"},
    {"lvList3", "synonyms"},     {"frmFindSynonyms", "synonyms"},
    {"KVSource", "source"},      {"mnuFile", "menu-file"},
    {"mnuEdit", "menu-edit"},    {"mnuView", "menu-view"},
    {"mnuHelp", "menu-help"},    {"frmSelect", "menu-edit"},
    {"searchDialog", "filters"}, {"commentBox", "comments"},
    {"projectName", "derived"},  {"sizeClasses", "derived"},
    {"aboutBox", "menu-help"},   {"optionDialog", "options"},
    {"reportWindow", "reports"}, {"startWindow", "start"},
    {"frmMain", "window"},
};

QString read(const QString& page) {
  QFile file(QStringLiteral(":/guide/%1.md").arg(page));
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString titleOf(const QString& markdown) {
  return markdown.section(QLatin1Char('\n'), 0, 0).remove(QLatin1Char('#')).trimmed();
}

// The contents page first, then the pages as it names them.
std::vector<Topic> readAll() {
  loadGuide();
  std::vector<Topic> all;
  const QString index = read(QStringLiteral("index"));
  all.push_back({QStringLiteral("index"), titleOf(index), index});
  static const QRegularExpression link(QStringLiteral("\\]\\(([a-z-]+)\\.md\\)"));
  for (auto matches = link.globalMatch(index); matches.hasNext();) {
    const QString page = matches.next().captured(1);
    const QString markdown = read(page);
    all.push_back({page, titleOf(markdown), markdown});
  }
  return all;
}

} // namespace

const std::vector<Topic>& topics() {
  static const std::vector<Topic> all = readAll();
  return all;
}

bool isTopic(const QString& page) {
  return std::any_of(topics().begin(), topics().end(), [&](const Topic& topic) { return topic.page == page; });
}

QString topicOf(int context) {
  for (const auto& [known, page] : kContexts)
    if (known == context) return QString::fromLatin1(page);
  return QStringLiteral("index");
}

QString topicOf(const QWidget* widget) {
  for (; widget; widget = widget->parentWidget()) {
    const QString name = widget->objectName();
    for (const auto& [known, page] : kWidgets)
      if (name == QLatin1String(known)) return QString::fromLatin1(page);
  }
  return QStringLiteral("index");
}

} // namespace desktop
