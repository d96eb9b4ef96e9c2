#include "desktop/jump.hpp"

#include "desktop/source/source_view.hpp"
#include "platform/runtime/text.hpp"

namespace desktop {

namespace {

using platform::ListItem;
using platform::ListView;

constexpr int kLists = 3; ///< Working, Affected, Clean

bool chooseProgram(platform::Form& form, const std::string& name) {
  auto& programs = form.get<ListView>("lvPrograms");
  for (std::size_t i = 1; i <= programs.ListItems.Count(); ++i) {
    ListItem& row = programs.ListItems.Item(i);
    if (!platform::equalsIgnoringCase(row.Text, name)) continue;
    programs.selectAll(false);
    programs.setSelectedItem(&row);
    row.EnsureVisible();
    programs.KeyUp.raise(platform::kKeyReturn, platform::kNoShift);
    return true;
  }
  return false;
}

bool isDeclaredAt(tarnsift::AnalysisStore& store, const std::string& key, const ReportPlace& place) {
  bool same = false;
  platform::ignoring([&] {
    const auto construct = store.ObjectById(key);
    same =
        construct->FileName() == place.file && construct->Line() == place.line && construct->Column() == place.column;
  });
  return same;
}

// Of several names that are spelt alike the one that is declared there.
bool chooseDataname(platform::Form& form, tarnsift::AnalysisStore& store, const ReportPlace& place) {
  for (int list = 0; list < kLists; ++list) {
    auto& view = form.get<ListView>("lvList", list);
    for (std::size_t i = 1; i <= view.ListItems.Count(); ++i) {
      ListItem& entry = view.ListItems.Item(i);
      if (!platform::equalsIgnoringCase(entry.Text, place.dataname) || !isDeclaredAt(store, entry.Key(), place))
        continue;
      auto& tabs = form.get<platform::TabStrip>("tsLists");
      constexpr const char* kTabs[] = {"Working", "Accepted", "Rejected"};
      for (std::size_t tab = 1; tab <= tabs.Tabs.size(); ++tab)
        if (tabs.Tabs[tab - 1].Key == kTabs[list]) tabs.select(tab);
      view.selectAll(false);
      view.setSelectedItem(&entry);
      entry.EnsureVisible();
      view.GotFocus.raise();
      view.KeyUp.raise(platform::kKeyReturn, platform::kNoShift);
      return true;
    }
  }
  return false;
}

} // namespace

bool jumpTo(platform::Form& form, orvane::Host& host, SourceView& source, const ReportPlace& place) {
  if (!form.Enabled() || !chooseProgram(form, place.program)) return false;
  const auto store = host.workspace()->AnalysisStore();
  if (!store || place.file.empty()) return true;
  if (!place.dataname.empty() && chooseDataname(form, *store, place)) return true;
  source.goTo(place.file, place.line, place.column);
  return true;
}

} // namespace desktop
