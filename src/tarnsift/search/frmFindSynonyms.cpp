#include "tarnsift/search/frmFindSynonyms.hpp"

#include "platform/controls/screen.hpp"
#include "platform/runtime/string_table.hpp"
#include "tarnsift/session/host.hpp"

namespace tarnsift {

namespace {

using platform::LoadResString;

constexpr int kListsInCaptions[] = {202, 201, 200};
constexpr int kListsToCaptions[] = {196, 197, 198};

} // namespace

frmFindSynonyms::frmFindSynonyms()
    : Form("frmFindSynonyms"), frmFindFor(add<platform::Frame>("frmFindFor")),
      frFindTo(add<platform::Frame>("frFindTo")), cmdOK(add<platform::CommandButton>("cmdOK")),
      cmdCancel(add<platform::CommandButton>("cmdCancel")) {
  addRef();
  for (int i = 0; i < 3; ++i) {
    optListsIn[static_cast<std::size_t>(i)] = &add<platform::OptionButton>("optListsIn", i);
    optListsTo[static_cast<std::size_t>(i)] = &add<platform::OptionButton>("optListsTo", i);
  }
  cmdOK.Default = true;
  cmdCancel.Cancel = true;
  Load.connect([this] {
    LoadCaptions();
    theProductStrings().ApplyToForm(*this);
    optListsIn[0]->choose();
    optListsTo[0]->choose();
  });
  cmdOK.Click.connect([this] {
    m_accepted = true;
    Hide();
  });
  cmdCancel.Click.connect([this] {
    m_accepted = false;
    Hide();
  });
}

void frmFindSynonyms::LoadCaptions() {
  Caption = LoadResString(204);
  frmFindFor.Caption = LoadResString(199);
  frFindTo.Caption = LoadResString(195);
  cmdOK.Caption = LoadResString(194);
  cmdCancel.Caption = LoadResString(193);
  for (std::size_t i = 0; i < 3; ++i) {
    optListsIn[i]->Caption = LoadResString(kListsInCaptions[i]);
    optListsTo[i]->Caption = LoadResString(kListsToCaptions[i]);
  }
}

bool frmFindSynonyms::SelectParams(platform::Form& owner, int& FromListIndex, int& ToListIndex) {
  m_accepted = false;
  platform::screen().runModal(*this, &owner);
  for (int i = 0; i < 3; ++i) {
    if (optListsIn[static_cast<std::size_t>(i)]->Value()) FromListIndex = i;
    if (optListsTo[static_cast<std::size_t>(i)]->Value()) ToListIndex = i;
  }
  return m_accepted;
}

frmFindSynonyms& theFindSynonymsDialog() {
  static frmFindSynonyms dialog;
  return dialog;
}

} // namespace tarnsift
