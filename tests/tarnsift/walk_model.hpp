#pragma once

#include <sstream>

#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"
#include "tarnsift/fake_host.hpp"

/// Commands of an analyst against plain maps that say what each command means. After every command the databases, the
/// lists, the counts, the Synonyms pane and the states of the commands must be those of the maps.
namespace tarnsift_test::walk {

constexpr const char* kNote = "matches 'Names:CUST*' search criteria";
constexpr const char* kColumns = R"(<OPTIONS><CASE ID="Tarnsift">
  <BOOL NAME="ApplySelected" VALUE="false"/><TEXT NAME="DefaultSearchName" VALUE="Names:CUST*"/>
  <GROUP NAME="Search"><BOOL NAME="OverrideStatus" VALUE="false"/><BOOL NAME="RefreshLists" VALUE="false"/></GROUP>
  <GROUP NAME="SynonymSearch"><BOOL NAME="OverrideStatus" VALUE="false"/></GROUP>
  <GROUP NAME="Synonyms"><BOOL NAME="HighAffinity" VALUE="true"><LIST NAME="HighAffinityRels">
    <CASE NAME="Move" CHECKED="true"/><CASE NAME="Compare" CHECKED="true"/><CASE NAME="Other" CHECKED="false"/></LIST></BOOL>
    <BOOL NAME="LowAffinity" VALUE="false"><LIST NAME="LowAffinityRels"/></BOOL>
    <BOOL NAME="Redefines" VALUE="false"><BOOL NAME="ViewAllRedefines" VALUE="false"/></BOOL></GROUP>
  <LIST NAME="Languages"><CASE NAME="COBOL"><LIST NAME="Columns">
    <CASE NAME="Level" CHECKED="false"/><CASE NAME="Usage" CHECKED="false"/></LIST></CASE></LIST>
</CASE></OPTIONS>)";
constexpr const char* kSwitches[] = {"//CASE/BOOL[@NAME='ApplySelected']",
                                     "//GROUP[@NAME='Search']/BOOL[@NAME='OverrideStatus']",
                                     "//BOOL[@NAME='RefreshLists']",
                                     "//GROUP[@NAME='SynonymSearch']/BOOL[@NAME='OverrideStatus']",
                                     "//BOOL[@NAME='Redefines']",
                                     "//BOOL[@NAME='ViewAllRedefines']",
                                     "//CASE[@NAME='Level']",
                                     "//CASE[@NAME='Usage']"};
enum Switch { kApply, kOverride, kRefresh, kSynonymOverride, kRedefines, kAllRedefines, kLevel, kUsage };
inline const std::vector<std::string> kPatterns = {"CUST*", "*-OLD", "*#", "lower*", "[!C]*", "NOBODY"};
inline const std::vector<std::string> kPanes = {"Programs", "Lists", "Synonyms", "Source"};
constexpr const char* kBar[] = {"MoveWorking", "MoveAccepted", "MoveRejected"};
constexpr const char* kKeys[] = {"F5", "F6", "F8"};

struct Name {
  std::string key, name;
  int offset = 0, size = 0;
  int status = -1;
  std::optional<std::string> comment;
  bool known = true, used = true;
};
struct Relation {
  std::string from, kind, to;
};

// Ten names a program: a FILLER, one of size 0, overlaps, one in lower case, one that the analysis does not know.
inline std::vector<Name> namesOf(char program) {
  const std::string p(1, program);
  return {{p + "0", "CUST-1", 0, 8, 0, "first"},
          {p + "1", "CUST-OLD", 0, 8, 0, {}, true, false},
          {p + "2", "FILLER", 0, 8, -1, {}},
          {p + "3", "ZIP", 4, 2, 1, "a b"},
          {p + "4", "ORDER-OLD", 8, 4, 1, {}},
          {p + "5", "lower-1", 8, 4, 2, {}, true, false},
          {p + "6", "FLAG", 20, 0, 2, "c"},
          {p + "7", "TOTAL", 30, 6, -1, "waits"},
          {p + "8", "CUST-" + p, 30, 6, -1, {}, false},
          {p + "9", "Cust-9", 32, 1, -1, {}, true, false}};
}
inline std::vector<Relation> relationsOf(char program) {
  const std::string p(1, program);
  return {{p + "0", "Move", p + "3"},    {p + "3", "Compare", p + "0"}, {p + "0", "Move", p + "0"},
          {p + "0", "Move", p + "2"},    {p + "1", "Move", p + "5"},    {p + "5", "Move", p + "1"},
          {p + "6", "Compare", p + "7"}, {p + "7", "Move", p + "8"},    {p + "4", "Other", p + "9"},
          {p + "8", "Compare", p + "0"}, {p + "9", "Move", p + "4"}};
}

struct Command {
  unsigned kind = 0, a = 0, b = 0, c = 0;
};
struct Kind {
  const char* name;
  int weight;
};
constexpr Kind kKinds[] = {
    {"program", 6}, {"tab", 10},          {"focus synonyms", 10}, {"focus programs", 2}, {"entry", 8},   {"mark", 12},
    {"move", 24},   {"delete", 3},        {"clear list", 1},      {"clear all", 1},      {"unused", 3},  {"comment", 6},
    {"select", 5},  {"select all", 3},    {"filter", 9},          {"find synonyms", 6},  {"options", 5}, {"pane", 4},
    {"sort", 2},    {"mark programs", 4}, {"reopen", 1}};

inline std::string told(const Command& command) {
  std::ostringstream line;
  line << "{" << command.kind << ", " << command.a << ", " << command.b << ", " << command.c << "}, // "
       << kKinds[command.kind].name << "\n";
  return line.str();
}

class Walk {
 public:
  Walk() {
    host.options = platform::Document::loadText(kColumns);
    host.columnTypes["Level"] = "Integer";
    for (const char id : {'A', 'B', 'C'}) {
      Program program{.id = std::string(1, id), .constructs = ""};
      for (const Name& name : names[program.id] = namesOf(id)) {
        std::ostringstream line;
        line << name.key << " " << name.name << " " << name.offset << " " << name.size << " "
             << (name.status < 0 ? '-' : "WAC"[name.status]) << " " << name.comment.value_or("") << "\n";
        program.constructs += line.str();
        if (name.known) program.places[name.key] = {"x.cbl:1:1"};
        if (name.known && name.used) program.places[name.key].push_back("x.cbl:2:1");
        host.columnTexts[name.key + ".Level"] = std::to_string(name.offset);
      }
      for (const Relation& r : relations[program.id] = relationsOf(id))
        program.relations += r.from + " " + r.kind + " " + r.to + "\n";
      host.add(program);
    }
    open();
  }

  /// What differs after the command, or nothing.
  std::string run(const Command& command) {
    expected.clear();
    perform(command);
    return check();
  }

 private:
  using View = platform::ListView;
  struct Synonym {
    std::string text;
    int icon = 0;
  };

  View& list(int index) { return *window.lvList[static_cast<std::size_t>(index)]; }
  View& front() { return list(window.ActiveList); }
  std::string focus(int index) {
    const auto* item = list(index).SelectedItem();
    return item ? item->Key() : "";
  }
  Name& named(const std::string& program, const std::string& key) {
    for (Name& name : names[program])
      if (name.key == key) return name;
    throw std::logic_error("no name " + key);
  }
  std::vector<std::string> selected() {
    std::vector<std::string> keys;
    for (std::size_t i = 1; i <= front().ListItems.Count(); ++i)
      if (front().ListItems.Item(i).Selected()) keys.push_back(front().ListItems.Item(i).Key());
    return keys;
  }
  std::vector<std::string> scope() {
    std::vector<std::string> programs;
    for (const char* id : {"A", "B", "C"})
      if (!on[kApply] || window.lvPrograms.ListItems.Item(id).Selected()) programs.push_back(id);
    return programs;
  }
  bool synonymsShown() { return host.splitter->Panes("Synonyms").Visible(); }
  bool editing() { return host.activePane != "Programs"; }
  bool canMove(int target) { return editing() && !focus(window.ActiveList).empty() && target != window.ActiveList; }
  bool canSelect() { return editing() && front().ListItems.Count() > 0; }
  bool canDelete() { return canSelect() && window.ActiveList != 3; }

  // What the commands mean.

  void load(const std::string& program) {
    loaded = program;
    for (auto& entries : shown)
      entries.clear();
    synonyms.clear();
    for (const Name& name : names[program])
      if (name.status >= 0) shown[static_cast<std::size_t>(name.status)][name.key] = name.comment.value_or("");
    if (window.ActiveList == 3 || shown[static_cast<std::size_t>(window.ActiveList)].empty())
      caption = "Synonyms";
    else
      show(window.ActiveList, focus(window.ActiveList));
  }

  void open() {
    host.activePane.clear();
    host.run();
    on.assign(std::size(kSwitches), false);
    for (std::size_t i = 0; i < on.size(); ++i)
      on[i] =
          host.options.selectSingleNode(kSwitches[i]).getAttribute(i < kLevel ? "VALUE" : "CHECKED") == Value("true");
    columns = {on[kLevel], on[kUsage]};
    caption = "Synonyms";
    load("A");
  }

  void show(int index, const std::string& key) {
    if (key.empty()) {
      if (index == 3) return;
      synonyms.clear();
      caption = "Synonyms";
      return;
    }
    const Name& seed = named(loaded, key);
    if (seed.known) viewed = key;
    if (index == 3 || !synonymsShown()) return;
    synonyms.clear();
    for (const auto& [other, note] : relativesOf(loaded, seed)) {
      const Name& name = named(loaded, other);
      const auto found = synonyms.find(other);
      if (found == synonyms.end())
        synonyms[other] = {name.comment.value_or(note), name.status + 1};
      else if (!name.comment && found->second.text.find(note) == std::string::npos)
        found->second.text += "; " + note;
    }
    caption = "Synonyms for variable '" + seed.name + "' - " + std::to_string(synonyms.size()) + " item(s)";
  }

  // In the order of finding: relations of side 1, of side 2, redefinitions.
  std::vector<std::pair<std::string, std::string>> relativesOf(const std::string& program, const Name& seed) {
    std::vector<std::pair<std::string, std::string>> found;
    const auto add = [&](const std::string& key, const std::string& note) {
      if (key != seed.key && named(program, key).name != "FILLER") found.emplace_back(key, note + " of " + seed.name);
    };
    for (const bool side1 : {true, false})
      for (const Relation& r : relations[program])
        if (r.kind != "Other" && (side1 ? r.from : r.to) == seed.key) add(side1 ? r.to : r.from, r.kind);
    if (seed.size == 0 || !on[kRedefines]) return found;
    for (const Name& name : names[program])
      if (on[kAllRedefines] ? name.offset < seed.offset + seed.size && name.offset + name.size > seed.offset
                            : name.offset == seed.offset && name.size == seed.size)
        add(name.key, "redef");
    return found;
  }

  void refreshPane() {
    const int index = window.ActiveList == 3 ? static_cast<int>(window.tsLists.SelectedItem()) - 1 : window.ActiveList;
    show(index, focus(index));
  }

  void place(Name& name, int target, const std::optional<std::string>& comment) {
    name.status = target;
    name.comment = comment;
  }

  void move(int target) {
    const bool fromSynonyms = window.ActiveList == 3;
    for (const auto& key : selected()) {
      const std::string text =
          fromSynonyms ? synonyms.at(key).text : shown[static_cast<std::size_t>(window.ActiveList)].at(key);
      for (auto& entries : shown)
        entries.erase(key);
      shown[static_cast<std::size_t>(target)][key] = text;
      place(named(loaded, key), target, text);
      if (synonyms.contains(key)) synonyms[key].icon = target + 1;
    }
  }

  void leave(const std::string& program, Name& name) {
    if (program == loaded)
      for (auto& entries : shown)
        entries.erase(name.key);
    place(name, -1, {});
  }

  // The screen refuses a second entry of the same key and keeps its text.
  void setStatus(const std::string& program, Name& name, int target, const std::string& note) {
    if (target == 3) return leave(program, name);
    if (program == loaded) {
      for (std::size_t i = 0; i < 3; ++i)
        if (i != static_cast<std::size_t>(target)) shown[i].erase(name.key);
      shown[static_cast<std::size_t>(target)].emplace(name.key, note);
    }
    place(name, target, note);
  }

  void filter(const Command& command, int target) {
    bool changed = false;
    host.search.matches.clear();
    for (const auto& [program, all] : names)
      for (std::size_t i = 0; i < all.size(); ++i)
        if ((command.b >> (i + static_cast<std::size_t>(program[0] - 'A') * 10)) & 1)
          host.search.matches[program].push_back(all[i].key);
    for (const auto& program : scope()) {
      if (!host.search.matches.contains(program)) continue;
      std::array<int, 3> before{}, after{};
      for (const Name& name : names[program])
        if (name.status >= 0) ++before[static_cast<std::size_t>(name.status)];
      if (on[kRefresh] && target != 3) {
        changed = true;
        for (Name& name : names[program])
          if (name.status == target) leave(program, name);
      }
      for (const auto& key : host.search.matches[program]) {
        Name& name = named(program, key);
        if ((name.status < 0 && target != 3) || on[kOverride] || (name.status >= 0 && target == 3))
          setStatus(program, name, target, kNote);
      }
      for (const Name& name : names[program])
        if (name.status >= 0) ++after[static_cast<std::size_t>(name.status)];
      changed = changed || before != after;
    }
    host.choose("mnuFileSearchTo", target);
    refreshPane();
    if (!changed) expected.push_back("64|Tarnsift|None of the lists was changed. ");
  }

  void findSynonyms(int from, int to) {
    host.screen.dialogs["frmFindSynonyms"] = [from, to](platform::Form& form) {
      form.get<platform::OptionButton>("optListsIn", from).choose();
      form.get<platform::OptionButton>("optListsTo", to).choose();
      form.get<platform::CommandButton>("cmdOK").press();
    };
    for (const auto& program : scope()) {
      std::vector<Name> seeds;
      for (const Name& name : names[program])
        if (name.status == from) seeds.push_back(name);
      for (const Name& seed : seeds)
        for (const auto& [key, note] : relativesOf(program, seed)) {
          Name& name = named(program, key);
          if (name.status < 0 || (on[kSynonymOverride] && name.status != from)) setStatus(program, name, to, note);
        }
    }
    host.choose("mnuFileSynonyms");
    refreshPane();
  }

  void setOptions(unsigned mask) {
    const std::vector<bool> before = on;
    for (std::size_t i = 0; i < on.size(); ++i) {
      on[i] = (mask >> i) & 1;
      host.setOption(kSwitches[i], on[i] ? "true" : "false", i < kLevel ? "VALUE" : "CHECKED");
    }
    host.choose("mnuViewOptions");
    if (before[kRedefines] != on[kRedefines] || before[kAllRedefines] != on[kAllRedefines]) refreshPane();
    const std::vector<bool> now = {on[kLevel], on[kUsage]};
    const bool rebuilt = columns != now || columns == std::vector<bool>{false, false};
    columns = now;
    if (!rebuilt) return;
    for (auto& entries : shown)
      for (auto& [key, text] : entries)
        text = named(loaded, key).comment.value_or("");
    synonyms.clear();
    refreshPane();
  }

  void selectByPattern(const Command& command) {
    const std::string positive = command.a % 3 ? kPatterns[command.b % kPatterns.size()] : "";
    const std::string negative = command.a % 2 ? kPatterns[command.c % kPatterns.size()] : "";
    const bool accept = command.a % 5 != 0 && !(positive.empty() && negative.empty());
    host.screen.dialogs["frmSelect"] = [&](platform::Form& form) {
      form.get<platform::ComboBox>("cmbSelect", 0).setText(positive);
      form.get<platform::ComboBox>("cmbSelect", 1).setText(negative);
      form.get<platform::CommandButton>(accept ? "cmdOK" : "cmdCancel").press();
    };
    const bool allowed = canSelect();
    std::vector<std::string> marked = selected();
    if (allowed && accept) {
      marked.clear();
      for (std::size_t i = 1; i <= front().ListItems.Count(); ++i) {
        const std::string& text = front().ListItems.Item(i).Text;
        if ((positive.empty() || platform::like(text, platform::upper(positive))) &&
            (negative.empty() || !platform::like(text, platform::upper(negative))))
          marked.push_back(front().ListItems.Item(i).Key());
      }
    }
    host.choose("mnuSelect");
    if (selected() != marked)
      wrong = "marked " + platform::joined(selected(), " ") + ", not " + platform::joined(marked, " ");
  }

  void perform(const Command& command) {
    const int third = static_cast<int>(command.a % 3);
    switch (command.kind) {
    case 0: {
      const std::string program(1, static_cast<char>('A' + third));
      platform::ignoring([&] { window.lvPrograms.SetFocus(); });
      host.click(program);
      if (program != loaded) load(program);
      return;
    }
    case 1:
      window.tsLists.select(static_cast<std::size_t>(third) + 1);
      if (window.ActiveList != third) wrong = "the tab's list is not in front";
      return show(third, focus(third));
    case 2:
      platform::ignoring([&] { list(3).SetFocus(); });
      return;
    case 3:
      platform::ignoring([&] { window.lvPrograms.SetFocus(); });
      return;
    case 4:
      if (front().ListItems.Count() == 0) return;
      front().selectAll(false);
      front().setSelectedItem(&front().ListItems.Item(command.a % front().ListItems.Count() + 1));
      front().MouseUp.raise(platform::kLeftButton, platform::kNoShift, 0, 0);
      return show(window.ActiveList, focus(window.ActiveList));
    case 5:
      for (std::size_t i = 1; i <= front().ListItems.Count(); ++i)
        front().ListItems.Item(i).setSelected((command.a >> i) & 1);
      return front().MouseUp.raise(platform::kLeftButton, platform::kCtrl, 0, 0);
    case 6: {
      const bool allowed = canMove(third);
      if (allowed) move(third);
      if (command.b % 3 == 0) host.choose("mnuMoveTo", third);
      if (command.b % 3 == 1) host.toolbar(kBar[third]);
      if (command.b % 3 == 2) host.press(kKeys[third]);
      if (allowed) show(window.ActiveList, focus(window.ActiveList));
      return;
    }
    case 7: {
      const std::vector<std::string> keys = canDelete() ? selected() : std::vector<std::string>();
      const bool yes = command.a % 4 != 0;
      if (!keys.empty()) {
        host.screen.answers = {yes ? platform::Answer::Ok : platform::Answer::Cancel};
        expected.push_back("1||You are about to delete " + std::to_string(keys.size()) + " dataname(s). Continue?");
      }
      for (const auto& key : yes ? keys : std::vector<std::string>()) {
        leave(loaded, named(loaded, key));
        if (synonyms.contains(key)) synonyms[key].icon = 0;
      }
      command.b % 2 ? host.press("Del") : host.toolbar("Delete");
      if (yes && !keys.empty()) show(window.ActiveList, focus(window.ActiveList));
      return;
    }
    case 8:
    case 9:
      for (const auto& program : scope())
        for (Name& name : names[program])
          if (command.kind == 9 || name.status == third) leave(program, name);
      command.kind == 9 ? host.choose("mnuEditClearAll") : host.choose("mnuEditClearList", third);
      return refreshPane();
    case 10:
      for (const auto& program : scope())
        for (Name& name : names[program])
          if (name.status == third && name.known && !name.used) leave(program, name);
      host.choose("mnuFileRemoveUnused", third);
      return refreshPane();
    case 11: {
      host.newComment.reset();
      if (command.a % 4) host.newComment = command.a % 4 == 1 ? " " : "note " + std::to_string(command.b % 100);
      const std::string key = editing() ? focus(window.ActiveList) : "";
      if (!key.empty() && host.newComment) {
        named(loaded, key).comment = host.newComment;
        (window.ActiveList == 3 ? synonyms.at(key).text : shown[static_cast<std::size_t>(window.ActiveList)].at(key)) =
            *host.newComment;
      }
      return command.b % 2 ? host.choose("mnuComment") : host.toolbar("Note");
    }
    case 12:
      return selectByPattern(command);
    case 13: {
      const bool allowed = canSelect();
      host.press("Ctrl+A");
      if (allowed && selected().size() != front().ListItems.Count()) wrong = "not all are marked";
      return;
    }
    case 14:
      return filter(command, static_cast<int>(command.a % 4));
    case 15:
      return findSynonyms(third, static_cast<int>(command.b % 3));
    case 16:
      return setOptions(command.a);
    case 17: {
      const std::string& pane = kPanes[command.a % kPanes.size()];
      host.choose("mnuView" + pane);
      if (pane == "Synonyms" && synonymsShown() && !focus(window.ActiveList).empty())
        show(window.ActiveList, focus(window.ActiveList));
      return;
    }
    case 18:
      return list(0).ColumnClick.raise(command.a % 2 ? 1 : list(0).ColumnHeaders.Count());
    case 19:
      for (std::size_t i = 1; i <= 3; ++i)
        window.lvPrograms.ListItems.Item(i).setSelected((command.a >> i) & 1);
      return window.lvPrograms.MouseUp.raise(platform::kLeftButton, platform::kCtrl, 0, 0);
    default:
      host.close();
      return open();
    }
  }

  // The comparison.

  std::string columnsOf(const std::string& key) {
    std::string text;
    const Name& name = named(loaded, key);
    if (columns[0])
      text +=
          "|" +
          (name.known ? std::string(10 - std::to_string(name.offset).size(), ' ') + std::to_string(name.offset) : "");
    if (columns[1]) text += name.known ? "|Usage" : "|";
    return text;
  }

  std::string check() {
    if (!wrong.empty()) return wrong;
    std::ostringstream is, should;
    for (const auto& message : host.messages())
      is << message << "\n";
    for (const auto& message : expected)
      should << message << "\n";
    for (const auto& [program, all] : names) {
      std::array<int, 3> counts{};
      for (const Name& name : all) {
        should << name.key << " " << name.status << " " << name.comment.value_or("Null") << "\n";
        if (name.status >= 0) ++counts[static_cast<std::size_t>(name.status)];
      }
      should << counts[0] << " " << counts[1] << " " << counts[2] << "\n";
      for (const auto rows = database(program)->OpenRecordset("select * from Constructs"); !rows->Eof();
           rows->MoveNext()) {
        const Value status = rows->Field("P_Status"), comment = rows->Field("P_Classification");
        is << rows->Field("KVID").asText() << " " << (status.isNull() ? -1 : status.asInteger()) << " "
           << (comment.isNull() ? "Null" : comment.asText()) << "\n";
      }
      const platform::ListItem& row = window.lvPrograms.ListItems.Item(program);
      for (std::size_t i = 1; i <= 3; ++i)
        is << platform::trimmed(row.SubItems(i)) << (i < 3 ? " " : "\n");
    }
    should << "loaded " << loaded << ", viewed " << viewed << ", " << caption << "\n";
    is << "loaded " << window.LoadedProgram << ", viewed " << host.currentObject << ", " << host.captions["Synonyms"]
       << "\n";
    for (int i = 0; i < 4; ++i) {
      std::map<std::string, std::string> lines;
      const std::size_t comment = list(i).ColumnHeaders.Count() - 1;
      for (std::size_t at = 1; at <= list(i).ListItems.Count(); ++at) {
        const platform::ListItem& entry = list(i).ListItems.Item(at);
        std::string& line = lines[entry.Key()];
        line = entry.Text;
        for (std::size_t column = 1; column < comment; ++column)
          line += "|" + entry.SubItems(column);
        line += "|" + entry.SubItems(comment) + "|" + std::to_string(entry.SmallIcon);
      }
      for (const auto& [key, line] : lines)
        is << i << " " << key << " " << line << "\n";
      if (i < 3)
        for (const auto& [key, text] : shown[static_cast<std::size_t>(i)])
          should << i << " " << key << " " << named(loaded, key).name << columnsOf(key) << "|" << text << "|0\n";
      else
        for (const auto& [key, synonym] : synonyms)
          should << i << " " << key << " " << named(loaded, key).name << columnsOf(key) << "|" << synonym.text << "|"
                 << synonym.icon << "\n";
    }
    should << "moves " << canMove(0) << canMove(1) << canMove(2) << " comment " << canMove(-1) << " select "
           << canSelect() << " delete " << canDelete() << "\n";
    is << "moves " << window.menu("mnuMoveTo", 0).Enabled << window.menu("mnuMoveTo", 1).Enabled
       << window.tbToolbar.Button("MoveRejected").Enabled << " comment " << window.menu("mnuComment").Enabled
       << " select " << window.menu("mnuSelect").Enabled << " delete " << window.menu("mnuDelete").Enabled << "\n";
    if (!window.Enabled() || window.pbProgress.Visible() || window.MousePointer != platform::kPointerDefault)
      is << "the window is busy\n";
    return is.str() == should.str() ? "" : "is:\n" + is.str() + "should be:\n" + should.str();
  }

  std::shared_ptr<platform::Database> database(const std::string& program) { return host.database(program); }

  FakeHost host;
  tarnsift::frmMain& window = host.window();
  std::map<std::string, std::vector<Name>> names;
  std::map<std::string, std::vector<Relation>> relations;
  std::string loaded, viewed, caption;
  std::array<std::map<std::string, std::string>, 3> shown; ///< comment on the screen by key
  std::map<std::string, Synonym> synonyms;
  std::vector<bool> on;
  std::vector<bool> columns; ///< that the headers show
  std::vector<std::string> expected;
  std::string wrong;
};

} // namespace tarnsift_test::walk
