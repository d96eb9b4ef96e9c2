#include <CLI/CLI.hpp>

#include <cstdio>
#include <unistd.h>

#include "desktop/application.hpp"
#include "platform/runtime/string_table.hpp"

namespace {

// The toolkit ends the process when it reaches no display; one line says why, without a core file.
void tellMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  static QString reason;
  if (type == QtFatalMsg) {
    const QString why = reason.isEmpty() ? message.section(QLatin1Char('\n'), 0, 0) : reason;
    std::fprintf(stderr, "tarnsift: the window cannot be shown: %s\n", qPrintable(why.trimmed()));
    ::_exit(1);
  }
  if (type != QtWarningMsg && type != QtCriticalMsg) return;
  const bool ofDisplay = context.category && QByteArrayView(context.category).startsWith("qt.qpa");
  if (ofDisplay && reason.isEmpty())
    reason = message;
  else if (!ofDisplay)
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

// The window program; `tarnsift open` starts it.
int main(int argc, char** argv) {
  CLI::App parser("The window of Tarnsift; 'tarnsift open' starts it.", "tarnsift-window");
  desktop::Opening opening;
  std::string theme;
  std::string language;
  parser.add_option("-C,--base", opening.base, "Base folder");
  parser.add_option("--project", opening.project, "Project");
  parser.add_flag("--start", opening.start, "The start page");
  parser.add_option("--theme", theme, "light or dark")->check(CLI::IsMember({"light", "dark"}));
  parser.add_option("--language", language, "en, ja or ko")->check(CLI::IsMember({"en", "ja", "ko"}));
  parser.allow_extras(); // Qt's own options
  CLI11_PARSE(parser, argc, argv);
  if (!language.empty())
    platform::setLanguage(language == "ja"   ? platform::Language::Japanese
                          : language == "ko" ? platform::Language::Korean
                                             : platform::Language::English);
  qInstallMessageHandler(tellMessage);
  desktop::Application application(argc, argv, theme);
  return desktop::openWindow(opening);
}
