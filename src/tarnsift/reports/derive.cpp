#include "tarnsift/reports/derive.hpp"

#include "platform/runtime/application.hpp"
#include "platform/runtime/string_table.hpp"
#include "tarnsift/reports/change_size.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

namespace {

constexpr const char* kProject = "FOLDER";
constexpr const char* kChangeMagnitude = "ChangeMagnitude";

/// A program of the chosen list.
struct Member {
  std::string key;
  std::int64_t count = 0;
};

std::vector<Member> membersOf(const frmMain& window, int Index) {
  std::vector<Member> members;
  for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
    const platform::ListItem& row = window.lvPrograms.ListItems.Item(i);
    const std::int64_t count = countOf(row.SubItems(static_cast<std::size_t>(Index) + 1));
    if (count != 0) members.push_back({row.Key(), count});
  }
  return members;
}

void tell(int message, const std::string& name, int style) {
  platform::screen().messageBox(theProductStrings().Format(platform::LoadResString(message), {name}), style,
                                platform::App().Title);
}

bool projectExists(Repository& repository, const std::string& name) {
  Ref<RepositoryObject> found;
  platform::ignoring([&] { found = repository.FindByName(kProject, name, 0); });
  return static_cast<bool>(found);
}

// A program that cannot be joined stays out, and its count still counts for the limits.
SizeLimits joinMembers(frmMain& window, Repository& repository, const std::vector<Member>& members,
                       const Ref<RepositoryObject>& project) {
  const Hourglass busy(window);
  std::vector<std::int64_t> counts;
  for (const Member& member : members) {
    counts.push_back(member.count);
    platform::ignoring([&] {
      if (const auto program = repository.ObjectById(member.key)) program->AddRelation("BelongsTo", project);
    });
  }
  return proposeSizeLimits(counts);
}

void writeSizes(frmMain& window, Repository& repository, const std::vector<Member>& members, const SizeLimits& limits) {
  const Hourglass busy(window);
  for (const Member& member : members) {
    const auto program = repository.ObjectById(member.key);
    if (!program || !program->Type()->AttributeDefinition(kChangeMagnitude)) continue;
    program->BeginUpdate();
    program->SetAttribute(kChangeMagnitude, changeSize(member.count, limits));
    program->CommitUpdate();
  }
}

} // namespace

void mnuFileCreateFrom_Click(frmMain& window, int Index) {
  const std::vector<Member> members = membersOf(window, Index);
  if (members.empty()) return tell(523, "", platform::kExclamation);
  const std::string name = theProjectFactory().AskName(*globals().Frontend);
  if (name.empty()) return;
  const Ref<Repository> repository = theRepositoryAccess().Repository();
  if (projectExists(*repository, name)) return tell(524, name, platform::kExclamation);
  if (!callFrontend("CreateProject", name).asBool()) return tell(525, name, platform::kCritical);
  SizeLimits limits = joinMembers(window, *repository, members, repository->FindByName(kProject, name, 0));
  const Ref<SizeClassDialog> dialog = theHostFactory().createSizeClassDialog();
  if (!dialog->Edit(window.KVWS->OwnerForm(), platform::LoadResString(555), limits.s, limits.m, limits.l)) return;
  writeSizes(window, *repository, members, limits);
}

} // namespace tarnsift
