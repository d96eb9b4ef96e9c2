#include <cstdio>
#include <set>

#include <nlohmann/json.hpp>

#include <QLineEdit>
#include <QToolButton>

#include "desktop/source/source_view.hpp"
#include "desktop/workbench.hpp"

namespace {

using Place = std::tuple<std::string, int, int, std::string>; ///< file, line, column, access

// What the real command prints of a dataname's usages, run beside the window.
std::multiset<Place> usagesPrinted(const orvane::BaseFolder& base, const std::string& program,
                                   const std::string& name) {
  const std::string line =
      TARNSIFT_COMMAND " --base '" + base.path() + "' usages --program " + program + " " + name + " --json";
  std::FILE* pipe = ::popen(line.c_str(), "r");
  std::string out;
  for (int c; (c = std::fgetc(pipe)) != EOF;)
    out += static_cast<char>(c);
  EXPECT_EQ(::pclose(pipe), 0) << line;
  std::multiset<Place> places;
  for (const QString& row : QString::fromStdString(out).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    const auto object = nlohmann::json::parse(row.toStdString());
    places.insert({object["file"].get<std::string>(), object["line"].get<int>(), object["column"].get<int>(),
                   object["access"].get<std::string>()});
  }
  return places;
}

// What the view marks as usages, file by file.
std::multiset<Place> usagesMarked(desktop::SourceView& view) {
  static constexpr const char* kAccess[] = {"declaration", "read", "write", "both"};
  std::multiset<Place> places;
  for (const orvane::SourceMark& mark : view.marks())
    if (mark.kind != orvane::MarkKind::declaration && !mark.part)
      places.insert({view.files()[mark.place.file].toStdString(), static_cast<int>(mark.place.line),
                     static_cast<int>(mark.place.column), kAccess[static_cast<int>(mark.kind)]});
  return places;
}

class SourceViewTest : public WorkbenchTest {
 protected:
  void show(const std::string& program, const std::string& dataname) {
    auto* model = programs().model();
    for (int row = 0; row < model->rowCount(); ++row)
      if (model->index(row, 0).data().toString().toStdString() == program) click(programs(), row);
    auto* names = working().model();
    for (int row = 0; row < names->rowCount(); ++row)
      if (names->index(row, 0).data().toString().toStdString() == dataname) {
        working().scrollTo(names->index(row, 0));
        click(working(), row);
      }
    QTest::qWait(1);
  }
  desktop::SourceView& view() { return widget<desktop::SourceView>("KVSource"); }
  std::string lineText(int line) { return view().area().line(line).trimmed().toStdString(); }
};

} // namespace

TEST_F(SourceViewTest, MarksWhatTheCommandPrints) {
  open();
  filter("Names:*", 0);
  for (const auto& [program, name] : {std::pair("BKB010", "WS-REASON"), std::pair("BKB010", "BAD-LINE"),
                                      std::pair("BKB040", "AC-ACCT-NO"), std::pair("BKO100", "WS-COMM")}) {
    const auto printed = usagesPrinted(m_portfolio.base(), program, name);
    show(program, name);
    EXPECT_EQ(usagesMarked(view()), printed) << name << " of " << program;
  }
}

TEST_F(SourceViewTest, FollowsTheChoiceIntoACopybookAndStepsFromUseToUse) {
  open();
  filter("Names:AM-ACCT-NO", 0);
  show("BKB020", "AM-ACCT-NO");
  ASSERT_GE(view().currentFile(), 1) << "the declaration stands in a copybook";
  const int declared = view().area().currentLine();
  EXPECT_NE(lineText(declared).find("ACCT-NO"), std::string::npos) << lineText(declared);
  EXPECT_NE(host().panes()->Panes("Source").Caption().find("Sources\\copy\\"), std::string::npos);
  EXPECT_EQ(view().currentUsage(), 0);
  key(working(), Qt::Key_F4);
  EXPECT_EQ(view().currentUsage(), 1);
  EXPECT_EQ(view().currentFile(), 0);
  EXPECT_NE(lineText(view().area().currentLine()).find("ACCT-NO"), std::string::npos);
  key(working(), Qt::Key_F4, Qt::ShiftModifier);
  EXPECT_EQ(view().currentUsage(), view().usageCount()) << "before the first comes the last";
  key(working(), Qt::Key_F4);
  EXPECT_EQ(view().currentUsage(), 1);
}

TEST_F(SourceViewTest, MarksWhatReplacedAPartOfANameWithoutStoppingThere) {
  open();
  filter("Names:MA-ACCT-NO", 0);
  show("BKB050", "MA-ACCT-NO");
  std::string parts;
  for (const orvane::SourceMark& mark : view().marks())
    if (mark.part)
      parts += view().files()[mark.place.file].toStdString() + ' ' + std::to_string(mark.place.line) + ':' +
               std::to_string(mark.place.column) + '+' + std::to_string(mark.place.length);
  EXPECT_EQ(parts, view().files()[0].toStdString() + " 25:46+2") << "COPY … REPLACING ==:TAG:== BY ==MA==";
  const int usages = view().usageCount();
  ASSERT_GE(usages, 3);
  for (int step = 1; step <= 2 * usages; ++step) {
    view().nextUsage();
    EXPECT_EQ(view().currentUsage(), (step - 1) % usages + 1);
    EXPECT_NE(view().area().currentLine(), 25);
  }
}

TEST_F(SourceViewTest, FindsTextAsItIsTyped) {
  open();
  QTest::qWait(5);
  key(programs(), Qt::Key_F, Qt::ControlModifier);
  auto* edit = view().findChild<QLineEdit*>();
  ASSERT_TRUE(edit);
  ASSERT_TRUE(edit->hasFocus());
  QTest::keyClicks(edit, QStringLiteral("procedure division"));
  const int line = view().area().currentLine();
  EXPECT_NE(lineText(line).find("PROCEDURE DIVISION"), std::string::npos);
  QTest::keyClick(edit, Qt::Key_Escape);
  EXPECT_FALSE(edit->isVisible());
  EXPECT_TRUE(view().area().hasFocus());
}

TEST_F(SourceViewTest, ShowsAProgramWithoutADatanameAndWarnsOfAChangedFile) {
  open();
  QTest::qWait(5);
  EXPECT_EQ(view().area().line(1).trimmed().left(14).toStdString(), "IDENTIFICATION");
  EXPECT_NE(host().panes()->Panes("Source").Caption().find("BKB010"), std::string::npos);
  EXPECT_FALSE(widget<QWidget>("sourceNotice").isVisible());
}
