#include <iostream>

#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "cobol/diagnostic.hpp"
#include "platform/runtime/formats.hpp"

namespace app {

namespace {

const char* severityWord(std::uint32_t severity) {
  switch (static_cast<cobol::Severity>(severity)) {
  case cobol::Severity::error:
    return "error";
  case cobol::Severity::warning:
    return "warning";
  default:
    return "information";
  }
}

std::string codeOf(const orvane::DiagnosticRecord& remark) {
  return std::string(cobol::nameOf(static_cast<cobol::Code>(remark.code)));
}

// A program without statements is understood whole.
double share(const orvane::StoreData& data) {
  return data.statements == 0 ? 1 : static_cast<double>(data.statementsUnderstood) / data.statements;
}

Json jsonOf(const std::string& program, const orvane::StoreData& data) {
  Json remarks = Json::array();
  for (const auto& remark : data.diagnostics) {
    Json object = {{"code", codeOf(remark)}, {"severity", severityWord(remark.severity)}};
    putPlace(object, data, remark.place);
    object["text"] = std::string(data.text(remark.text));
    remarks.push_back(std::move(object));
  }
  return {{"program", program},
          {"statements", data.statements},
          {"understood", data.statementsUnderstood},
          {"diagnostics", std::move(remarks)}};
}

} // namespace

void addDiagnostics(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand(
      "diagnostics", "Lists what the analyser remarked, and the share of the statements that it understood.");
  auto program = std::make_shared<std::string>();
  auto json = std::make_shared<bool>(false);
  command->add_option("--program", *program, "Only programs whose name matches")->type_name("GLOB");
  command->add_flag("--json", *json, "One JSON object a program and line");
  command->footer("Of one code at most 1000 remarks are kept for a program.\n"
                  "Examples:\n  tarnsift diagnostics --program CUSTUPD\n  tarnsift diagnostics --json");
  command->callback([=, &context] {
    const Reading reading(context);
    TextTable remarks({{"Program"}, {"Severity"}, {"Code"}, {"At"}, {"Text"}});
    TextTable shares({{"Program"}, {"Statements", true}, {"Understood", true}, {"Share", true}, {"Diagnostics", true}});
    reading.eachProgram(*program, [&](const orvane::ProgramFacts& facts, const orvane::StoreData& data) {
      if (*json) {
        printJson(jsonOf(facts.name, data));
        return;
      }
      for (const auto& remark : data.diagnostics)
        remarks.row({facts.name, severityWord(remark.severity), codeOf(remark), shortPlace(data, remark.place),
                     std::string(data.text(remark.text))});
      shares.row({facts.name, std::to_string(data.statements), std::to_string(data.statementsUnderstood),
                  platform::formatPercent(static_cast<float>(share(data))), std::to_string(data.diagnostics.size())});
    });
    if (*json) return;
    if (!remarks.empty()) {
      remarks.print(std::cout);
      std::cout << '\n';
    }
    shares.print(std::cout);
  });
}

} // namespace app
