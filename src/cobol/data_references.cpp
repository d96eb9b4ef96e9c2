#include "cobol/data_references.hpp"

#include <cstddef>

#include "cobol/statement_reader.hpp"

namespace cobol {

namespace {

using Role = DataReference::Role;

/// The word that stands for the clause where the instance's statement is asked for.
Keyword clauseOf(Role role) {
  switch (role) {
  case Role::assign:
    return Keyword::Assign;
  case Role::recordKey:
  case Role::tableKey:
    return Keyword::Key;
  case Role::alternateKey:
    return Keyword::Alternate;
  case Role::relativeKey:
    return Keyword::Relative;
  case Role::fileStatus:
    return Keyword::Status;
  case Role::password:
    return Keyword::Reserve;
  case Role::recordVarying:
    return Keyword::Varying;
  case Role::linage:
    return Keyword::Linage;
  case Role::dependingOn:
    return Keyword::Depending;
  case Role::reportSource:
    return Keyword::Source;
  case Role::reportSum:
    return Keyword::Sum;
  case Role::reportControl:
    return Keyword::Control;
  case Role::reportCondition:
    return Keyword::When;
  case Role::screenFrom:
    return Keyword::From;
  case Role::screenTo:
    return Keyword::To;
  case Role::screenUsing:
    return Keyword::Using;
  case Role::screenAttribute:
    return Keyword::Screen;
  case Role::crtStatus:
    return Keyword::Crt;
  case Role::cursor:
    return Keyword::Cursor;
  case Role::pictureCount:
    return Keyword::Picture;
  case Role::occursCount:
    return Keyword::Occurs;
  case Role::fileValue:
  case Role::constantValue:
  case Role::valueConstant:
    return Keyword::Value;
  case Role::redefines:
    return Keyword::Redefines;
  case Role::renamesFirst:
  case Role::renamesLast:
    return Keyword::Renames;
  }
  return Keyword::None;
}

Access accessOf(Role role) {
  switch (role) {
  case Role::fileStatus:
  case Role::screenTo:
  case Role::crtStatus:
    return Access::write;
  case Role::relativeKey:
  case Role::recordVarying:
  case Role::screenUsing:
  case Role::cursor:
    return Access::both;
  default:
    return Access::read;
  }
}

/// `VALUE LENGTH OF x` and the like take nothing from the value of x.
bool isMeasured(const StatementReader& reader, std::uint32_t token) {
  const auto wordAt = [&](std::uint32_t back) {
    return back > token ? Keyword::None : keywordOf(reader.stream().tokens[token - back].text);
  };
  const Keyword word = wordAt(1) == Keyword::Of ? wordAt(2) : wordAt(1);
  return word == Keyword::Length || word == Keyword::ByteLength || word == Keyword::Address;
}

/// Words that may stand for something else than data, and what only a constant can be.
Demand demandOf(Role role) {
  switch (role) {
  case Role::assign:
  case Role::password:
  case Role::reportControl:
  case Role::screenAttribute:
  case Role::fileValue:
  case Role::constantValue:
  case Role::pictureCount:
  case Role::occursCount:
  case Role::valueConstant:
    return Demand::declared;
  default:
    return Demand::dataName;
  }
}

} // namespace

void noteDeclarations(StatementReader& reader) {
  const auto& constructs = reader.analysis().constructs;
  for (std::uint32_t i = 0; i < constructs.size(); ++i) {
    const bool hasName = constructs[i].kind != Kind::filler && constructs[i].token != 0 &&
                         (constructs[i].flags & ConstructFlag::implicit_) == 0;
    if (hasName) reader.touch(i, constructs[i].token, Access::declare);
  }
}

void readDataReference(StatementReader& reader, const DataReference& reference) {
  const auto tokens = static_cast<std::uint32_t>(reader.stream().tokens.size());
  if (reference.token >= tokens) return;
  reader.beginStatement(idOf(clauseOf(reference.role)));
  if (reference.role == Role::redefines || reference.role == Role::renamesFirst ||
      reference.role == Role::renamesLast) {
    if (reference.target >= 0)
      reader.touch(static_cast<std::uint32_t>(reference.target), reference.token, Access::named);
    return;
  }
  if (reference.name != 0) {
    reader.touchPlaced(reference.name, reference.token, reference.at);
    return;
  }
  reader.open(reference.token, tokens);
  const bool inTable = reference.role == Role::tableKey;
  reader.prefer(inTable ? reference.construct : -1, reference.file);
  const Access access = isMeasured(reader, reference.token) ? Access::named : accessOf(reference.role);
  const Operand item = reader.read(access, demandOf(reference.role));
  reader.prefer(-1, -1);
  if (!item.isItem()) return;

  const Operand records = reader.recordsOf(reference.file, reference.token);
  const Operand entry = reference.construct < 0
                            ? Operand{}
                            : reader.operandOf(static_cast<std::uint32_t>(reference.construct), reference.token);
  switch (reference.role) {
  case Role::recordKey:
  case Role::alternateKey:
  case Role::relativeKey:
    reader.relate(RelationKind::Key, item, records);
    break;
  case Role::tableKey:
    reader.relate(RelationKind::Key, item, entry);
    break;
  case Role::fileStatus:
    reader.relate(RelationKind::FileStatus, item, records);
    break;
  case Role::recordVarying:
    reader.relate(RelationKind::Dependence, records, item);
    break;
  case Role::dependingOn:
    reader.relate(RelationKind::Dependence, entry, item);
    break;
  case Role::reportSource:
  case Role::screenFrom:
    reader.relateMove(item, entry);
    break;
  case Role::reportSum:
    reader.relate(RelationKind::Addition, item, entry);
    break;
  case Role::screenTo:
    reader.relateMove(entry, item);
    break;
  case Role::screenUsing:
    reader.relateMove(item, entry);
    reader.relateMove(entry, item);
    break;
  default:
    break;
  }
}

void relateSlots(StatementReader& reader) {
  const int program = reader.resolver().program();
  const Analysis& analysis = reader.analysis();
  reader.beginStatement(0);
  for (std::size_t i = 0; i < analysis.dataFiles.size(); ++i) {
    const DataFile& file = analysis.dataFiles[i];
    if (file.program != program || file.sort != DataFile::Sort::fd || file.assignName.empty()) continue;
    for (const int record : file.records) {
      const std::uint32_t token = analysis.constructs[static_cast<std::size_t>(record)].token;
      const std::uint32_t slot = reader.resolver().fileSlot(file.assignName, token);
      reader.relations().add(RelationKind::RecordSlot, static_cast<std::uint32_t>(record), slot, token);
    }
  }
  const NameId area = reader.stream().names.find("DFHCOMMAREA");
  if (area == 0) return;
  std::vector<std::uint32_t> found;
  reader.resolver().find(area, {}, found);
  for (const std::uint32_t item : found) {
    if (analysis.constructs[item].program != program || analysis.constructs[item].section != Section::linkage) continue;
    const std::uint32_t token = analysis.constructs[item].token;
    const std::string name = analysis.programs[static_cast<std::size_t>(program)].name;
    const std::uint32_t slot = reader.resolver().callSlot(name, -1, token);
    reader.relations().add(RelationKind::Parameter, item, slot, token);
  }
}

} // namespace cobol
