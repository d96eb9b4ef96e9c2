#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/controls/screen.hpp"
#include "platform/files/files.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/session/host.hpp"
#include "tarnsift/workbench/frmMain.hpp"

/// A host in memory round the real window: programs with real databases and sources in a temporary base folder, and a
/// script for everything that an analyst or another component would answer.
namespace tarnsift_test {

using platform::Ref;
using platform::Value;

/// One program of the fake repository.
struct Program {
  std::string id; ///< also its name, and the stem of its files
  /// A row a line: KVID NAME OFFSET+SIZE LIST COMMENT; LIST is W, A, C or -, COMMENT is the rest of the line, none is
  /// Null.
  std::string constructs;
  std::string relations = ""; ///< a row a line: KVID1 RELID KVID2
  /// By KVID its declaration and then its usages, each FILE:LINE:COLUMN. A construct without a place is not in the
  /// analysis.
  std::map<std::string, std::vector<std::string>> places = {};
  std::size_t variableUsages = 0;      ///< how many the store has of all constructs
  std::vector<std::string> files = {}; ///< relative to the base folder, in the store's order
  std::string type = "COBOL";
  bool dataRelations = true;
  Value modified = {}; ///< microseconds since 1970
  std::set<std::string> projects = {"P"};
  std::string language = "COBOL";
  std::string displayName = ""; ///< of the logical program; "" its id
};

/// What the search host answers next.
struct Search {
  std::string used = "Names:CUST*"; ///< criterion
  Value result = true;
  std::map<std::string, std::vector<std::string>> matches = {}; ///< KVIDs by program
  std::map<std::string, std::string> newCounts = {}; ///< instead of the number of the matches; "-" no attribute
  std::string modelName = "COBOL";
};

/// Remembers where pop-ups were opened.
class PlacingScreen : public platform::HeadlessScreen {
 public:
  std::vector<std::pair<double, double>> places; ///< of the pop-ups, twips
  void popupMenu(platform::Form& form, platform::MenuItem& menu, double x, double y) override {
    places.emplace_back(x, y);
    HeadlessScreen::popupMenu(form, menu, x, y);
  }
};

class FakeHost {
 public:
  /// Makes the base folder with the project and registers all global objects.
  explicit FakeHost(std::string project = "P");
  ~FakeHost();
  FakeHost(const FakeHost&) = delete;
  FakeHost& operator=(const FakeHost&) = delete;

  /// Writes the program's files and database; its two columns of the open project are there already.
  void add(const Program& program);
  /// The same with the pair of columns of that name, e.g. "Status" and "Classification" for a prefix "".
  void addWithColumns(const Program& program, const std::string& status, const std::string& classification);
  void writeFile(const std::string& relativePath, const std::string& text);
  void setOption(const std::string& xpath, const std::string& value, const char* attribute = "VALUE");

  long run(); ///< TarnsiftEngine.Run
  Ref<platform::Object> frontend() const { return m_frontend; }
  bool close();
  tarnsift::frmMain& window() { return tarnsift::theWindow(); }
  void choose(const std::string& menu, int index = -1) { window().menu(menu, index).choose(); }
  void press(const std::string& shortcut); ///< a shortcut key of the menus
  void toolbar(const std::string& button) { window().tbToolbar.click(button); }
  /// Brings the list to the front with the marked keys selected, the first of them focused and shown.
  void mark(int list, const std::vector<std::string>& keys);
  /// Rows of the Synonyms list in their order: "[icon] key NAME: comment".
  std::string synonyms();
  /// Makes a row of the programs pane current as a plain click does.
  void click(const std::string& program);

  /// Every program with its counts and its classified rows, from the databases, a line each:
  ///   A 1 0 0
  ///     W k1 CUST-NO: its comment
  /// Checks on the way that counts and entries on the screen say the same.
  std::string state();
  /// Entries of the lists in the same form, in the order of the lists.
  std::string entries();
  std::string counts(); ///< the rows of the programs pane
  std::string rowsOf(const std::string& program);
  std::vector<std::string> messages(); ///< "style|title|text", and forgets them
  std::string takeLog() { return std::exchange(log, {}); }
  std::shared_ptr<platform::Database> database(const std::string& program);
  std::string path(const std::string& relative) const { return base.file(relative); }

  platform::TemporaryFolder base;
  PlacingScreen screen;
  std::string projectName;
  std::vector<std::string> projects; ///< names of all FOLDER objects
  std::vector<Program> programs;
  platform::Document options;
  platform::Document globalOptions;
  std::map<std::string, std::string> settings; ///< by "application|section|key"
  Search search;
  std::set<std::string> failingMembers;        ///< of Frontend
  std::set<std::string> brokenStores;          ///< programs whose analysis cannot be opened
  std::map<std::string, std::string> captions; ///< of panes
  std::string activePane;
  std::optional<std::string> newComment;                ///< what the analyst enters in the comment dialog; none: Cancel
  std::vector<std::string> commentAsked;                ///< "prompt|title|text|help file|context"
  std::string newProject;                               ///< what the analyst enters for a derived project; "": Cancel
  bool createsProjects = true;                          ///< whether Frontend.CreateProject succeeds
  std::optional<std::array<std::int32_t, 3>> newLimits; ///< what the analyst makes of the proposed size limits
  bool confirmSizes = true;                             ///< OK in the dialog of the sizes
  std::set<std::string> unjoinable;                     ///< programs that cannot be joined to a project
  std::set<std::string> lostPrograms;                   ///< programs that have gone from the repository meanwhile
  std::string currentObject;                            ///< KVID that the viewer was placed on
  std::string sourceFile;                               ///< on view; "" for none
  std::map<std::string, std::string> columnTexts;       ///< by "KVID.column"; others give the column's name
  std::map<std::string, std::string> columnTypes;       ///< others are String
  std::function<void()> inOptionsDialog;                ///< what the analyst does there before saving
  std::string log;                                      ///< calls of the host by the component, a line each
  std::string report;                                   ///< calls of ReportWriter
  std::string activity;                                 ///< lines of the activity log
  bool logVisible = true;
  bool logMinimized = false;
  int storesOpen = 0;
  bool attached = false; ///< between Initiate and Terminate
  Ref<tarnsift::KVWorkSpace> workspace;
  Ref<tarnsift::Splitter> splitter;
  Ref<tarnsift::KVSource> source;

 private:
  Ref<platform::Object> m_frontend;
};

/// Captions of the tab ByName and its criterion Level. The component reads the file once in the life of the process, so
/// all tests that write one write this.
inline constexpr const char* kCaptionFile =
    "<search><tab name='ByName' caption='By name'><criterion name='Level' caption='level number'/>"
    "<criterion name='Bare'/><criterion name='Empty' caption=''/></tab></search>";

/// The host objects over one FakeHost; registers all global ones and gives the front end.
Ref<platform::Object> registerFakeObjects(FakeHost& host);
void unregisterFakeObjects();

} // namespace tarnsift_test
