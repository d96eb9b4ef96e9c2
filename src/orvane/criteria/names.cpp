#include "orvane/criteria/criterion.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"

namespace orvane {

namespace {
constexpr std::string_view kButNot = " but not ";
}

std::string nameOfPatterns(const std::string& like, const std::string& unlike) {
  return "Names:" + (like.empty() ? "*" : like) + (unlike.empty() ? "" : std::string(kButNot) + unlike);
}

std::pair<std::string, std::string> patternsIn(const std::string& argument) {
  const auto butNot = argument.find(kButNot);
  return {argument.substr(0, butNot), butNot == std::string::npos ? "" : argument.substr(butNot + kButNot.size())};
}

Criterion namesLike(const std::string& argument) {
  const auto patterns = patternsIn(argument);
  const std::string like = platform::upper(patterns.first), unlike = platform::upper(patterns.second);
  platform::like("", like); // refuses a broken pattern before any program is read
  platform::like("", unlike);
  return [like, unlike](const StoreData& data, std::uint32_t construct) {
    const std::string_view name = data.text(data.constructs[construct].name);
    return platform::like(name, like) && (unlike.empty() || !platform::like(name, unlike));
  };
}

} // namespace orvane
