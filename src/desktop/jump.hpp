#pragma once

#include "desktop/report/report_window.hpp"
#include "orvane/host.hpp"
#include "platform/controls/form.hpp"

namespace desktop {

class SourceView;

/// Shows the place of a report's row in the main window, by what the analyst would do there: chooses the program, then
/// the dataname in the list that holds it, else the line of its file. What is no longer there is left out; false when
/// not even the program is.
bool jumpTo(platform::Form& form, orvane::Host& host, SourceView& source, const ReportPlace& place);

} // namespace desktop
