#pragma once

#include <string>

namespace platform {

/// The application object: one per process.
struct Application {
  std::string Title = "Tarnsift";
  std::string HelpFile;
};
Application& App();

} // namespace platform
