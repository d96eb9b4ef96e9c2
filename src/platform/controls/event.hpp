#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace platform {

/// Something that happens to a control; handlers run in the order in which they were connected.
template<typename... Arguments>
class Event {
 public:
  void connect(std::function<void(Arguments...)> handler) { m_handlers.push_back(std::move(handler)); }
  void raise(Arguments... arguments) const {
    for (std::size_t i = 0; i < m_handlers.size(); ++i)
      m_handlers[i](arguments...); // a handler may connect another
  }
  void clear() { m_handlers.clear(); }

 private:
  std::vector<std::function<void(Arguments...)>> m_handlers;
};

} // namespace platform
