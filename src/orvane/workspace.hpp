#pragma once

#include <functional>
#include <map>
#include <string>

#include "orvane/base_folder.hpp"
#include "tarnsift/session/workspace.hpp"

namespace orvane {

/// The workspace control without a screen: the current program with its analysis store, the file on view.
class Workspace : public tarnsift::KVWorkSpace {
 public:
  Workspace(BaseFolder base, tarnsift::Ref<tarnsift::SearchHost> search)
      : m_base(std::move(base)), m_search(std::move(search)) {}

  void RegisterObject(const std::string& text, const std::string& key,
                      const tarnsift::Ref<tarnsift::Object>& object) override;
  void RegisterControl(tarnsift::KVWorkSpace& control, const std::string& key) override;
  void setOwnerForm(platform::Object* form) override { m_ownerForm = form; }
  platform::Object* OwnerForm() override { return m_ownerForm; }
  void Notify(const std::string& target, const std::string& command, int& keyCode) override;
  void Close() override;
  std::string CurrentProgram() override { return m_currentProgram; }
  /// A program whose store cannot be opened has none; the load of its lists then tells why.
  void setCurrentProgram(const std::string& key) override;
  tarnsift::Ref<tarnsift::AnalysisStore> AnalysisStore() override;
  void setCurrentObject(const tarnsift::Ref<tarnsift::StoreConstruct>& construct) override;
  tarnsift::Ref<tarnsift::SourceFile> SourceFile() override { return m_sourceFile; }
  tarnsift::Ref<tarnsift::SearchHost> SearchHost() override { return m_search; }

  /// The construct on view, or nothing; for a source view.
  tarnsift::Ref<tarnsift::StoreConstruct> currentObject() const { return m_currentObject; }
  /// Raised behind every choice of a construct and when the program on view goes.
  platform::Event<> ObjectChanged;
  /// Puts another file of the current program on view, by its index in the analysis; an unknown one changes nothing.
  void showFile(std::uint32_t file);

 private:
  void showFileWithId(const std::string& fileId);
  BaseFolder m_base;
  tarnsift::Ref<tarnsift::SearchHost> m_search;
  std::map<std::string, tarnsift::Ref<tarnsift::Object>> m_objects;
  std::map<std::string, tarnsift::KVWorkSpace*> m_controls;
  platform::Object* m_ownerForm = nullptr;
  std::string m_currentProgram;
  tarnsift::Ref<tarnsift::AnalysisStore> m_store;
  std::string m_storeProgram;
  tarnsift::Ref<tarnsift::StoreConstruct> m_currentObject;
  tarnsift::Ref<tarnsift::SourceFile> m_sourceFile;
};

/// The source viewer; a screen draws it from `Placed` and the workspace.
class SourceViewer : public tarnsift::KVSource {
 public:
  void Attach(tarnsift::KVWorkSpace& workspace, const std::string& key, const std::string& caption) override {
    m_workspace = &workspace;
    m_key = key;
    m_caption = caption;
  }
  void Detach() override { m_workspace = nullptr; }
  void SetFocus() override {
    if (onSetFocus) onSetFocus();
  }
  std::function<void()> onSetFocus; ///< what a screen does to focus its widget

 private:
  tarnsift::KVWorkSpace* m_workspace = nullptr;
  std::string m_key;
  std::string m_caption;
};

} // namespace orvane
