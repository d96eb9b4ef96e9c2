#pragma once

#include <functional>
#include <string>

#include "orvane/site/site_files.hpp"
#include "tarnsift/session/sitemint_generator.hpp"

namespace orvane {

/// Hears how far the pages are: what is done now, units done and in all.
using SiteProgress = std::function<void(const std::string& text, std::size_t done, std::size_t total)>;

/// The page generator as add-ons see it.
class PageGenerator : public tarnsift::SitemintGenerator {
 public:
  PageGenerator(std::string folder, std::string project, const SiteFiles& files, SiteProgress progress)
      : m_folder(std::move(folder)), m_project(std::move(project)), m_files(files), m_progress(std::move(progress)) {}

  std::string OutputFolder() override { return m_folder; }
  std::string PageHeading(const std::string& caption) override;
  /// The index for a file that has no page.
  std::string FilePageLink(const std::string& file) override;
  platform::Value Invoke(std::string_view member, std::span<platform::Value> arguments) override;

 private:
  void tell() const;
  std::string m_folder;
  std::string m_project;
  const SiteFiles& m_files;
  SiteProgress m_progress;
  std::string m_action, m_step;
  std::size_t m_done = 0, m_total = 0;
};

} // namespace orvane
