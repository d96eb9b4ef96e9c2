#include "tarnsift/webpage/program_walk.hpp"

#include "platform/files/files.hpp"
#include "tarnsift/session/globals.hpp"

namespace tarnsift {

namespace {

// The store of a program, or nothing when it is not verified.
Ref<AnalysisStore> openStore(RepositoryObject& program) {
  const auto source = theRepositoryAccess().Repository()->ObjectById(program.Attribute("SID").asText());
  if (!source) return {};
  const std::string file = source->Attribute("Kelvane").asText();
  if (file.empty()) return {};
  const std::string path = belowBase(file);
  if (!theFileProbe().FileExists(path, false) || !source->Attribute("DataRelations").asBool()) return {};
  return theProgramStore().Open(platform::nativePath(path), source->Type()->StoreClass());
}

class Closing {
 public:
  explicit Closing(AnalysisStore& store) : m_store(store) {}
  ~Closing() { m_store.Close(); }
  Closing(const Closing&) = delete;
  Closing& operator=(const Closing&) = delete;

 private:
  AnalysisStore& m_store;
};

bool readProgram(RepositoryObject& program, const std::function<void(RepositoryObject&, AnalysisStore&)>& read) {
  const Ref<AnalysisStore> store = openStore(program);
  if (!store) return false;
  const Closing closing(*store);
  read(program, *store);
  return true;
}

} // namespace

void eachProgramStore(const std::string& order, const std::function<void(RepositoryObject&, AnalysisStore&)>& read,
                      const std::function<void()>& write) {
  const auto programs =
      theRepositoryAccess().Repository()->SelectObjects("PROGRAM", globals().ProjectObject->Id(), order);
  for (; !programs->AtEnd(); programs->MoveNext()) {
    const Ref<RepositoryObject> program = programs->Current();
    bool whole = false;
    platform::ignoring([&] { whole = readProgram(*program, read); });
    if (whole) write();
  }
}

} // namespace tarnsift
