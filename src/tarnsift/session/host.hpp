#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/component/component.hpp"
#include "platform/controls/form.hpp"
#include "platform/controls/screen.hpp"
#include "platform/xml/xml.hpp"
#include "tarnsift/session/repository.hpp"
#include "tarnsift/session/workspace.hpp"

/// The host's global objects and helpers. Each is one object of the process, registered by the host under its class's
/// name and found through the function of that name.
namespace tarnsift {

class ProductPaths : public Object {
 public:
  virtual std::string ResourceFile(const std::string& fileName) = 0; ///< full native path
  virtual std::string HelpFile() = 0;
};

class ProductStrings : public Object {
 public:
  virtual std::string Text(const std::string& key) = 0;    ///< "Tarnsift.Name", "Product.Name"
  virtual std::string Picture(const std::string& key) = 0; ///< key of a picture of the screen
  virtual std::string Format(const std::string& text, const std::vector<std::string>& values) = 0; ///< fills %1, %2, %3
  virtual void ShowAbout(const std::string& title) = 0;
  virtual void ApplyToForm(platform::Form& form) = 0;
};

class CaptionText : public Object {
 public:
  /// Fit for an XPath literal in single quotes.
  virtual std::string EscapeText(const std::string& text) = 0;
  virtual std::string Format(const std::string& text, const std::vector<std::string>& values) = 0;
};

class FileProbe : public Object {
 public:
  /// Paths are joined with backslashes; case counts unless `anyCase`.
  virtual bool FileExists(const std::string& path, bool anyCase) = 0;
  virtual bool FolderExists(const std::string& path) = 0;
  /// The folder, without separator at its end, and the file name.
  virtual std::pair<std::string, std::string> SplitPath(const std::string& path) = 0;
};

class SettingsStore : public Object {
 public:
  virtual std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                                 const std::string& whenMissing) = 0;
  virtual void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                           const std::string& value) = 0;
};

class ListViewSorter : public Object {
 public:
  /// Sorts by the column (position from 1) and remembers it: the same column again turns the direction. nullopt resets.
  virtual void SortBy(platform::ListView& list, std::optional<std::size_t> column) = 0;
};

class MathTools : public Object {
 public:
  virtual std::int64_t NonNegative(std::int64_t value) = 0;
  virtual double Max(double a, double b) = 0;
};

class Frontend;

class ProjectFactory : public Object {
 public:
  virtual std::string AskName(Object& frontend) = 0; ///< empty when given up
};

/// Asks for the limits of the change sizes; made for each question.
class SizeClassDialog : public Object {
 public:
  /// Below `sLimit` a count is S, else below `mLimit` M, else below `lLimit` L, else XL. The limits go in as proposed
  /// and come out as the analyst left them. False for Cancel.
  virtual bool Edit(Object* owner, const std::string& caption, std::int32_t& sLimit, std::int32_t& mLimit,
                    std::int32_t& lLimit) = 0;
};

class CommentDialog : public Object {
 public:
  /// True when the analyst confirmed; `result` then holds the text unchanged.
  virtual bool Ask(std::string& result, const std::string& prompt, const std::string& title, const std::string& text,
                   int reserved, const std::string& helpFile, int helpContext) = 0;
};

/// One pane of the splitter. Geometry in twips within the window.
class SplitterPane {
 public:
  virtual ~SplitterPane() = default;
  virtual std::string Key() = 0;
  virtual float Left() = 0;
  virtual float Top() = 0;
  virtual float Width() = 0;
  virtual float Height() = 0;
  virtual bool Visible() = 0;
  virtual void setVisible(bool visible) = 0; ///< answers with PanesArranged
  virtual void setCaption(const std::string& caption) = 0;
  virtual std::string Caption() = 0;
  virtual bool IsActive() = 0;
  virtual void Activate() = 0;
  virtual void setPinned(bool pinned) = 0; ///< the second flag of a new pane
  /// Cuts the pane in two. Orientation: 1 side by side, 2 one over the other; size of the first child in twips; an
  /// empty name makes a child that is split next.
  virtual void Split(int orientation, int kind, double size, const std::string& first, const std::string& second) = 0;
  virtual SplitterPane& Child(int position) = 0; ///< 1 or 2
};

class Splitter : public Object {
 public:
  virtual SplitterPane& RootPane() = 0;
  virtual SplitterPane& Panes(const std::string& key) = 0; ///< throws KeyError
  virtual void setRedraw(bool redraw) = 0;
  virtual void Arrange() = 0;
  virtual void Arrange(double left, double top, double width, double height) = 0;
  virtual std::string SaveLayout() = 0;
  /// A text of SaveLayout. Throws when it is not one; the panes then stay as they were.
  virtual void LoadLayout(const std::string& layout) = 0;
  virtual void Release() = 0;

  platform::Event<> PanesArranged;
  platform::Event<SplitterPane&> PaneActivated;
};

/// The project's options.
class ProjectOptions : public Object {
 public:
  virtual platform::Document Document() = 0;
  /// Shows the dialog on the subtree of `path`; it writes the analyst's values into the document and raises FLO_Saved.
  virtual void ShowDialog(const std::string& path, platform::Form& owner, const std::string& title, int size1,
                          int size2, bool& result) = 0;
  virtual void Save() = 0; ///< throws FileError when the file cannot be written
  platform::Event<> FLO_Saved;
};

class ActivityLog : public Object {
 public:
  virtual void Attach(const Ref<Object>& object) = 0;
  virtual bool Visible() = 0;
  virtual void setVisible(bool visible) = 0;
  virtual bool Minimized() = 0;
  virtual void setMinimized(bool minimized) = 0;
  /// One line of what went wrong in a step that others go on after.
  virtual void Write(const std::string& line) = 0;
};

/// Turns records into a report; see reports/ for the record format and the order of calls.
class ReportWriter : public Object {
 public:
  virtual void setOutputFolder(const std::string& path) = 0;
  virtual void BeginReport(const std::string& format, const std::string& title, const std::string& styleSheet) = 0;
  virtual void BeginRecord() = 0;
  virtual void Field(const std::string& key, const Value& value) = 0;
  virtual void EndRecord() = 0;
  virtual void EndReport(const std::string& text) = 0;
  virtual void Show(platform::Form& owner) = 0;
};

/// Reads a text file by lines.
class BarelineBox : public Object {
 public:
  virtual void LoadFile(const std::string& path) = 0; ///< throws FileError when it cannot be read
  virtual std::size_t LineCount() = 0;
  virtual std::string Line(std::size_t number) = 0; ///< from 1; UTF-8
};

/// Makes the host's controls and services of which each window has its own.
class HostFactory : public Object {
 public:
  virtual Ref<KVWorkSpace> createWorkspace() = 0;
  virtual Ref<tarnsift::KVSource> createSource() = 0;
  virtual Ref<tarnsift::Splitter> createSplitter() = 0;
  virtual Ref<tarnsift::ReportWriter> createReportWriter() = 0;
  virtual Ref<tarnsift::BarelineBox> createBarelineBox() = 0;
  virtual Ref<tarnsift::SizeClassDialog> createSizeClassDialog() = 0;
};

/// The global objects by name. Throws KeyError when the host has not registered one.
template<typename T>
T& hostObject(std::string_view name) {
  return platform::classes::the<T>(name);
}
inline RepositoryAccess& theRepositoryAccess() {
  return hostObject<RepositoryAccess>("RepositoryAccess");
}
inline ProgramStore& theProgramStore() {
  return hostObject<ProgramStore>("ProgramStore");
}
inline ProductPaths& theProductPaths() {
  return hostObject<ProductPaths>("ProductPaths");
}
inline ProductStrings& theProductStrings() {
  return hostObject<ProductStrings>("ProductStrings");
}
inline CaptionText& theCaptionText() {
  return hostObject<CaptionText>("CaptionText");
}
inline FileProbe& theFileProbe() {
  return hostObject<FileProbe>("FileProbe");
}
inline SettingsStore& theSettingsStore() {
  return hostObject<SettingsStore>("SettingsStore");
}
inline ListViewSorter& theListViewSorter() {
  return hostObject<ListViewSorter>("ListViewSorter");
}
inline MathTools& theMathTools() {
  return hostObject<MathTools>("MathTools");
}
inline ProjectFactory& theProjectFactory() {
  return hostObject<ProjectFactory>("ProjectFactory");
}
inline CommentDialog& theCommentDialog() {
  return hostObject<CommentDialog>("CommentDialog");
}
inline HostFactory& theHostFactory() {
  return hostObject<HostFactory>("HostFactory");
}

} // namespace tarnsift
