#include "tarnsift/session/layout.hpp"

#include "platform/runtime/application.hpp"
#include "platform/runtime/string_table.hpp"

namespace tarnsift {

namespace {

constexpr int kSideBySide = 1;
constexpr int kOneOverTheOther = 2;
constexpr int kPaneKind = 2;

void present(SplitterPane& pane, int captionId) {
  pane.setVisible(true);
  pane.setCaption(platform::LoadResString(captionId));
  pane.setPinned(true);
}

void buildDefault(frmMain& window) {
  const double width = window.ScaleWidth;
  const double height = window.ScaleHeight;
  SplitterPane& root = window.Splitter->RootPane();
  root.Split(kOneOverTheOther, kPaneKind, 2 * height / 3, "", "Source");
  present(root.Child(2), 503);
  SplitterPane& upper = root.Child(1);
  upper.Split(kSideBySide, kPaneKind, width / 2, "Programs", "");
  present(upper.Child(1), 504);
  SplitterPane& right = upper.Child(2);
  right.Split(kOneOverTheOther, kPaneKind, 4 * height / 9, "Lists", "Synonyms");
  present(right.Child(1), 505);
  present(right.Child(2), 506);
}

} // namespace

void buildPanes(frmMain& window) {
  const std::string stored = theSettingsStore().GetSetting(platform::App().Title, "Settings", "MainSplitter", "");
  // A layout behind the right signature that the splitter cannot read gives the default one as well.
  const bool restored = stored.starts_with(kLayoutSignature) && platform::ignoring([&] {
                          window.Splitter->LoadLayout(stored.substr(kLayoutSignature.size()));
                        });
  if (!restored) buildDefault(window);
  window.Splitter->Panes("Source").setCaption(platform::LoadResString(503));
  window.Splitter->setRedraw(true);
  window.Splitter->Arrange();
  window.Splitter->Panes("Synonyms").setCaption(platform::LoadResString(506));
}

void saveLayout(frmMain& window) {
  theSettingsStore().SaveSetting(platform::App().Title, "Settings", "MainSplitter",
                                 std::string(kLayoutSignature) + window.Splitter->SaveLayout());
}

} // namespace tarnsift
