#include "orvane/workspace.hpp"

#include "tarnsift/session/host.hpp"

namespace orvane {

using tarnsift::Ref;

void Workspace::RegisterObject(const std::string&, const std::string& key, const Ref<tarnsift::Object>& object) {
  m_objects[key] = object;
}

void Workspace::RegisterControl(tarnsift::KVWorkSpace& control, const std::string& key) {
  m_controls[key] = &control;
}

// Keys mean something to a source view only.
void Workspace::Notify(const std::string&, const std::string&, int&) {}

void Workspace::Close() {
  if (m_store) m_store->Close();
  m_store = {};
  m_storeProgram.clear();
  m_currentProgram.clear();
  m_currentObject = {};
  m_sourceFile = {};
  m_objects.clear();
  m_controls.clear();
  m_ownerForm = nullptr;
}

void Workspace::setCurrentProgram(const std::string& key) {
  m_currentProgram = key;
  m_currentObject = {};
  m_sourceFile = {};
  ProgramChanged.raise();
  if (m_sourceFile) return;
  // Nothing of the program was chosen: its own source is on view. Why a store cannot be opened, the load has told.
  platform::ignoring([this] { AnalysisStore(); });
  showFile(0);
  ObjectChanged.raise();
}

// Opened when it is first asked for: choosing a program costs nothing by itself.
Ref<tarnsift::AnalysisStore> Workspace::AnalysisStore() {
  if (m_storeProgram == m_currentProgram) return m_store;
  if (m_store) m_store->Close();
  m_store = {};
  m_storeProgram = m_currentProgram;
  if (m_currentProgram.empty()) return {};
  const auto program = tarnsift::theRepositoryAccess().Repository()->ObjectById(m_currentProgram);
  if (!program) return {};
  m_store = tarnsift::theProgramStore().Open(m_base.native(program->Attribute("Kelvane").asText()),
                                             tarnsift::theRepositoryAccess().StoreClassOf(m_currentProgram));
  return m_store;
}

void Workspace::setCurrentObject(const Ref<tarnsift::StoreConstruct>& construct) {
  m_currentObject = construct;
  if (construct && m_store) showFileWithId(construct->FileId());
  ObjectChanged.raise();
}

void Workspace::showFile(std::uint32_t file) {
  if (m_store && m_storeProgram == m_currentProgram) showFileWithId(std::to_string(file));
}

void Workspace::showFileWithId(const std::string& fileId) {
  if (m_sourceFile && m_sourceFile->Id() == fileId) return;
  m_sourceFile = {};
  const auto files = m_store->Files();
  for (std::size_t i = 1; i <= files->Count() && !m_sourceFile; ++i)
    if (const auto file = files->Item(i); file->Id() == fileId) m_sourceFile = file;
  SourceChanged.raise();
}

} // namespace orvane
