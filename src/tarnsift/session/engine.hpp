#pragma once

#include "platform/runtime/object.hpp"
#include "platform/runtime/value.hpp"

namespace tarnsift {

/// The workbench's entry: `Run(Frontend, ActionId, ObjectId)` opens the window for the host's open project and gives 0
/// in every case; a failure is told in a message box.
class TarnsiftEngine : public platform::Object {
 public:
  long Run(const platform::Value& Frontend, const platform::Value& ActionId, const platform::Value& ObjectId);
  platform::Value Invoke(std::string_view member, std::span<platform::Value> arguments) override;
};

} // namespace tarnsift
