#pragma once

#include <QString>

namespace desktop {

/// The window's own words; everything else comes from the component's string table.
enum class Word {
  ok,
  cancel,
  close,
  closePane,
  activityLog,
  minimize,
  restore,
  noPrograms,
  noWorking,
  noAffected,
  noClean,
  noSynonyms,
  noSource,
  noLog,
  toolbar,
  moreCommands,
  panes,
};

/// The word in the chosen language.
QString word(Word word);

} // namespace desktop
