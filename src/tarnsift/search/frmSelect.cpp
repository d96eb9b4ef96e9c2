#include "tarnsift/search/frmSelect.hpp"

#include "platform/controls/screen.hpp"
#include "platform/runtime/application.hpp"
#include "platform/runtime/string_table.hpp"
#include "platform/runtime/wildcard.hpp"
#include "tarnsift/session/globals.hpp"

namespace tarnsift {

using platform::LoadResString;

frmSelect::frmSelect()
    : Form("frmSelect"), cmdOK(add<platform::CommandButton>("cmdOK")),
      cmdCancel(add<platform::CommandButton>("cmdCancel")) {
  addRef();
  for (int i = 0; i < 2; ++i) {
    lblFilter[static_cast<std::size_t>(i)] = &add<platform::Label>("lblFilter", i);
    auto& box = add<platform::ComboBox>("cmbSelect", i);
    cmbSelect[static_cast<std::size_t>(i)] = &box;
    box.Change.connect([this] { UpdateSelectButton(); });
    box.Click.connect([this] { UpdateSelectButton(); });
  }
  Load.connect([this] {
    LoadCaptions();
    theProductStrings().ApplyToForm(*this);
  });
  cmdOK.Click.connect([this] { cmdOK_Click(); });
  cmdCancel.Click.connect([this] { Hide(); });
  // Closed by its frame it only hides, so the histories live as long as the main window.
  QueryUnload.connect([this](bool& cancel) {
    if (globals().Closing) return;
    cancel = true;
    Hide();
  });
  Unload.connect([this](bool&) {
    for (platform::ComboBox* box : cmbSelect) {
      box->Items.clear();
      box->setText("");
    }
  });
}

void frmSelect::LoadCaptions() {
  Caption = LoadResString(203);
  lblFilter[0]->Caption = LoadResString(192);
  lblFilter[1]->Caption = LoadResString(191);
  cmdOK.Caption = LoadResString(190);
  cmdCancel.Caption = LoadResString(189);
}

void frmSelect::UpdateSelectButton() {
  cmdOK.Enabled = !cmbSelect[0]->Text().empty() || !cmbSelect[1]->Text().empty();
}

void frmSelect::cmdOK_Click() {
  for (platform::ComboBox* box : cmbSelect) {
    try {
      platform::like("Hello", box->Text());
    } catch (const platform::PatternError&) {
      platform::screen().messageBox(LoadResString(537), platform::kCritical, platform::App().Title);
      platform::ignoring([&] { box->SetFocus(); });
      return;
    }
  }
  m_accepted = true;
  Hide();
}

void frmSelect::AddToHistory(platform::ComboBox& box, const std::string& text) {
  if (text.empty()) return;
  if (std::find(box.Items.begin(), box.Items.end(), text) == box.Items.end()) box.Items.push_back(text);
  box.setText("");
}

bool frmSelect::Edit(platform::Form& owner, std::string& NamePositive, std::string& NameNegative) {
  m_accepted = false;
  UpdateSelectButton();
  platform::screen().runModal(*this, &owner);
  if (!m_accepted) {
    Hide();
    return false;
  }
  NamePositive = platform::upper(cmbSelect[0]->Text());
  NameNegative = platform::upper(cmbSelect[1]->Text());
  AddToHistory(*cmbSelect[0], NamePositive);
  AddToHistory(*cmbSelect[1], NameNegative);
  return true;
}

frmSelect& theSelectDialog() {
  static frmSelect dialog;
  return dialog;
}

} // namespace tarnsift
