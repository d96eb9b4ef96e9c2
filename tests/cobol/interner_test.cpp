#include "cobol/interner.hpp"

#include "cobol/diagnostic.hpp"
#include "cobol/keywords.hpp"

namespace cobol {
namespace {

TEST(Interner, GivesEachTextOneIdForEver) {
  Interner names;
  std::vector<std::string_view> views;
  std::vector<NameId> ids;
  for (int i = 0; i < 50000; ++i) {
    ids.push_back(names.intern("NAME-" + std::to_string(i)));
    views.push_back(names.text(ids.back()));
  }
  for (int i = 0; i < 50000; ++i) {
    EXPECT_EQ(views[i], "NAME-" + std::to_string(i));
    EXPECT_EQ(names.find(views[i]), ids[i]);
  }
  EXPECT_EQ(names.find("NAME-50000"), 0u);
  EXPECT_EQ(names.intern(""), 0u);
  const std::string large(200000, 'X');
  EXPECT_EQ(names.text(names.intern(large)), large);
  const Interner moved = std::move(names);
  EXPECT_EQ(moved.text(ids[777]), "NAME-777");
  EXPECT_EQ(views[777].data(), moved.text(ids[777]).data());
}

TEST(Interner, TellsTextsApartThatDifferInOneByte) {
  Interner names;
  for (std::size_t length = 1; length <= 40; ++length) {
    std::set<NameId> ids{names.intern(std::string(length, 'A'))};
    for (std::size_t at = 0; at < length; ++at) {
      std::string text(length, 'A');
      text[at] = 'B';
      EXPECT_TRUE(ids.insert(names.intern(text)).second) << text;
      EXPECT_EQ(names.find(text), names.intern(text)) << text;
    }
  }
}

TEST(Interner, KnowsTheKeywords) {
  Interner names;
  for (NameId id = 1; id < keywordCount(); ++id)
    EXPECT_EQ(names.find(textOf(static_cast<Keyword>(id))), id);
}

TEST(Diagnostics, KeepsAThousandOfACodeAndCountsAll) {
  Diagnostics diagnostics;
  for (int i = 0; i < 1500; ++i)
    diagnostics.add(Code::Unresolved, Severity::warning, {}, std::string(199, 'x') + "é");
  diagnostics.add(Code::Ambiguous, Severity::warning, {}, "");
  EXPECT_EQ(diagnostics.all().size(), 1001u);
  EXPECT_EQ(diagnostics.count(Code::Unresolved), 1500u);
  EXPECT_EQ(diagnostics.all()[0].text, std::string(199, 'x'));
}

} // namespace
} // namespace cobol
