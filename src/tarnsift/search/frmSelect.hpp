#pragma once

#include <array>
#include <string>

#include "platform/controls/form.hpp"

namespace tarnsift {

/// The pattern dialog: a pattern of names and one of names to leave out, each with a history for the length of the
/// session.
class frmSelect : public platform::Form {
 public:
  frmSelect();
  /// Shows the dialog and waits. True when the analyst accepted; both patterns then are in upper case, either may be
  /// empty.
  bool Edit(platform::Form& owner, std::string& NamePositive, std::string& NameNegative);

 private:
  void LoadCaptions();
  void UpdateSelectButton();
  void cmdOK_Click();
  void AddToHistory(platform::ComboBox& box, const std::string& text);
  std::array<platform::ComboBox*, 2> cmbSelect{};
  std::array<platform::Label*, 2> lblFilter{};
  platform::CommandButton& cmdOK;
  platform::CommandButton& cmdCancel;
  bool m_accepted = false;
};

/// The one dialog of the process, made at first use.
frmSelect& theSelectDialog();

} // namespace tarnsift
