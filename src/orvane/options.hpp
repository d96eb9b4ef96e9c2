#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cobol/options.hpp"
#include "platform/xml/xml.hpp"
#include "tarnsift/session/host.hpp"

namespace orvane {

/// The document that a new project starts with: the template file with the relation kinds of the analyser and the
/// columns of its constructs filled in.
platform::Document optionTemplate();

/// Brings a document to what a session reads: every node of the template that it lacks is added, values that stand
/// where older versions kept them move to their place, and what the template does not know stays.
void mergeOntoTemplate(platform::Document& document);

/// The file of a project's options, native.
std::string optionFile(const std::string& projectFolder);

/// A project's options, or the product's. `showDialog` is the dialog of the screen; without one ShowDialog is an error.
class OptionDocument : public tarnsift::ProjectOptions {
 public:
  using Dialog = std::function<bool(platform::Document&, const std::string& path)>;

  /// Reads the file and merges it onto the template; without a file the template. A damaged file is an XmlError that
  /// names it.
  explicit OptionDocument(std::string file);

  platform::Document Document() override { return m_document; }
  void ShowDialog(const std::string& path, platform::Form& owner, const std::string& title, int size1, int size2,
                  bool& result) override;
  void Save() override;
  /// What Save writes.
  std::string savedText();
  /// Gives an option another value until the document goes; Save writes the value it had before.
  void overrideForSession(const std::string& path, const std::string& value);
  Dialog dialog;

 private:
  struct Override {
    platform::Node node;
    std::string kept;
    std::string value;
  };
  std::string m_file;
  platform::Document m_document;
  std::vector<Override> m_overrides;
};

/// The analyser's options in a project's document.
cobol::Options analyserOptions(const platform::Document& document);
/// Sets one of them by name. Throws platform::Error for an unknown name or value, listing what is known.
void setAnalyserOption(platform::Document& document, const std::string& name, const std::string& value);

/// A list of texts of the analysis branch: "CopybookFolders", "SourcePaths".
std::vector<std::string> analysisStrings(const platform::Document& document, const std::string& name);
void setAnalysisStrings(platform::Document& document, const std::string& name, const std::vector<std::string>& texts);

} // namespace orvane
