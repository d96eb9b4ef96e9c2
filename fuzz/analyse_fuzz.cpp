#include <cstdio>
#include <cstdlib>
#include <set>

#include "cobol/analyse.hpp"

namespace {

// What every analysis promises, whatever the text.
void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "broken promise: %s\n", what);
  std::abort();
}

void checkConstructs(const cobol::Analysis& analysis) {
  const auto count = static_cast<int>(analysis.constructs.size());
  const auto isIndex = [&](int index) { return index >= -1 && index < count; };
  std::set<std::string_view> keys;
  for (const auto& c : analysis.constructs) {
    require(keys.insert(c.kvid).second, "keys are unique");
    require(c.kvid.find_first_of("'\" %") == std::string::npos, "keys hold no quote, blank or percent sign");
    require(isIndex(c.parent) && isIndex(c.record) && isIndex(c.redefines) && isIndex(c.firstChild) &&
                isIndex(c.nextSibling),
            "ends of constructs exist");
    require(c.size >= 0 && c.length >= 0 && c.position >= 0, "sizes are not negative");
    const bool isPlaced = c.hasStorage() && c.area >= 0;
    require(isPlaced || !c.hasStorage() || c.kind == cobol::Kind::renames, "only a 66 may lack a record");
    // Special registers have storage of their own that no record shares.
    if (c.kind != cobol::Kind::specialRegister)
      require(isPlaced ? c.offset >= 0 : c.offset < 0, "exactly what has storage has an offset");
    require(c.declared.file < analysis.files.size(), "declarations lie in files");
  }
}

void checkUses(const cobol::Analysis& analysis) {
  const std::size_t count = analysis.constructs.size();
  for (const auto& instance : analysis.instances) {
    require(instance.construct < count, "instances have constructs");
    require(instance.at.file < analysis.files.size() && instance.at.line > 0 && instance.at.column > 0,
            "instances have places");
  }
  for (const auto& relation : analysis.relationships) {
    require(relation.from < count && relation.to < count, "ends of relationships exist");
    require(relation.from != relation.to, "nothing is related to itself");
  }
  require(analysis.statementsUnderstood <= analysis.statements, "no more statements are understood than met");
}

} // namespace

// The first byte chooses dialect and format, the text behind it is the program, what follows a byte 0x1E the copybook
// FUZZ.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  cobol::Options options;
  options = cobol::withDialect(options, static_cast<cobol::Dialect>(data[0] % 3));
  options.format = static_cast<cobol::FormatChoice>(data[0] / 3 % 4);
  options.allBranches = data[0] / 12 % 2 == 1;
  const auto cut = text.find('\x1e');
  const std::string copybook(cut == text.npos ? "" : text.substr(cut + 1));
  const cobol::Analysis analysis = cobol::analyse(text.substr(0, cut), options, {{"FUZZ", copybook}});
  checkConstructs(analysis);
  checkUses(analysis);
  return 0;
}
