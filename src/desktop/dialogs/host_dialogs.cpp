#include "desktop/dialogs/host_dialogs.hpp"

#include "desktop/dialogs/about_box.hpp"
#include "desktop/dialogs/comment_box.hpp"
#include "desktop/dialogs/project_name_box.hpp"
#include "desktop/dialogs/size_classes_box.hpp"
#include "desktop/twips.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/store/program_database.hpp"

namespace desktop {

namespace {

constexpr const char* kCommentClass = "CommentDialog";
constexpr int kHelpTopic = 1;

// What the window shows behind a dialog is to be what the command has done so far.
template<typename Box>
bool accepted(QtScreen& screen, Box& box) {
  if (screen.onSync) screen.onSync();
  return box.exec() == QDialog::Accepted;
}

QString lines(const std::string& prompt) {
  return text(platform::replaceAll(prompt, "\r\n", "\n"));
}

/// Remembers the comments of its session.
class AskComment final : public tarnsift::CommentDialog {
 public:
  explicit AskComment(QtScreen& screen) : m_screen(screen) {}

  bool Ask(std::string& result, const std::string& prompt, const std::string& title, const std::string& comment, int,
           const std::string& helpFile, int helpContext) override {
    CommentBox box(lines(prompt), text(title), text(comment), m_recent, m_screen.dialogParent());
    box.onHelp = [&] { m_screen.showHelp(helpFile, kHelpTopic, helpContext); };
    if (!accepted(m_screen, box)) return false;
    remember(box.comment());
    result = box.comment().toStdString();
    return true;
  }

 private:
  void remember(const QString& comment) {
    if (comment.trimmed().isEmpty()) return;
    m_recent.removeAll(comment);
    m_recent.prepend(comment);
    constexpr qsizetype kMost = 15;
    while (m_recent.size() > kMost)
      m_recent.removeLast();
  }
  QtScreen& m_screen;
  QStringList m_recent;
};

class AskSizes final : public tarnsift::SizeClassDialog {
 public:
  AskSizes(QtScreen& screen, std::vector<std::int64_t> counts) : m_screen(screen), m_counts(std::move(counts)) {}

  bool Edit(platform::Object*, const std::string& caption, std::int32_t& sLimit, std::int32_t& mLimit,
            std::int32_t& lLimit) override {
    SizeClassesBox box(text(caption), {sLimit, mLimit, lLimit}, m_counts, m_screen.dialogParent());
    if (!accepted(m_screen, box)) return false;
    sLimit = box.limits().s;
    mLimit = box.limits().m;
    lLimit = box.limits().l;
    return true;
  }

 private:
  QtScreen& m_screen;
  std::vector<std::int64_t> m_counts;
};

// The counts of the programs with names in the list that the project is made from.
std::vector<std::int64_t> countsOf(const platform::Form& window, const platform::MenuItem* command) {
  std::vector<std::int64_t> counts;
  if (!command || command->Name() != "mnuFileCreateFrom") return counts;
  const auto& rows = window.get<platform::ListView>("lvPrograms").ListItems;
  const std::size_t column = static_cast<std::size_t>(command->Index()) + 1;
  for (std::size_t i = 1; i <= rows.Count(); ++i)
    if (const std::int64_t count = tarnsift::countOf(rows.Item(i).SubItems(column)); count != 0)
      counts.push_back(count);
  return counts;
}

} // namespace

void addHostDialogs(orvane::Host& host, QtScreen& screen, std::function<const platform::MenuItem*()> commandInWork) {
  platform::classes::registerObject(kCommentClass, new AskComment(screen));
  host.showAbout = [&screen](const std::string& title) {
    AboutBox box(text(title), screen.dialogParent());
    accepted(screen, box);
  };
  host.askProjectName = [&host, &screen] {
    ProjectNameBox box(host.repository(), screen.dialogParent());
    return accepted(screen, box) ? box.name() : std::string();
  };
  host.makeSizeClassDialog = [&host, &screen, commandInWork = std::move(commandInWork)] {
    return tarnsift::Ref<tarnsift::SizeClassDialog>(new AskSizes(screen, countsOf(host.window(), commandInWork())));
  };
}

void removeHostDialogs(orvane::Host& host) {
  platform::classes::unregisterObject(kCommentClass);
  host.showAbout = {};
  host.askProjectName = {};
  host.makeSizeClassDialog = {};
}

} // namespace desktop
