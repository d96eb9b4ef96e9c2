#include "tarnsift/session/globals.hpp"

namespace tarnsift {

Globals& globals() {
  static Globals session;
  return session;
}

std::string belowBase(std::string_view relativePath) {
  return globals().BaseFolder + "\\" + std::string(relativePath);
}

} // namespace tarnsift
