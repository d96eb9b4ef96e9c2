#include "tarnsift/lists/counts.hpp"

#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

void countRows(platform::ListItem& program, platform::Database& database) {
  for (std::size_t list = 1; list <= 3; ++list)
    program.setSubItems(list, PadCount("0"));
  const std::string& status = globals().StatusColumn;
  const auto counts = database.OpenRecordset("select " + status + ", Count(*) as cnt " + "from constructs " + "where " +
                                             status + " is not NULL " + "group by " + status);
  for (; !counts->Eof(); counts->MoveNext()) {
    const std::int64_t list = counts->Field(status).asInteger();
    if (list >= kWorking && list <= kRejected)
      program.setSubItems(static_cast<std::size_t>(list) + 1, PadCount(counts->Field("cnt").asInteger()));
  }
}

void addCounters(platform::ListItem& program, const Counters& counters) {
  for (std::size_t i = 0; i < counters.size(); ++i)
    program.setSubItems(i + 1, PadCount(countOf(program.SubItems(i + 1)) + counters[i]));
}

} // namespace tarnsift
