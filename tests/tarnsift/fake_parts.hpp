#pragma once

#include "platform/runtime/text.hpp"
#include "tarnsift/fake_host.hpp"

/// The objects of the fake host, by what they stand for; fake_host has what their answers are made of.
namespace tarnsift_test {

/// A host object whose answers all come from the fake host.
template<typename Interface>
struct OfHost : Interface {
  explicit OfHost(FakeHost& host) : m_host(host) {}
  FakeHost& m_host;
};

/// The program with that id; nullptr when there is none.
inline const Program* programOf(const FakeHost& host, const std::string& id) {
  for (const Program& program : host.programs)
    if (program.id == id) return &program;
  return nullptr;
}

/// A native path as the component writes it.
inline std::string backslashed(std::string path) {
  return platform::replaceAll(std::move(path), "/", "\\");
}

/// The store of a program that the host has, whatever is broken.
Ref<tarnsift::AnalysisStore> openStore(FakeHost& host, const std::string& program);
Ref<tarnsift::SourceFile> sourceFileAt(const std::string& path);
/// The key of a construct of such a store.
std::string keyOf(tarnsift::StoreConstruct& construct);

/// A project as the repository has it.
Ref<tarnsift::RepositoryObject> projectFolder(const std::string& name);

Ref<tarnsift::RepositoryAccess> makeRepositoryAccess(FakeHost& host); ///< fake_repository.cpp
Ref<tarnsift::ProgramStore> makeProgramStore(FakeHost& host);         ///< fake_store.cpp
Ref<tarnsift::HostFactory> makeHostFactory(FakeHost& host);           ///< fake_window.cpp: what each window gets

} // namespace tarnsift_test
