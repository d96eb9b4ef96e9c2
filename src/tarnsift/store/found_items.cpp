#include "tarnsift/store/found_items.hpp"

#include "platform/files/files.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/workbench/split.hpp"

namespace tarnsift {

namespace {

std::string foundItemsFile() {
  return belowBase(foundItemsFolder(globals().ProjectName) + "\\FoundItems.txt");
}

} // namespace

std::string foundItemsFolder(const std::string& projectName) {
  return "Projects\\" + projectName + "\\TARNSIFT";
}

FoundItems readFoundItems() {
  FoundItems found;
  const std::string file = foundItemsFile();
  if (!theFileProbe().FileExists(file, false)) return found;
  const std::string path = platform::nativePath(file);
  found.date = platform::modificationTime(path);
  platform::LineReader lines(path);
  while (auto line = lines.next()) {
    const std::string id = Split(*line, "\t");
    if (!platform::ignoring([&] { found.lines.Add(*line, id); }))
      throw platform::KeyError(path + ": the program id '" + id +
                               "' stands twice; remove the file, all counts are then made anew");
  }
  return found;
}

void writeFoundItems(const platform::ListView& lvPrograms) {
  const std::string folder = belowBase(foundItemsFolder(globals().ProjectName));
  if (!theFileProbe().FolderExists(folder)) platform::createFolder(platform::nativePath(folder));
  std::string text;
  for (std::size_t i = 1; i <= lvPrograms.ListItems.Count(); ++i) {
    const platform::ListItem& row = lvPrograms.ListItems.Item(i);
    text += row.Key() + "\t" + row.SubItems(1) + "\t" + row.SubItems(2) + "\t" + row.SubItems(3) + "\n";
  }
  platform::WriteFileAtomically(platform::nativePath(foundItemsFile()), text);
}

} // namespace tarnsift
