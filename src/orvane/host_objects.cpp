#include "orvane/host_objects.hpp"

#include <map>

#include "cobol/source.hpp"
#include "orvane/product.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

using platform::Object;
using platform::Ref;

class Access final : public tarnsift::RepositoryAccess {
 public:
  explicit Access(Ref<tarnsift::Repository> repository) : m_repository(std::move(repository)) {}
  Ref<tarnsift::Repository> Repository() override { return m_repository; }
  std::string StoreClassOf(const std::string& id) override {
    const auto object = m_repository->ObjectById(id);
    if (!object) throw platform::KeyError("the repository has no object " + id);
    return object->Type()->StoreClass();
  }

 private:
  Ref<tarnsift::Repository> m_repository;
};

// The base folder's own resources win over the product's.
class Paths final : public tarnsift::ProductPaths {
 public:
  explicit Paths(BaseFolder base) : m_base(std::move(base)) {}
  std::string ResourceFile(const std::string& fileName) override {
    const std::string own = m_base.path() + "/Resources/" + fileName;
    return platform::fileExists(own) ? own : productFolder() + "/" + fileName;
  }
  std::string HelpFile() override { return productFolder() + "/guide/index.md"; }

 private:
  BaseFolder m_base;
};

class Strings final : public tarnsift::ProductStrings {
 public:
  explicit Strings(std::function<void(const std::string&)> about) : m_about(std::move(about)) {}
  std::string Text(const std::string& key) override {
    if (platform::equalsIgnoringCase(key, "Tarnsift.Name")) return kToolName;
    if (platform::equalsIgnoringCase(key, "Product.Name")) return kProductName;
    throw platform::KeyError("the product has no text '" + key + "'");
  }
  std::string Picture(const std::string& key) override { return key; }
  std::string Format(const std::string& text, const std::vector<std::string>& values) override {
    return platform::fillTemplate(text, values);
  }
  void ShowAbout(const std::string& title) override { m_about(title); }
  void ApplyToForm(platform::Form&) override {} // the look is the screen's

 private:
  std::function<void(const std::string&)> m_about;
};

class Captions final : public tarnsift::CaptionText {
 public:
  // XPath literals have no escape; a name with an apostrophe finds nothing in a document that has none.
  std::string EscapeText(const std::string& text) override { return platform::replaceAll(text, "'", "&apos;"); }
  std::string Format(const std::string& text, const std::vector<std::string>& values) override {
    return platform::fillTemplate(text, values);
  }
};

class Probe final : public tarnsift::FileProbe {
 public:
  bool FileExists(const std::string& path, bool anyCase) override {
    return platform::fileExists(anyCase ? platform::nativePath("/", path, platform::CaseRule::ignore)
                                        : platform::nativePath(path));
  }
  bool FolderExists(const std::string& path) override { return platform::folderExists(platform::nativePath(path)); }
  std::pair<std::string, std::string> SplitPath(const std::string& path) override {
    const auto at = path.find_last_of("\\/");
    if (at == std::string::npos) return {"", path};
    return {path.substr(0, at), path.substr(at + 1)};
  }
};

// A list remembers its column; the same column again turns the direction.
class Sorter final : public tarnsift::ListViewSorter {
 public:
  void SortBy(platform::ListView& list, std::optional<std::size_t> column) override {
    const bool turn = column && list.sortColumn() == column && !list.sortDescending();
    list.sortBy(column, turn);
  }
};

class Mathematics final : public tarnsift::MathTools {
 public:
  std::int64_t NonNegative(std::int64_t value) override { return std::max<std::int64_t>(0, value); }
  double Max(double a, double b) override { return std::max(a, b); }
};

// The analyser's own reader, so that line numbers agree.
class LineBox final : public tarnsift::BarelineBox {
 public:
  void LoadFile(const std::string& path) override {
    const std::string native = platform::nativePath(path);
    std::string failure;
    m_lines = cobol::readLines(native, {}, &failure);
    if (!failure.empty()) throw platform::FileError(native, failure);
  }
  std::size_t LineCount() override { return m_lines.size(); }
  std::string Line(std::size_t number) override { return m_lines.at(number - 1); }

 private:
  std::vector<std::string> m_lines;
};

class Projects final : public tarnsift::ProjectFactory {
 public:
  explicit Projects(std::function<std::string()> ask) : m_ask(std::move(ask)) {}
  std::string AskName(Object&) override { return std::string(platform::trimmed(m_ask())); }

 private:
  std::function<std::string()> m_ask;
};

class Factory final : public tarnsift::HostFactory {
 public:
  explicit Factory(WindowParts parts) : m_parts(std::move(parts)) {}
  Ref<tarnsift::KVWorkSpace> createWorkspace() override { return m_parts.workspace(); }
  Ref<tarnsift::KVSource> createSource() override { return m_parts.source(); }
  Ref<tarnsift::Splitter> createSplitter() override { return m_parts.splitter(); }
  Ref<tarnsift::ReportWriter> createReportWriter() override { return m_parts.reportWriter(); }
  Ref<tarnsift::BarelineBox> createBarelineBox() override { return new LineBox; }
  Ref<tarnsift::SizeClassDialog> createSizeClassDialog() override { return m_parts.sizeClassDialog(); }

 private:
  WindowParts m_parts;
};

} // namespace

void registerHostObjects(const BaseFolder& base, const Ref<tarnsift::Repository>& repository, WindowParts parts) {
  using platform::classes::registerObject;
  registerObject("RepositoryAccess", new Access(repository));
  registerObject("ProductPaths", new Paths(base));
  registerObject("ProductStrings", new Strings(parts.showAbout));
  registerObject("CaptionText", new Captions);
  registerObject("FileProbe", new Probe);
  registerObject("ListViewSorter", new Sorter);
  registerObject("MathTools", new Mathematics);
  registerObject("ProjectFactory", new Projects(parts.askProjectName));
  registerObject("HostFactory", new Factory(std::move(parts)));
}

void unregisterHostObjects() {
  for (const char* name :
       {"RepositoryAccess", "ProductPaths", "ProductStrings", "CaptionText", "FileProbe", "ListViewSorter", "MathTools",
        "ProjectFactory", "HostFactory", "ProgramStore", "SettingsStore"})
    platform::classes::unregisterObject(name);
}

} // namespace orvane
