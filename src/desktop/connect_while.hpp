#pragma once

#include <memory>
#include <utility>

#include "platform/controls/event.hpp"

namespace desktop {

/// Lives as long as the widgets of a session. The component's window outlives them, and its events know no disconnect.
using Lifetime = std::shared_ptr<char>;
inline Lifetime makeLifetime() {
  return std::make_shared<char>();
}

/// Connects a handler that does nothing once `lifetime` has gone.
template<typename Handler, typename... Arguments>
void connectWhile(platform::Event<Arguments...>& event, const Lifetime& lifetime, Handler handler) {
  event.connect([alive = std::weak_ptr<char>(lifetime), handler = std::move(handler)](Arguments... arguments) {
    if (!alive.expired()) handler(arguments...);
  });
}

} // namespace desktop
