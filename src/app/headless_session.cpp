#include "app/headless_session.hpp"

#include <cstdio>

#include <fmt/format.h>

#include "orvane/projects.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"
#include "tarnsift/store/program_database.hpp"

namespace app {

using platform::Form;
using platform::ListItem;
using platform::ListView;

namespace {

// The command line's comment dialog: the text was given beforehand.
class ScriptedComment final : public tarnsift::CommentDialog {
 public:
  explicit ScriptedComment(HeadlessSession& session) : m_session(session) {}
  bool Ask(std::string& result, const std::string&, const std::string&, const std::string&, int, const std::string&,
           int) override {
    result = m_session.commentText;
    return true;
  }

 private:
  HeadlessSession& m_session;
};

// The command line's dialog of the sizes: the limits were given beforehand, or stay as proposed.
class ScriptedSizes final : public tarnsift::SizeClassDialog {
 public:
  ScriptedSizes(std::optional<tarnsift::SizeLimits> given, tarnsift::SizeLimits& used) : m_given(given), m_used(used) {}
  bool Edit(platform::Object*, const std::string&, std::int32_t& sLimit, std::int32_t& mLimit,
            std::int32_t& lLimit) override {
    m_used = m_given.value_or(tarnsift::SizeLimits{sLimit, mLimit, lLimit});
    sLimit = m_used.s;
    mLimit = m_used.m;
    lLimit = m_used.l;
    return true;
  }

 private:
  std::optional<tarnsift::SizeLimits> m_given;
  tarnsift::SizeLimits& m_used;
};

} // namespace

int listNamed(const std::string& word, bool orDelete) {
  static constexpr std::string_view kNames[] = {"working", "affected", "clean", "delete"};
  for (int i = 0; i < (orDelete ? 4 : 3); ++i)
    if (platform::equalsIgnoringCase(kNames[i], word)) return i;
  throw UsageError(
      fmt::format("'{}' is no list; there are working, affected, clean{}", word, orDelete ? ", delete" : ""));
}

HeadlessSession::HeadlessSession(const Context& context, const std::string& programGlob) {
  const orvane::BaseFolder base = context.base();
  std::string project;
  {
    const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
    project = projectOf(context, *repository);
  }
  m_host = std::make_unique<orvane::Host>(base, project, m_screen);
  start(programGlob);
}

HeadlessSession::HeadlessSession(orvane::BaseFolder base, const std::string& project, const std::string& programGlob)
    : m_host(std::make_unique<orvane::Host>(std::move(base), project, m_screen)) {
  start(programGlob);
}

HeadlessSession::~HeadlessSession() {
  m_host.reset();
  platform::classes::unregisterObject("CommentDialog");
}

// What went wrong in a step that the others went on after is told at once.
void HeadlessSession::start(const std::string& programGlob) {
  m_host->log().onLine = [this](const std::string& line) {
    m_progress.clear();
    fmt::print(stderr, "tarnsift: {}\n", line);
  };
  // Only for this session: what the analyst set for the window stays in the file.
  m_host->options().overrideForSession("//CASE[@ID='Tarnsift']/BOOL[@NAME='ApplySelected']",
                                       programGlob.empty() ? "false" : "true");
  platform::classes::registerObject("CommentDialog", new ScriptedComment(*this));
  openWindow();
  Form& form = window();
  auto& bar = form.get<platform::ProgressBar>("pbProgress");
  bar.Changed.connect([this, &form, &bar] {
    if (bar.Visible())
      m_progress.show(form.Caption, static_cast<std::size_t>(bar.Value()), static_cast<std::size_t>(bar.Max));
  });
  if (programGlob.empty()) return;
  std::vector<std::string> keys;
  for (const ListCounts& program : counts())
    if (platform::like(platform::upper(program.program), platform::upper(programGlob))) keys.push_back(program.key);
  if (keys.empty()) throw platform::Error(fmt::format("no verified program matches '{}'", programGlob));
  select(keys);
}

// What the component told is what the command tells.
void HeadlessSession::openWindow() {
  const auto told = [this] {
    for (const auto& message : m_screen.messages)
      if (message.style != platform::kInformation) throw platform::Error(message.text);
  };
  try {
    m_host->start();
  } catch (const platform::Error&) {
    told();
    throw;
  }
  told();
}

void HeadlessSession::select(const std::vector<std::string>& keys) {
  auto& programs = window().get<ListView>("lvPrograms");
  programs.selectAll(false);
  for (const auto& key : keys)
    programs.ListItems.Item(key).setSelected(true);
}

// An error that the component told ends the command here.
void HeadlessSession::act(const std::function<void()>& action) {
  m_screen.messages.clear();
  action();
  m_progress.clear();
  for (const auto& message : m_screen.messages)
    if (message.style == platform::kCritical) throw platform::Error(message.text);
}

void HeadlessSession::choose(const std::string& menu, int index) {
  auto& entry = window().get<platform::MenuItem>(menu, index);
  for (const platform::MenuItem* item = &entry; item; item = item->ParentMenu)
    if (!item->Enabled)
      throw platform::Error(counts().empty() ? "there is no verified program; run 'tarnsift verify'"
                                             : "the command '" + entry.Caption + "' is not to be had now");
  act([&] { entry.choose(); });
}

std::string HeadlessSession::filter(const std::string& criterion, int target) {
  m_host->search().chooseCriterion = [criterion](const std::string&) { return criterion; };
  choose("mnuFileSearchTo", target);
  return m_screen.messages.empty() ? "" : std::string(platform::trimmed(m_screen.messages.back().text));
}

void HeadlessSession::findSynonyms(int from, int to) {
  m_screen.dialogs["frmFindSynonyms"] = [from, to](Form& dialog) {
    dialog.get<platform::OptionButton>("optListsIn", from).choose();
    dialog.get<platform::OptionButton>("optListsTo", to).choose();
    dialog.get<platform::CommandButton>("cmdOK").press();
  };
  choose("mnuFileSynonyms");
}

void HeadlessSession::report(int index) {
  choose("mnuFileReportType", index);
}

tarnsift::SizeLimits HeadlessSession::derive(int list, const std::string& name,
                                             const std::optional<tarnsift::SizeLimits>& limits) {
  tarnsift::SizeLimits used;
  m_host->askProjectName = [&] { return name; };
  m_host->makeSizeClassDialog = [&] {
    return platform::Ref<tarnsift::SizeClassDialog>(new ScriptedSizes(limits, used));
  };
  choose("mnuFileCreateFrom", list);
  m_host->askProjectName = {};
  m_host->makeSizeClassDialog = {};
  if (!m_screen.messages.empty()) throw platform::Error(m_screen.messages.back().text);
  return used;
}

void printChange(const std::vector<ListCounts>& before, const std::vector<ListCounts>& after) {
  std::array<std::int64_t, 3> was{};
  std::array<std::int64_t, 3> is{};
  std::size_t programs = 0;
  for (std::size_t i = 0; i < after.size(); ++i) {
    for (std::size_t list = 0; list < 3; ++list) {
      was[list] += before[i].counts[list];
      is[list] += after[i].counts[list];
    }
    if (before[i].counts != after[i].counts) ++programs;
  }
  fmt::print("Working {} ({:+}), Affected {} ({:+}), Clean {} ({:+}); {} of {} program(s) changed\n", is[0],
             is[0] - was[0], is[1], is[1] - was[1], is[2], is[2] - was[2], programs, after.size());
}

std::vector<ListCounts> HeadlessSession::counts() {
  std::vector<ListCounts> all;
  const auto& programs = window().get<ListView>("lvPrograms");
  for (std::size_t i = 1; i <= programs.ListItems.Count(); ++i) {
    const ListItem& row = programs.ListItems.Item(i);
    ListCounts program{row.Key(), row.Text, {}};
    for (std::size_t list = 0; list < 3; ++list)
      program.counts[list] = tarnsift::countOf(row.SubItems(list + 1));
    all.push_back(std::move(program));
  }
  return all;
}

void HeadlessSession::close() {
  if (!m_host->close()) throw platform::Error("the window refused to close");
}

} // namespace app
