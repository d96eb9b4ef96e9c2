#include "orvane/product.hpp"

#include <filesystem>

#include "platform/runtime/error.hpp"

namespace orvane {

namespace fs = std::filesystem;

std::string programFolder() {
  std::error_code failed;
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  return failed ? fs::current_path().string() : program.parent_path().string();
}

std::string productFolder() {
  const std::string folder = programFolder();
  for (const std::string& candidate : {folder + "/resources", folder + "/../share/tarnsift"})
    if (fs::is_directory(candidate)) return candidate;
  throw platform::Error(folder + ": the product's files are not there (resources); install it again");
}

std::string componentLibrary() {
  const std::string folder = programFolder();
  for (const std::string& candidate : {folder + "/libTarnsift.so", folder + "/../lib/libTarnsift.so"})
    if (fs::is_regular_file(candidate)) return fs::canonical(candidate).string();
  throw platform::Error(folder + ": the component library libTarnsift.so is not there; install it again");
}

platform::Ref<platform::Object> createFromComponent(std::string_view progId) {
  const std::string library = componentLibrary();
  if (platform::registeredLibrary(progId) != library) platform::registerLibrary(library);
  return platform::createObject(progId);
}

} // namespace orvane
