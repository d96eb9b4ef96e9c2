#include "bench/corpus.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include <fmt/format.h>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kProgramsInFolder = 1000;

struct Source {
  std::string name, text;
  std::uint64_t lines = 0;
};

std::uint64_t linesIn(const std::string& text) {
  return static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
}

void read(const std::string& folder, std::vector<Source>& sources, std::set<std::string>& copybooks) {
  std::set<fs::path> files; // in the order of their names, whatever the folder's is
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) files.insert(entry.path());
  for (const fs::path& file : files) {
    const std::string extension = platform::lower(file.extension().string());
    if (extension == ".cpy") copybooks.insert(file.parent_path().string());
    if (extension != ".cbl" && extension != ".cob" && extension != ".cobol") continue;
    std::string text = platform::readText(file.string());
    const std::uint64_t lines = linesIn(text);
    sources.push_back({file.filename().string(), std::move(text), lines});
  }
}

} // namespace

Corpus Corpus::sample(std::size_t count) const {
  Corpus part;
  part.copybooks = copybooks;
  // An odd step meets all sources in turn, however many there are.
  const std::size_t step = std::max<std::size_t>(1, programs.size() / std::max<std::size_t>(1, count)) | 1;
  for (std::size_t i = 0; i < programs.size(); i += step) {
    const std::string text = platform::readText(programs[i]);
    part.programs.push_back(programs[i]);
    part.lines += linesIn(text);
    part.bytes += text.size();
  }
  return part;
}

Corpus makeCorpus(const std::vector<std::string>& sources, const std::string& folder, std::uint64_t lines) {
  std::vector<Source> texts;
  std::set<std::string> copybooks;
  for (const std::string& source : sources)
    read(fs::canonical(source).string(), texts, copybooks);
  Corpus corpus;
  corpus.copybooks.assign(copybooks.begin(), copybooks.end());
  if (std::all_of(texts.begin(), texts.end(), [](const Source& source) { return source.lines == 0; }))
    throw platform::Error("there is no COBOL program in " + platform::joined(sources, ", "));
  for (std::size_t round = 0; corpus.lines < lines; ++round) {
    for (const Source& source : texts) {
      const fs::path place = fs::path(folder) / fmt::format("{:03}", corpus.programs.size() / kProgramsInFolder);
      fs::create_directories(place);
      const fs::path file = place / fmt::format("{:05}-{}", round, source.name);
      std::ofstream(file, std::ios::binary) << source.text;
      corpus.programs.push_back(file.string());
      corpus.lines += source.lines;
      corpus.bytes += source.text.size();
    }
  }
  return corpus;
}

} // namespace bench
