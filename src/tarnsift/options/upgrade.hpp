#pragma once

#include "platform/runtime/object.hpp"
#include "platform/runtime/value.hpp"

namespace tarnsift {

/// Rewrites the option files of older projects into the shape with pages. Needs no session: it finds the projects
/// through the host's global objects RepositoryAccess and FileProbe.
class UprgadeOptions : public platform::Object {
 public:
  /// The projects in the repository's order, each file replaced whole, up to the first that cannot be read, is in the
  /// newer shape already or lacks a node of the older one. `dummy` is not read; always true.
  bool Upgrade(const platform::Value& dummy);
  platform::Value Invoke(std::string_view member, std::span<platform::Value> arguments) override;
};

} // namespace tarnsift
