// EXEC CICS: options with arguments, their direction, and the files, maps and programs they reach
#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/characters.hpp"
#include "cobol/statement_reader.hpp"
#include "cobol/statements.hpp"

namespace cobol {

namespace {

struct Option {
  std::string_view name;
  std::uint32_t begin = 0; ///< first token of the argument; 0: the option has none
  std::uint32_t end = 0;   ///< its closing parenthesis
  Operand operand{};
};

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

/// One command split into its options, the command's own words first.
class CicsCommand {
 public:
  explicit CicsCommand(StatementReader& r) {
    const std::uint32_t last = r.end();
    options.reserve(16); // most commands have fewer
    while (!r.atEnd()) {
      if (r.token().kind != TokenKind::word) {
        r.advance();
        continue;
      }
      Option option{r.text(r.token())};
      r.advance();
      if (r.acceptSymbol('(')) {
        option.begin = r.index();
        for (int depth = 1; r.index() < last; r.advance()) {
          if (r.atSymbol('(')) ++depth;
          if (r.atSymbol(')') && --depth == 0) break;
        }
        option.end = r.index();
      }
      options.push_back(option);
    }
  }

  Option* find(std::string_view name) {
    for (Option& option : options) {
      if (option.name == name) return &option;
    }
    return nullptr;
  }
  Option* findArgument(std::initializer_list<std::string_view> names) {
    for (Option& option : options) {
      if (option.begin != 0 && isOneOf(option.name, names)) return &option;
    }
    return nullptr;
  }
  std::string_view name() const { return options.empty() ? std::string_view() : options.front().name; }

  std::vector<Option> options;
};

Access accessOf(CicsCommand& command, const Option& option) {
  const std::string_view verb = command.name();
  if (isOneOf(option.name, {"INTO", "SET", "RESP", "RESP2", "NUMITEMS"})) return Access::write;
  if (isOneOf(verb, {"ASSIGN", "INQUIRE", "ADDRESS", "FORMATTIME"})) {
    return isOneOf(option.name, {"ABSTIME", "DATESEP", "TIMESEP"}) ? Access::read : Access::write;
  }
  if (verb == "ASKTIME" && option.name == "ABSTIME") return Access::write;
  const bool starts = isOneOf(verb, {"STARTBROWSE", "STARTBR"}) && option.name == "BROWSETOKEN";
  if (starts || (option.name == "TOKEN" && verb.starts_with("START"))) return Access::write;
  if (isOneOf(option.name, {"LENGTH", "FLENGTH", "TOLENGTH", "TOFLENGTH"})) {
    const bool receives = command.find("INTO") != nullptr || command.find("SET") != nullptr;
    return receives ? Access::both : Access::read;
  }
  if (option.name == "RIDFLD") {
    const bool moves =
        isOneOf(verb, {"READNEXT", "READPREV"}) || (verb == "STARTBR" && command.find("GENERIC") != nullptr);
    const bool returnsPlace = verb == "WRITE" && command.find("KEYLENGTH") == nullptr &&
                              (command.find("RBA") != nullptr || command.find("XRBA") != nullptr);
    return moves || returnsPlace ? Access::both : Access::read;
  }
  if (option.name == "COMMAREA" && verb == "LINK") return Access::both;
  if (option.name == "ITEM" && verb == "WRITEQ" && command.find("REWRITE") == nullptr) return Access::both;
  return Access::read;
}

void readArgument(StatementReader& r, Option& option, Access access, Demand demand) {
  const std::uint32_t end = r.end();
  r.open(option.begin, option.end);
  while (!r.atEnd()) {
    const std::uint32_t before = r.index();
    if (r.atOperand()) {
      const Operand operand = r.read(access, demand);
      if (!option.operand) option.operand = operand;
      access = Access::read; // behind an operator
    }
    if (r.index() == before) r.advance();
  }
  r.open(option.end, end);
}

std::string trimmedUpper(std::string_view text) {
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  return upper(text);
}

/// The text that a resource's option names: a literal, or the initial value of the item that holds the name. Empty when
/// only running tells.
std::string resourceOf(StatementReader& r, const Option& option) {
  const Token& first = r.stream().tokens[option.begin];
  if (first.kind == TokenKind::literal) return trimmedUpper(r.text(first));
  if (option.operand.count != 1) return {};
  const std::string_view value = r.construct(r.candidate(option.operand, 0)).value;
  const bool isText = value.size() > 2 && (value.front() == '\'' || value.front() == '"');
  return isText ? trimmedUpper(value.substr(1, value.find(value.front(), 1) - 1)) : std::string();
}

/// Programs often call the item alike that is to hold a resource's name, and do not mean the same resource: a slot
/// `?(RECORD.ITEM)` belongs to its program only.
std::string unknownResource(StatementReader& r, std::uint32_t item) {
  std::string path(r.construct(item).name);
  for (int up = r.construct(item).parent; up >= 0; up = r.construct(static_cast<std::uint32_t>(up)).parent) {
    const Construct& above = r.construct(static_cast<std::uint32_t>(up));
    if (above.kind != Kind::filler) path = std::string(above.name) + '.' + path;
  }
  return "?(" + path + ')';
}

Operand slotOf(StatementReader& r, const Option& option) {
  std::string name = resourceOf(r, option);
  if (name.empty() && option.operand.count == 1) name = unknownResource(r, r.candidate(option.operand, 0));
  if (name.empty()) return {};
  return r.operandOf(r.resolver().fileSlot(name, option.begin), option.begin);
}

/// SEND and RECEIVE of a map without FROM or INTO use the groups that the map's name ends with O or I.
Operand mapGroup(StatementReader& r, const Option& map, char suffix) {
  const std::string resource = resourceOf(r, map);
  const NameId name = resource.empty() ? 0 : r.stream().names.find(resource + suffix);
  if (name == 0) return {};
  std::vector<std::uint32_t> found;
  r.resolver().find(name, {}, found);
  return found.empty() ? Operand{} : r.operandOf(found.front(), map.begin);
}

void relateResources(StatementReader& r, CicsCommand& command) {
  const std::string_view verb = command.name();
  Option* resource = command.findArgument({"FILE", "DATASET", "QUEUE", "QNAME", "MAP"});
  Option* into = command.findArgument({"INTO"});
  Option* from = command.findArgument({"FROM"});
  if (resource != nullptr) {
    const bool isMap = resource->name == "MAP";
    Operand target = into != nullptr ? into->operand : Operand{};
    Operand source = from != nullptr ? from->operand : Operand{};
    const bool withSet = command.find("SET") != nullptr;
    if (isMap && verb == "RECEIVE" && into == nullptr && !withSet) target = mapGroup(r, *resource, 'I');
    if (isMap && verb == "SEND" && from == nullptr && command.find("MAPONLY") == nullptr) {
      source = mapGroup(r, *resource, 'O');
    }
    const Operand slot = target || source ? slotOf(r, *resource) : Operand{};
    if (target) r.relate(RelationKind::Read, slot, target);
    if (source && isOneOf(verb, {"WRITE", "REWRITE", "SEND", "WRITEQ"})) r.relate(RelationKind::Write, source, slot);
  }
  if (Option* key = command.findArgument({"RIDFLD"})) {
    if (into != nullptr) r.relate(RelationKind::Key, key->operand, into->operand);
    if (from != nullptr) r.relate(RelationKind::Key, key->operand, from->operand);
  }
}

void relateProgram(StatementReader& r, CicsCommand& command) {
  if (!isOneOf(command.name(), {"LINK", "XCTL"})) return;
  Option* program = command.findArgument({"PROGRAM"});
  if (program == nullptr) return;
  const bool isLiteral = r.stream().tokens[program->begin].kind == TokenKind::literal;
  std::string name = resourceOf(r, *program);
  if (name.empty() && program->operand.count == 1) name = r.construct(r.candidate(program->operand, 0)).name;
  r.addPlace("CALL", name, program->begin);
  Option* area = command.findArgument({"COMMAREA"});
  if (area == nullptr || !area->operand.isItem()) return;
  const std::uint32_t slot = r.resolver().callSlot(isLiteral ? name : "?", -1, area->begin);
  r.relate(RelationKind::Argument, area->operand, r.operandOf(slot, area->begin));
}

} // namespace

void readExecCics(StatementReader& r) {
  const std::uint32_t end = r.end();
  CicsCommand command(r);
  const bool handlesLabels = command.name() == "HANDLE" || command.name() == "IGNORE";
  for (Option& option : command.options) {
    if (option.begin == 0) continue;
    if (handlesLabels && option.name != "PROGRAM") continue;
    readArgument(r, option, accessOf(command, option), Demand::dataName);
  }
  relateResources(r, command);
  relateProgram(r, command);
  r.open(end, end);
}

void readExecDli(StatementReader& r) {
  const std::uint32_t end = r.end();
  CicsCommand command(r);
  for (Option& option : command.options) {
    if (option.begin == 0) continue;
    const bool writes = isOneOf(option.name, {"INTO", "KEYFEEDBACK"});
    // Segments and their fields have names of their own.
    const bool namesOnly = isOneOf(option.name, {"SEGMENT", "WHERE", "PCB", "VARIABLE", "PSB"});
    readArgument(r, option, writes ? Access::write : Access::read, namesOnly ? Demand::declared : Demand::dataName);
  }
  r.open(end, end);
}

} // namespace cobol
