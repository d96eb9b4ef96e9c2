#include "tarnsift/workbench/frmMain.hpp"

#include "tarnsift/workbench/wiring.hpp"

namespace tarnsift {

namespace {

constexpr int kHelpContext = 2400010;
constexpr double kListColumnWidth = 3881; // twips
constexpr double kProgramColumnWidths[] = {2540, 1587, 1588, 1588};

std::unique_ptr<frmMain>& instance() {
  static std::unique_ptr<frmMain> window;
  return window;
}

} // namespace

frmMain::frmMain()
    : Form("frmMain"), cbCoolBar(add<platform::CoolBar>("cbCoolBar")), tbToolbar(add<platform::Toolbar>("tbToolbar")),
      pbProgress(add<platform::ProgressBar>("pbProgress")), lvPrograms(add<platform::ListView>("lvPrograms")),
      tsLists(add<platform::TabStrip>("tsLists")), lvList{}, dlgCommon(add<platform::CommonDialog>("dlgCommon")) {
  addRef(); // owned by the process, whatever the host lets go of
  HelpContextID = kHelpContext;
  KeyPreview = true;
  for (int i = 0; i < 4; ++i) {
    lvList[static_cast<std::size_t>(i)] = &add<platform::ListView>("lvList", i);
    auto& headers = lvList[static_cast<std::size_t>(i)]->ColumnHeaders;
    headers.Add({"", "Name", kListColumnWidth});
    headers.Add({"Comment", "Comment", kListColumnWidth});
  }
  for (const double width : kProgramColumnWidths)
    lvPrograms.ColumnHeaders.Add({"", "", width});
  tsLists.Tabs = {{"Working", "", 1}, {"Accepted", "", 2}, {"Rejected", "", 3}};
  cbCoolBar.Bands = {{"", "", &tbToolbar, true}, {"Progress", "", &pbProgress, false}};
  cbCoolBar.Height = platform::screen().metrics().bandHeight;
  tbToolbar.Height = cbCoolBar.Height;
}

Value frmMain::Invoke(std::string_view member, std::span<Value> arguments) {
  const auto found = members.find(member);
  return found == members.end() ? Object::Invoke(member, arguments) : found->second(arguments);
}

frmMain& theWindow() {
  if (!instance()) {
    instance() = std::make_unique<frmMain>();
    wire(*instance());
  }
  return *instance();
}

bool windowExists() {
  return instance() != nullptr;
}

} // namespace tarnsift
