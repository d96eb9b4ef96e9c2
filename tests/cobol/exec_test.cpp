#include "cobol/token_picture.hpp"

namespace cobol {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Exec, SqlKeepsCommasPeriodsAndHostMarks) {
  const TokenPicture picture = pictureOf("           EXEC SQL SELECT T.A, 'x' INTO :H.A:I, : B -- it's\n"
                                         "             FROM T /* 'no' */ WHERE C-1 <> :D END-EXEC. X\n");
  EXPECT_EQ(picture.words, "EXEC SQL SELECT T . A , 'x' INTO : H . A : I , : B FROM T WHERE C-1 <> : D END-EXEC . X");
  EXPECT_EQ(picture.flagged('H'), "H I B D");
  EXPECT_EQ(picture.stream.tokens[picture.stream.tokens.size() - 3].kind, TokenKind::period);
  EXPECT_FALSE(picture.stream.tokens[picture.stream.tokens.size() - 2].has(inExec));
}

TEST(Exec, LiteralsMayCrossLines) {
  const TokenPicture picture = pictureOf("           EXEC SQL SET :A = 'ab\n           cd' END-EXEC\n");
  EXPECT_EQ(picture.flagged('C'), "'ab    cd'");
  EXPECT_EQ(picture.words, "EXEC SQL SET : A = 'ab    cd' END-EXEC");
  EXPECT_THAT(pictureOf("           EXEC SQL SET :A = 'ab\n           END-EXEC. MOVE 'x' TO A\n").remarks,
              ElementsAre("LiteralOpen 1:30"));
}

TEST(Exec, MissingEndIsSuppliedBeforeTheNextHeaderOrStatement) {
  const std::map<std::string, std::string> cases = {
      {"           EXEC CICS RETURN\n       NEXT-PARA.\n           GOBACK.\n", "EXEC CICS RETURN"},
      {"           EXEC CICS RETURN.\n           MOVE A TO B.\n", "EXEC CICS RETURN ."},
      {"           EXEC SQL COMMIT\n       PROCEDURE DIVISION.\n", "EXEC SQL COMMIT"},
      {"           EXEC SQL COMMIT\n           EXEC SQL CLOSE C END-EXEC\n",
       "EXEC SQL COMMIT EXEC SQL CLOSE C END-EXEC"},
  };
  for (const auto& [text, run] : cases) {
    EXPECT_EQ(pictureOf(text).flagged('X'), run) << text;
    EXPECT_THAT(pictureOf(text).remarks, ElementsAre("ExecOpen 1:12")) << text;
  }
}

TEST(Exec, IncludeCopies) {
  const TokenPicture picture = pictureOf("           EXEC SQL INCLUDE REC END-EXEC.\n           EXEC SQL\n             "
                                         "INCLUDE SQLCA\n           END-EXEC.\n",
                                         {}, {{"REC", "       01 R PIC X.\n"}});
  EXPECT_EQ(picture.places, "#01<1/1:8> R<1/1:11> PIC<1/1:13> {X}<1/1:17> .<1/1:18>");
  EXPECT_THAT(picture.remarks, ElementsAre("CopyMissing 3:22"));
  ASSERT_EQ(picture.stream.copies.size(), 2u);
  EXPECT_EQ(picture.stream.copies[0].file, 1);
  EXPECT_EQ(picture.stream.copies[1].name, "SQLCA");
}

TEST(Exec, SqlTextIsNoCobol) {
  EXPECT_EQ(pictureOf("           EXEC SQL SELECT REPLACE(A) COPY FROM PIC.T END-EXEC\n").words,
            "EXEC SQL SELECT REPLACE ( A ) COPY FROM PIC . T END-EXEC");
  EXPECT_THAT(pictureOf("           EXEC CICS SEND MAP('M') END-EXEC\n").remarks, IsEmpty());
}

} // namespace
} // namespace cobol
