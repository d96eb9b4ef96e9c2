#pragma once

#include <array>
#include <string>

#include "platform/runtime/collection.hpp"
#include "tarnsift/session/host.hpp"

namespace tarnsift {

/// The state of the session; process-wide, one session at a time.
struct Globals {
  Ref<Object> Frontend; ///< the host's application object, called by member name
  Ref<RepositoryObject> ProjectObject;
  std::string BaseFolder; ///< no separator at its end
  std::string ProjectName;
  platform::Node OptionsRoot;                    ///< //CASE[@ID='Tarnsift'] of the project's option document
  std::string StatusColumn;                      ///< bracketed
  std::string ClassificationColumn;              ///< bracketed
  bool Closing = false;                          ///< the main window is really closing
  platform::Collection<std::string> FolderNames; ///< escaped names of all projects, item and key
};
Globals& globals();

/// A property of the front end, or an operation without result by reference.
template<typename... Arguments>
Value callFrontend(std::string_view member, const Arguments&... arguments) {
  if (!globals().Frontend) throw platform::Error("no session is open");
  std::array<Value, sizeof...(Arguments)> values{Value(arguments)...};
  return globals().Frontend->Invoke(member, values);
}
/// The names that the host gives by number: 1 folder of product files, 4 base folder, 6 caption word, 7 project's name.
inline std::string orvaneName(int code) {
  return callFrontend("GetOrvaneName", code).asText();
}

/// Base folder, backslash and a path relative to it.
std::string belowBase(std::string_view relativePath);

} // namespace tarnsift
