#include "cobol/options.hpp"

namespace cobol {

Options withDialect(Options options, Dialect dialect) {
  options.dialect = dialect;
  options.binarySize = BinarySize::by2_4_8;
  options.sync = SyncRule::ibm;
  options.comp5Small = false;
  options.pointerBytes = 4;
  switch (dialect) {
  case Dialect::ibm:
    break;
  case Dialect::gnu:
    options.binarySize = BinarySize::by1_2_4_8;
    options.sync = SyncRule::natural;
    options.comp5Small = true;
    options.pointerBytes = 8;
    break;
  case Dialect::mf:
    options.binarySize = BinarySize::by1to8;
    options.sync = SyncRule::natural;
    options.comp5Small = true;
    break;
  }
  return options;
}

} // namespace cobol
