#pragma once

#include <array>

#include "platform/controls/form.hpp"

namespace tarnsift {

/// The dialog of Find Synonyms: the list to search in and the list that receives. It stays loaded, so the next use
/// shows the last choice.
class frmFindSynonyms : public platform::Form {
 public:
  frmFindSynonyms();
  /// Shows the dialog and waits. True when it was left with OK; both indexes are written in any case.
  bool SelectParams(platform::Form& owner, int& FromListIndex, int& ToListIndex);

 private:
  void LoadCaptions();
  platform::Frame& frmFindFor;
  platform::Frame& frFindTo;
  std::array<platform::OptionButton*, 3> optListsIn{};
  std::array<platform::OptionButton*, 3> optListsTo{};
  platform::CommandButton& cmdOK;
  platform::CommandButton& cmdCancel;
  bool m_accepted = false;
};

/// The one dialog of the process, made at first use.
frmFindSynonyms& theFindSynonymsDialog();

} // namespace tarnsift
