#include "tarnsift/search/set_status.hpp"

#include "tarnsift/options/columns.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

namespace {

void showPlaced(frmMain& window, const platform::Recordset& row, int Target, const Value& status,
                const std::string& Note) {
  const std::string key = row.Field("KVID").asText();
  if (Target != kDeleteTarget) {
    platform::ListView& list = *window.lvList.at(static_cast<std::size_t>(Target));
    // Refused when the entry stands there already; it then keeps its comment.
    platform::ignoring([&] {
      platform::ListItem& entry = list.ListItems.Add(key, row.Field("Name").asText());
      entry.setSubItems(list.ColumnHeaders.IndexOf("Comment") - 1, Note);
      FillEntryColumns(window, Target, entry, key);
    });
  }
  if (!status.isNull() && status.asInteger() != Target)
    window.lvList.at(static_cast<std::size_t>(status.asInteger()))->ListItems.Remove(key);
}

} // namespace

void SetConstructStatus(frmMain& window, platform::Recordset& Table, int Target, Counters& counters, bool OnScreen,
                        const std::string& Note) {
  const Globals& session = globals();
  const Value status = Table.Field(session.StatusColumn);
  if (Target != kDeleteTarget) ++counters.at(static_cast<std::size_t>(Target));
  if (!status.isNull()) --counters.at(static_cast<std::size_t>(status.asInteger()));
  if (OnScreen) showPlaced(window, Table, Target, status, Note);
  Table.Edit();
  Table.setField(session.StatusColumn, Target == kDeleteTarget ? Value() : Value(Target));
  Table.setField(session.ClassificationColumn, Target == kDeleteTarget ? Value() : Value(Note));
  Table.Update();
}

} // namespace tarnsift
