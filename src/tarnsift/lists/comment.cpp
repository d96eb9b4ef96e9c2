#include "tarnsift/lists/comment.hpp"

#include "platform/runtime/application.hpp"
#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/entry.hpp"
#include "tarnsift/lists/load.hpp"
#include "tarnsift/session/globals.hpp"

namespace tarnsift {

namespace {
constexpr int kCommentHelp = 2400170;
}

void mnuComment_Click(frmMain& window) {
  SyncWorkspaceProgram(window);
  platform::ListView& list = listOf(window, window.ActiveList);
  platform::ListItem* entry = list.SelectedItem();
  if (!entry) return;
  const std::size_t column = commentColumn(list);
  const std::string prompt = theProductStrings().Format(platform::LoadResString(515), {entry->Text, "\r\n"});
  std::string comment;
  if (!theCommentDialog().Ask(comment, prompt, platform::App().Title, entry->SubItems(column), 0,
                              platform::App().HelpFile, kCommentHelp))
    return;
  seekConstruct(window, entry->Key());
  window.ConstructsTable->Edit();
  window.ConstructsTable->setField(globals().ClassificationColumn, comment);
  window.ConstructsTable->Update();
  entry->setSubItems(column, comment);
  list.Changed.raise();
}

} // namespace tarnsift
