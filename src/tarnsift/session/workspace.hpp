#pragma once

#include <string>

#include "platform/controls/control.hpp"
#include "platform/xml/xml.hpp"
#include "tarnsift/session/analysis_store.hpp"

/// The host's workspace control, its source viewer and its search.
namespace tarnsift {

class KVWorkSpace;

/// A control of the host in the window: the window places it, the host draws it. Twips.
class HostControl : public Object {
 public:
  double Left = 0, Top = 0, Width = 0, Height = 0;
  void Move(double left, double top, double width, double height) {
    Left = left, Top = top, Width = width, Height = height;
    Placed.raise();
  }
  bool Visible() const { return m_visible; }
  void setVisible(bool visible) {
    m_visible = visible;
    Placed.raise();
  }
  /// Gives it the focus where there is a screen.
  virtual void SetFocus() {}
  platform::Event<> GotFocus;
  platform::Event<> Placed; ///< moved, shown or hidden

 private:
  bool m_visible = true;
};

/// Runs search criteria over programs.
class SearchHost : public Object {
 public:
  /// Keys of the programs to search, joined by "|"; "" for all.
  virtual void setScopeList(const std::string& keys) = 0;
  virtual void setDefaultSearchCriteriaName(const std::string& name) = 0;
  virtual void setGlobalSearch(bool global) = 0;
  /// Lets the analyst choose a criterion, starting with the default, and runs it. True: a search ran and its results
  /// are in place. False or Null: nothing to merge.
  virtual platform::Value FindConstructs(const Ref<StoreModel>& model, const std::string& listName,
                                         KVWorkSpace& workspace, bool flag, const std::string& text) = 0;
  /// Of the criterion used last: tab key ":" criterion key.
  virtual std::string LastSearchCriteriaName() = 0;
  /// The results document: MODELS/MODEL[@Name]/MATCHES[@ListName]/OBJECT[@ObjID, @NewCount].
  virtual platform::Document Options() = 0;
};

/// The workspace control `KVWS`: knows the current program and shows its source.
class KVWorkSpace : public HostControl {
 public:
  virtual void RegisterObject(const std::string& text, const std::string& key, const Ref<Object>& object) = 0;
  virtual void RegisterControl(KVWorkSpace& control, const std::string& key) = 0;
  virtual void setOwnerForm(platform::Object* form) = 0;
  virtual platform::Object* OwnerForm() = 0;
  /// A command to a target; the workspace may change the key code.
  virtual void Notify(const std::string& target, const std::string& command, int& keyCode) = 0;
  virtual void Close() = 0;
  virtual std::string CurrentProgram() = 0;
  virtual void setCurrentProgram(const std::string& key) = 0; ///< raises ProgramChanged inside the write
  virtual Ref<tarnsift::AnalysisStore>
  AnalysisStore() = 0; ///< of the current program, or nothing; belongs to the control
  virtual void setCurrentObject(const Ref<StoreConstruct>& construct) = 0; ///< places the viewer
  virtual Ref<tarnsift::SourceFile> SourceFile() = 0;                      ///< on view, or nothing
  virtual Ref<tarnsift::SearchHost> SearchHost() = 0;

  platform::Event<> ProgramChanged;
  platform::Event<> SourceChanged;
};

/// The source viewer.
class KVSource : public HostControl {
 public:
  virtual void Attach(KVWorkSpace& workspace, const std::string& key, const std::string& caption) = 0;
  virtual void Detach() = 0;
};

} // namespace tarnsift
