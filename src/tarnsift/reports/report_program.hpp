#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Writes the part of one program; when its store or database cannot be read the report goes on without the rest of
/// that program, and the log says why.
template<typename Write>
void reportProgram(frmMain& window, const platform::ListItem& program, Write&& write) {
  try {
    write();
  } catch (const platform::Error& error) {
    window.ActivityLog->Write(program.Text + ": not whole in the report: " + error.what());
  }
}

} // namespace tarnsift
