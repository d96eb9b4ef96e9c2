#include "orvane/site/site.hpp"

#include <filesystem>

#include <fmt/format.h>

#include "orvane/product.hpp"
#include "orvane/site/html.hpp"
#include "orvane/site/index_page.hpp"
#include "orvane/site/source_page.hpp"
#include "orvane/sources.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

namespace fs = std::filesystem;

constexpr const char* kAddOnFolder = "Tarnsift";
constexpr const char* kAddOnPage = "Tarnsift/Main.htm";
constexpr const char* kAddOnCaption = "Metrics and datanames";
constexpr std::size_t kHeadSize = 1024;

std::string wholeFolder(const std::string& folder) {
  std::error_code failed;
  const std::string whole = fs::absolute(folder, failed).lexically_normal().string();
  if (failed) throw platform::FileError(folder, failed.message());
  if (whole.find('\\') != std::string::npos)
    throw platform::FileError(whole, "pages cannot go into a folder with a backslash in its name");
  return whole.size() > 1 && whole.ends_with('/') ? whole.substr(0, whole.size() - 1) : whole;
}

// Pages of somebody else are not written over.
void checkFree(const std::string& folder) {
  const std::string index = folder + "/index.html";
  if (!platform::fileExists(index)) return;
  const std::string text = platform::readText(index).substr(0, kHeadSize);
  if (text.find(kGeneratorMark) == std::string::npos)
    throw platform::FileError(index, "was not made by this command; choose another folder");
}

/// One making of the pages.
class Site {
 public:
  Site(Host& host, std::string folder, const SiteProgress& progress)
      : m_host(host), m_folder(std::move(folder)), m_progress(progress), m_files(host.base()),
        m_project(host.project()->Attribute("Name").asText()),
        m_options(readingOptions(host.base(), host.options().Document())) {}

  SiteResult write() {
    gather();
    platform::createFolders(m_folder);
    checkFree(m_folder);
    platform::createFolders(m_folder + "/Sources");
    try {
      for (const char* file : {"Decor.css", "Decor.js"})
        copyResource(file);
      writeSources();
      runAddOn();
      writeIndexPage(m_folder, m_project, m_programs, m_files, kAddOnPage);
    } catch (const platform::Error& error) {
      throw platform::Error(fmt::format(
          "{}; the pages in {} are not complete: {} of {} source pages are written, {} missing or old", error.what(),
          m_folder, m_written, m_files.size(), m_addOnDone ? "index.html is" : "Main.htm and index.html are"));
    }
    return result();
  }

 private:
  void tell(const std::string& text, std::size_t done, std::size_t total) const {
    if (m_progress) m_progress(text, done, total);
  }

  // The first walk: which files there are, and where the names of copybooks lead to.
  void gather() {
    const auto all = programsOf(m_host.base(), m_host.repository(), m_project, "");
    for (const ProgramFacts& facts : all) {
      SiteProgram program;
      program.facts = facts;
      program.type = m_host.repository().ObjectById(facts.id)->Type()->Name();
      program.file = m_files.take(facts.source);
      program.leftOut = !facts.verified;
      const int number = static_cast<int>(m_programs.size());
      if (!program.leftOut) look(program, number);
      SiteFile& file = m_files.at(program.file);
      if (file.program < 0) file.program = number;
      m_programs.push_back(std::move(program));
      tell("reading " + facts.name, m_programs.size(), all.size());
    }
    m_files.nameAll();
  }

  void look(SiteProgram& program, int number) {
    try {
      const StoreData data = readStore(program.facts.analysisFile);
      program.datanames = data.constructs.size();
      for (const auto& construct : data.constructs)
        program.usages += construct.usages;
      m_files.takeProgram(number, data);
    } catch (const platform::Error& error) {
      leaveOut(program, error);
    }
  }

  static void leaveOut(SiteProgram& program, const platform::Error& error) {
    program.leftOut = true;
    program.facts.reason = error.what();
  }

  void copyResource(const std::string& name) const {
    platform::WholeFile out(m_folder + "/" + name);
    out.write(platform::readText(productFolder() + "/" + name));
    out.finish();
  }

  void writeSources() {
    for (int i = 0; i < static_cast<int>(m_files.size()); ++i) {
      const SiteFile& file = m_files.at(i);
      tell("writing " + file.page, m_written, m_files.size());
      if (file.program >= 0)
        writeProgram(m_programs[static_cast<std::size_t>(file.program)], file);
      else
        writeCopybook(file);
      ++m_written;
    }
  }

  void writeProgram(SiteProgram& program, const SiteFile& file) const {
    SourcePage page{file, m_files, m_project, "", ", program " + htmlText(program.facts.name), {}};
    if (!program.leftOut) fill(page, program);
    if (program.leftOut)
      page.remark =
          fmt::format("<p class=\"warning\">This program is left out: {}.</p>\n", htmlText(program.facts.reason));
    writeSourcePage(m_folder, page, m_options);
  }

  // Opening a database costs more than all else here, so the counts of the index are taken on the way.
  void fill(SourcePage& page, SiteProgram& program) const {
    try {
      const StoreData data = readStore(program.facts.analysisFile);
      const Decisions decisions = decisionsOf(program.facts, m_project);
      for (const auto& [kvid, decision] : decisions)
        if (inList(decision)) ++program.lists[static_cast<std::size_t>(*decision.status)];
      page.links = m_files.linksOf(data);
      markLists(page.links, decisions, data);
      page.facts += listFacts(program) + copybookFacts(data);
    } catch (const platform::Error& error) {
      leaveOut(program, error);
    }
  }

  static bool inList(const Decision& decision) {
    return decision.status && *decision.status >= 0 && *decision.status < 3;
  }

  void writeCopybook(const SiteFile& file) const {
    SourcePage page{file, m_files, m_project, "", ", copied by", {}};
    for (const int number : file.copiedBy) {
      const SiteProgram& program = m_programs[static_cast<std::size_t>(number)];
      page.facts += " " + pageLink(m_files.at(program.file), program.facts.name);
    }
    for (const auto& [place, link] : file.links)
      if (link.target.file >= 0) page.links.push_back(link);
    writeSourcePage(m_folder, page, m_options);
  }

  static std::string pageLink(const SiteFile& file, const std::string& text) {
    return fmt::format("<a href=\"{}\">{}</a>", file.page.substr(file.page.rfind('/') + 1), htmlText(text));
  }

  std::string listFacts(const SiteProgram& program) const {
    static constexpr const char* kNames[] = {"Working", "Affected", "Clean"};
    static constexpr const char* kClasses[] = {"working", "affected", "clean"};
    std::string text;
    for (std::size_t list = 0; list < 3; ++list)
      if (program.lists[list] > 0)
        text += fmt::format(", <a class=\"{}\" href=\"../{}#{}:{}\">{} {}</a>", kClasses[list], kAddOnPage,
                            urlText(program.facts.name), list, kNames[list], program.lists[list]);
    return text;
  }

  std::string copybookFacts(const StoreData& data) const {
    std::string text;
    const auto indexes = m_files.indexesOf(data);
    for (std::size_t i = 1; i < indexes.size(); ++i) {
      const SiteFile& file = m_files.at(indexes[i]);
      text += " " + pageLink(file, file.path.substr(file.path.find_last_of("\\/") + 1));
    }
    return text.empty() ? text : ", copies" + text;
  }

  // Names of the lists where they are declared and used; a declaration leads nowhere. A replacing operand may be a part
  // of many names: it is tinted when all of them that stand in a list stand in the same one.
  static void markLists(std::vector<SiteLink>& links, const Decisions& decisions, const StoreData& data) {
    using Marks = std::map<std::pair<std::uint32_t, std::uint32_t>, SiteLink>;
    Marks marks, parts;
    const auto mark = [&](const PlaceRecord& at, int list) {
      if (at.file == 0 && at.line > 0) marks[{at.line, at.column}] = {at.line, at.column, at.length, {}, list};
    };
    const auto markPart = [&](const PlaceRecord& at, int list) {
      if (at.file != 0) return;
      const auto [part, fresh] =
          parts.try_emplace({at.line, at.column}, SiteLink{at.line, at.column, at.length, {}, list});
      if (!fresh && part->second.list != list) part->second.list = -1;
    };
    for (const auto& [kvid, decision] : decisions) {
      const int index = data.find(kvid);
      if (index < 0 || !inList(decision)) continue;
      const ConstructRecord& construct = data.constructs[static_cast<std::size_t>(index)];
      mark(construct.declared, *decision.status);
      for (std::uint32_t i = 0; i < construct.instances; ++i) {
        const InstanceRecord& instance = data.instances[construct.firstInstance + i];
        if (i < construct.usages)
          mark(instance.place, *decision.status);
        else if (instance.access != static_cast<std::uint16_t>(cobol::Access::declare))
          continue;
        for (const PlaceRecord& place : data.further(instance))
          markPart(place, *decision.status);
      }
    }
    std::erase_if(parts, [](const auto& part) { return part.second.list < 0; });
    marks.merge(parts);
    for (SiteLink& link : links)
      if (const auto found = marks.find({link.line, link.column}); found != marks.end()) {
        link.list = found->second.list;
        marks.erase(found);
      }
    for (const auto& [place, link] : marks)
      links.push_back(link);
  }

  // As any page generator runs it: by the name of its class, through the component's entry points.
  void runAddOn() {
    const platform::Ref<platform::Object> addOn = createFromComponent("Tarnsift.SitemintAddOn");
    platform::Document document;
    platform::Node element = document.createElement("PAGE");
    element.setAttribute("NAME", kAddOnFolder);
    element.setAttribute("CAPTION", kAddOnCaption);
    const platform::Ref<PageGenerator> generator(new PageGenerator(m_folder, m_project, m_files, m_progress));
    platform::Value arguments[] = {m_host.frontend(), generator,
                                   platform::makeObject<tarnsift::OptionElement>(element)};
    addOn->Invoke("Run", arguments);
    m_addOnDone = true;
  }

  SiteResult result() const {
    SiteResult result;
    result.index = m_folder + "/index.html";
    result.programs = m_programs.size();
    result.sourcePages = m_written;
    for (const SiteProgram& program : m_programs)
      if (program.leftOut) result.leftOut.push_back({program.facts.name, program.facts.reason});
    for (int i = 0; i < static_cast<int>(m_files.size()); ++i)
      if (m_files.at(i).changed) result.changed.push_back(m_files.at(i).path);
    std::sort(result.changed.begin(), result.changed.end());
    return result;
  }

  Host& m_host;
  std::string m_folder;
  const SiteProgress& m_progress;
  SiteFiles m_files;
  std::string m_project;
  cobol::Options m_options;
  std::vector<SiteProgram> m_programs;
  std::size_t m_written = 0;
  bool m_addOnDone = false;
};

} // namespace

SiteResult writeSite(Host& host, const std::string& folder, const SiteProgress& progress) {
  const std::string whole = wholeFolder(folder);
  if (platform::fileExists(whole)) throw platform::FileError(whole, "is a file; the pages need a folder");
  host.hold();
  return Site(host, whole, progress).write();
}

std::string defaultSiteFolder(const BaseFolder& base, const std::string& project) {
  return base.outputFolder() + "/" + project + "-pages";
}

} // namespace orvane
