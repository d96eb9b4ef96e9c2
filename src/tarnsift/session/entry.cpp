#include "platform/component/component.hpp"
#include "tarnsift/options/upgrade.hpp"
#include "tarnsift/session/engine.hpp"
#include "tarnsift/webpage/sitemint_add_on.hpp"
#include "tarnsift/workbench/frmMain.hpp"

// The four exported entry points. They forward to the class factory and hold no logic.

namespace {

const std::vector<platform::ServerClass>& servedClasses() {
  static const std::vector<platform::ServerClass> classes = {
      {"Tarnsift.TarnsiftEngine", "{6F1B0C52-3C1E-4B0A-9C64-1D7E2A5B9F01}",
       [] { return platform::Ref<platform::Object>(new tarnsift::TarnsiftEngine); }},
      {"Tarnsift.UprgadeOptions", "{2A84C6F9-7B3D-4D52-9E0B-C15F8E6D3047}",
       [] { return platform::Ref<platform::Object>(new tarnsift::UprgadeOptions); }},
      {"Tarnsift.SitemintAddOn", "{B3E0A4D7-52C9-4E1F-8F36-0A7C94D1E2B8}",
       [] { return platform::Ref<platform::Object>(new tarnsift::SitemintAddOn); }},
  };
  return classes;
}

} // namespace

extern "C" {
long DllCanUnloadNow();
long DllGetClassObject(const char* classId, void** factory);
long DllRegisterServer();
long DllUnregisterServer();

/// 0 when nothing of the component is in use, else 1.
long DllCanUnloadNow() {
  return platform::serverCanUnloadNow(tarnsift::windowExists() && tarnsift::theWindow().Loaded());
}

long DllGetClassObject(const char* classId, void** factory) {
  return platform::serverGetClassObject(servedClasses(), classId, factory);
}

long DllRegisterServer() {
  return platform::serverRegister(servedClasses(), reinterpret_cast<const void*>(&DllRegisterServer));
}

long DllUnregisterServer() {
  return platform::serverUnregister(servedClasses());
}
}
