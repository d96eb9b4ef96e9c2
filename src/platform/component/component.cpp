#include "platform/component/component.hpp"

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <unordered_map>

#include <dlfcn.h>
#include <fmt/format.h>
#include <unistd.h>

#include "platform/runtime/text.hpp"

namespace platform {

namespace {

std::atomic<long> liveFactories{0};

class Factory final : public ClassFactory {
 public:
  explicit Factory(std::function<Ref<Object>()> create) : m_create(std::move(create)) { ++liveFactories; }
  ~Factory() override { --liveFactories; }
  Ref<Object> CreateInstance() override { return m_create(); }

 private:
  std::function<Ref<Object>()> m_create;
};

struct Registration {
  std::string progId;
  ClassId classId;
  std::string library;
};

std::vector<Registration> readRegistrations() {
  std::vector<Registration> all;
  std::ifstream in(registrationFile());
  for (std::string line; std::getline(in, line);) {
    const auto fields = splitAt(line, '\t');
    if (fields.size() == 3) all.push_back({fields[0], fields[1], fields[2]});
  }
  return all;
}

// Whole or not at all: several programs of one user may register at a time.
bool writeRegistrations(const std::vector<Registration>& all) {
  namespace fs = std::filesystem;
  const fs::path file = registrationFile();
  std::error_code failed;
  fs::create_directories(file.parent_path(), failed);
  const fs::path aside =
      file.string() + "." + std::to_string(std::hash<std::string>{}(file.string() + std::to_string(::getpid())));
  {
    std::ofstream out(aside, std::ios::trunc);
    for (const auto& entry : all)
      out << entry.progId << '\t' << entry.classId << '\t' << entry.library << '\n';
    out.flush();
    if (!out) return false;
  }
  fs::rename(aside, file, failed);
  if (failed) fs::remove(aside);
  return !failed;
}

void removeClasses(std::vector<Registration>& all, const std::vector<ServerClass>& classes) {
  for (const auto& gone : classes)
    std::erase_if(all, [&](const Registration& r) { return equalsIgnoringCase(r.progId, gone.progId); });
}

using NamedObjects = std::unordered_map<std::string, Ref<Object>, IgnoringCaseHash, IgnoringCaseEqual>;
NamedObjects& namedObjects() {
  static NamedObjects objects;
  return objects;
}

void* entryPoint(const std::string& library, const char* name) {
  void* handle = ::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) throw Error(fmt::format("{}: the component library cannot be loaded: {}", library, ::dlerror()));
  void* entry = ::dlsym(handle, name);
  if (!entry) throw Error(fmt::format("{}: is no component library, {} is missing", library, name));
  return entry;
}

} // namespace

long serverGetClassObject(const std::vector<ServerClass>& classes, const char* classId, void** factory) {
  *factory = nullptr;
  for (const auto& offered : classes) {
    if (!equalsIgnoringCase(offered.classId, classId)) continue;
    auto* made = new Factory(offered.create);
    made->addRef(); // the caller takes this reference over
    *factory = static_cast<ClassFactory*>(made);
    return kOk;
  }
  return kClassNotAvailable;
}

long serverCanUnloadNow(bool locked) {
  return locked || liveFactories > 0 ? kFalse : kOk;
}

long serverRegister(const std::vector<ServerClass>& classes, const void* addressInLibrary) {
  Dl_info library{};
  if (!::dladdr(addressInLibrary, &library)) return kRegistrationFailed;
  std::error_code failed;
  const auto path = std::filesystem::canonical(library.dli_fname, failed);
  if (failed) return kRegistrationFailed;
  auto all = readRegistrations();
  removeClasses(all, classes);
  for (const auto& offered : classes)
    all.push_back({offered.progId, offered.classId, path.string()});
  return writeRegistrations(all) ? kOk : kRegistrationFailed;
}

long serverUnregister(const std::vector<ServerClass>& classes) {
  auto all = readRegistrations();
  removeClasses(all, classes);
  return writeRegistrations(all) ? kOk : kRegistrationFailed;
}

void classes::registerObject(const std::string& name, Ref<Object> object) {
  namedObjects()[name] = std::move(object);
}

void classes::unregisterObject(const std::string& name) {
  namedObjects().erase(name);
}

Ref<Object> classes::object(std::string_view name) {
  const auto found = namedObjects().find(name);
  if (found == namedObjects().end()) throw KeyError(fmt::format("the host has not registered '{}'", name));
  return found->second;
}

std::string registrationFile() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config && *config) return std::string(config) + "/tarnsift/classes";
  const char* home = std::getenv("HOME");
  return std::string(home && *home ? home : "/tmp") + "/.config/tarnsift/classes";
}

std::string registeredLibrary(std::string_view progId) {
  for (const auto& entry : readRegistrations())
    if (equalsIgnoringCase(entry.progId, progId)) return entry.library;
  return {};
}

void registerLibrary(const std::string& path) {
  using Register = long (*)();
  const auto doRegister = reinterpret_cast<Register>(entryPoint(path, "DllRegisterServer"));
  if (doRegister() != kOk)
    throw Error(fmt::format("{}: its classes cannot be registered in {}", path, registrationFile()));
}

Ref<Object> createObject(std::string_view progId) {
  for (const auto& entry : readRegistrations()) {
    if (!equalsIgnoringCase(entry.progId, progId)) continue;
    using GetClassObject = long (*)(const char*, void**);
    const auto getClassObject = reinterpret_cast<GetClassObject>(entryPoint(entry.library, "DllGetClassObject"));
    void* raw = nullptr;
    if (getClassObject(entry.classId.c_str(), &raw) != kOk)
      throw Error(fmt::format("{}: does not offer the class {}", entry.library, progId));
    auto* factory = static_cast<ClassFactory*>(raw);
    Ref<Object> made = factory->CreateInstance();
    factory->release();
    return made;
  }
  throw Error(fmt::format("{}: the class {} is not registered", registrationFile(), progId));
}

} // namespace platform
