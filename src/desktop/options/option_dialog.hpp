#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QDialog>

#include "platform/xml/xml.hpp"

class QBoxLayout;
class QListWidget;
class QStackedWidget;

namespace desktop {

/// A view of any document of the option language: pages, drop-downs, groups, switches with the options that depend on
/// them, texts, numbers, lists of texts and lists with ticks. Elements that it has never seen are shown by their
/// caption and value, or left alone. Only what the analyst changed is written, when the dialog is accepted.
class OptionDialog : public QDialog {
 public:
  /// Shows the element of that XPath; the root of a component with the other components beside it. Throws
  /// platform::Error when the document has no such element.
  OptionDialog(platform::Document document, const std::string& path, QWidget* parent = nullptr);
  void accept() override;

 private:
  friend class OptionPage;
  void addPages(const platform::Node& branch);
  void addPage(const QString& caption, const std::vector<platform::Node>& options);
  platform::Document m_document;
  QListWidget* m_list;
  QStackedWidget* m_pages;
  std::vector<std::function<void()>> m_changes; ///< one for each editor: writes what was changed there
};

} // namespace desktop
