#include "tarnsift/walk_model.hpp"

#include <chrono>
#include <cstdlib>
#include <random>

// Random scripts of commands; of one that fails the shortest is told.
namespace tarnsift_test::walk {
namespace {

struct Failure {
  std::size_t at;
  std::string text;
};

std::optional<Failure> failureOf(const std::vector<Command>& commands) {
  Walk walk;
  for (std::size_t i = 0; i < commands.size(); ++i) {
    std::string difference;
    try {
      difference = walk.run(commands[i]);
    } catch (const std::exception& error) {
      difference = error.what();
    }
    if (!difference.empty()) return Failure{i, difference};
  }
  return {};
}

// Leaves out halves, quarters and so on, down to single commands, as long as the rest still fails.
std::vector<Command> shortest(std::vector<Command> commands) {
  for (std::size_t size = commands.size() / 2; size >= 1; size /= 2)
    for (std::size_t at = 0; at < commands.size();) {
      std::vector<Command> fewer = commands;
      const auto first = fewer.begin() + static_cast<std::ptrdiff_t>(at);
      fewer.erase(first, first + static_cast<std::ptrdiff_t>(std::min(size, fewer.size() - at)));
      if (const auto failure = failureOf(fewer)) {
        fewer.resize(failure->at + 1);
        commands = std::move(fewer);
      } else {
        at += size;
      }
    }
  return commands;
}

std::vector<Command> randomCommands(unsigned seed, std::size_t count) {
  std::mt19937 random(seed);
  std::vector<int> weights;
  for (const Kind& kind : kKinds)
    weights.push_back(kind.weight);
  std::discrete_distribution<unsigned> kinds(weights.begin(), weights.end());
  std::vector<Command> commands(count);
  for (Command& command : commands)
    command = {kinds(random), static_cast<unsigned>(random() >> 8), static_cast<unsigned>(random()),
               static_cast<unsigned>(random() >> 8)};
  return commands;
}

void compare(unsigned seed, std::size_t count) {
  std::vector<Command> commands = randomCommands(seed, count);
  const auto failure = failureOf(commands);
  if (!failure) return;
  commands.resize(failure->at + 1);
  commands = shortest(commands);
  std::string script;
  for (const Command& command : commands)
    script += told(command);
  const auto last = failureOf(commands);
  ADD_FAILURE() << "seed " << seed << ", command " << failure->at << ":\n"
                << script << (last ? last->text : failure->text);
}

// TARNSIFT_WALK=50000 takes so many commands.
std::size_t walkLength() {
  const char* given = std::getenv("TARNSIFT_WALK");
  return given ? std::stoul(given) : 1500;
}

TEST(RandomWalk, OfAFixedSeedAgreesWithTheModel) {
  compare(20240229, walkLength());
}

TEST(RandomWalk, OfTheMomentAgreesWithTheModel) {
  compare(static_cast<unsigned>(std::chrono::system_clock::now().time_since_epoch().count()), walkLength());
}

} // namespace
} // namespace tarnsift_test::walk
