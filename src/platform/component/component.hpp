#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/object.hpp"
#include "platform/runtime/value.hpp"

namespace platform {

/// 128-bit class id as a text "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}".
using ClassId = std::string;

/// What a server's DllGetClassObject hands out: makes objects of one class.
class ClassFactory : public Object {
 public:
  virtual Ref<Object> CreateInstance() = 0;
};

/// A class that a server offers.
struct ServerClass {
  std::string progId; ///< e.g. "Tarnsift.TarnsiftEngine"
  ClassId classId;
  std::function<Ref<Object>()> create;
};

/// Results of the exported functions.
inline constexpr long kOk = 0;
inline constexpr long kFalse = 1;
inline constexpr long kClassNotAvailable = -2147221231;
inline constexpr long kRegistrationFailed = -2147221164;

/// The bodies behind the four exported entry points of a server. `locked` says whether something of the server is still
/// in use beside its objects.
long serverGetClassObject(const std::vector<ServerClass>& classes, const char* classId, void** factory);
long serverCanUnloadNow(bool locked);
long serverRegister(const std::vector<ServerClass>& classes, const void* addressInLibrary);
long serverUnregister(const std::vector<ServerClass>& classes);

/// The table of named objects and classes of this process.
namespace classes {
/// An object that exists once; replaces one of the same name.
void registerObject(const std::string& name, Ref<Object> object);
void unregisterObject(const std::string& name);
/// Throws KeyError when nothing was registered under the name.
Ref<Object> object(std::string_view name);
template<typename T>
T& the(std::string_view name) {
  auto* found = dynamic_cast<T*>(object(name).get());
  if (!found) throw Error("the object '" + std::string(name) + "' does not have the interface that was asked for");
  return *found;
}
} // namespace classes

/// The per-user file that maps class names to libraries: $XDG_CONFIG_HOME/tarnsift/classes, one line a class: name,
/// class id, library, separated by tabs.
std::string registrationFile();
/// Loads the library that the class is registered for and makes an object. Throws Error when the name is not registered
/// or the library cannot be loaded, saying which.
Ref<Object> createObject(std::string_view progId);
/// The library that a class name is registered for; empty when it is not.
std::string registeredLibrary(std::string_view progId);
/// Loads the library and calls its DllRegisterServer. Throws Error when that fails.
void registerLibrary(const std::string& path);

} // namespace platform
