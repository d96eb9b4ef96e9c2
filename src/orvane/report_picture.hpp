#pragma once

#include <vector>

#include "orvane/report_records.hpp"
#include "platform/xml/xml.hpp"

namespace orvane {

/// The picture of a report over programs that has two percentages, declarations and usages: the programs with the
/// largest shares as bars, and where there are more, a skyline of all. An SVG element that stands nowhere yet in
/// `document`; empty for a report without these columns or without records.
platform::Node reportPicture(platform::Document& document, const std::vector<ReportColumn>& columns,
                             RecordFile& records);

} // namespace orvane
