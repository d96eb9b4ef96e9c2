#pragma once

#include "cobol/analysis.hpp"

namespace cobol {

class StatementReader;

/// A declaration instance for every construct that has a name in the text; those of directives are no tokens of it.
void noteDeclarations(StatementReader& reader);

/// Instances and relations of one clause that names data: keys, FILE STATUS, DEPENDING ON, report and screen items …
void readDataReference(StatementReader& reader, const DataReference& reference);

/// The records of the program's files meet their file slots, its communication area its call slot.
void relateSlots(StatementReader& reader);

} // namespace cobol
