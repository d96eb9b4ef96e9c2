#include "tarnsift/webpage/sitemint_add_on.hpp"

#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/session/strings.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/webpage/page.hpp"

namespace tarnsift {

namespace {

using platform::LoadResString;

constexpr const char* kFrameHead =
    "<html>\r\n<head>\r\n<link href=\"../Decor.css\" rel=\"stylesheet\" type=\"text/css\">"
    "\r\n</head>\r\n<body>\r\n";

template<typename... Arguments>
void callProgress(const Ref<Object>& progress, std::string_view member, const Arguments&... arguments) {
  std::array<Value, sizeof...(Arguments)> values{Value(arguments)...};
  progress->Invoke(member, values);
}

// The globals that hold objects of the host are empty after a run, whatever its end.
class LettingGo {
 public:
  LettingGo() = default;
  ~LettingGo() {
    globals().ProjectObject = {};
    globals().Frontend = {};
    globals().OptionsRoot = {};
  }
  LettingGo(const LettingGo&) = delete;
  LettingGo& operator=(const LettingGo&) = delete;
};

void collectFolders() {
  globals().FolderNames = {};
  for (auto folders = theRepositoryAccess().Repository()->SelectObjects("FOLDER", "", ""); !folders->AtEnd();
       folders->MoveNext()) {
    const std::string name = EscapeColumnName(folders->Current()->Attribute("Name").asText());
    globals().FolderNames.Add(name, name);
  }
}

void openSession(const Value& anOVWS) {
  Globals& session = globals();
  session.Frontend = anOVWS.as<Object>();
  session.OptionsRoot = callFrontend("ProjectOptions")
                            .as<tarnsift::ProjectOptions>()
                            ->Document()
                            .selectSingleNode("//CASE[@ID='Tarnsift']");
  session.BaseFolder = orvaneName(4);
  session.ProjectObject = callFrontend("ProjectObject").as<RepositoryObject>();
  session.ProjectName = orvaneName(7);
  session.StatusColumn = statusColumnOf(session.ProjectName);
  session.ClassificationColumn = classificationColumnOf(session.ProjectName);
  collectFolders();
}

template<typename Interface>
Ref<Interface> given(const Value& value, const char* what) {
  Ref<Interface> object = value.as<Interface>();
  if (!object) throw platform::Error(std::string("the page add-on was called without its ") + what);
  return object;
}

} // namespace

Value SitemintAddOn::Run(const Value& anOVWS, const Value& anOV3, const Value& SitemintOptionsRoot) {
  registerStrings();
  const LettingGo atTheEnd;
  openSession(anOVWS);
  CreateReport(anOV3, SitemintOptionsRoot, anOV3);
  return 0;
}

void SitemintAddOn::CreateReport(const Value& OV3, const Value& SitemintOptionsRoot, const Value& uProgress) {
  const auto generator = given<SitemintGenerator>(OV3, "page generator");
  const auto element = given<OptionElement>(SitemintOptionsRoot, "options");
  const auto progress = given<Object>(uProgress, "progress");
  const std::string folder =
      platform::nativePath(generator->OutputFolder() + "\\" + element->Node().getAttribute("NAME").asText());
  platform::ignoring([&] { platform::createFolder(folder); });
  PageFile page(platform::nativePath(folder + "\\Main.htm"));
  const std::vector<std::string> titles = {LoadResString(520), LoadResString(528), LoadResString(527),
                                           LoadResString(529)};
  const std::vector<std::string> names = {"Metrics Report", "PossibleDatanames", "AffectedDatanames", "CleanDatanames"};
  page.line(kFrameHead);
  page.line(generator->PageHeading(element->Node().getAttribute("CAPTION").asText()));
  callProgress(progress, "StartProgress", LoadResString(538), static_cast<int>(titles.size()));
  for (std::size_t section = 0; section < titles.size(); ++section) {
    callProgress(progress, "StartStep", titles[section]);
    page.line(NavigationLine(titles[section], titles, names));
    if (section == 0)
      writeMetrics(page);
    else
      writeList(page, static_cast<int>(section) - 1, *generator);
    callProgress(progress, "FinishStep", 1);
  }
  page.line("<br>");
  page.line(NavigationLine("", titles, names));
  page.finish();
  callProgress(progress, "FinishProgress");
}

std::string SitemintAddOn::NavigationLine(const std::string& current, const std::vector<std::string>& titles,
                                          const std::vector<std::string>& names) {
  std::string line = "<p align=\"center\"><small>";
  for (std::size_t i = 0; i < titles.size(); ++i) {
    if (i > 0) line += " &#149 ";
    if (current == titles[i])
      line += "</small><a id=\"" + names[i] + "\"><big><b>" + current + "</b></big><small>";
    else
      line += "<a href=\"#" + names[i] + "\"> " + titles[i] + "</a>";
  }
  return line + "</small></p>";
}

Value SitemintAddOn::Invoke(std::string_view member, std::span<Value> arguments) {
  const auto at = [&](std::size_t i) { return i < arguments.size() ? arguments[i] : Value(); };
  if (platform::equalsIgnoringCase(member, "Run")) return Run(at(0), at(1), at(2));
  if (!platform::equalsIgnoringCase(member, "CreateReport")) return Object::Invoke(member, arguments);
  CreateReport(at(0), at(1), at(2));
  return {};
}

} // namespace tarnsift
