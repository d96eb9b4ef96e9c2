#include "cobol/source_text.hpp"

#include <iconv.h>

#include "cobol/token_picture.hpp"

namespace cobol {
namespace {

std::string decoded(const std::string& bytes, std::string& encoding, const Options& options = {}) {
  Diagnostics remarks;
  const SourceText source = decode(bytes, options, remarks);
  encoding = source.file.encoding;
  return source.text;
}

std::string ebcdic(std::string text, const char* codePage) {
  const iconv_t converter = iconv_open(codePage, "UTF-8");
  std::string bytes(text.size(), '\0');
  char* in = text.data();
  char* out = bytes.data();
  std::size_t inLeft = text.size();
  std::size_t outLeft = bytes.size();
  iconv(converter, &in, &inLeft, &out, &outLeft);
  iconv_close(converter);
  bytes.resize(bytes.size() - outLeft);
  return bytes;
}

TEST(Encoding, IsToldByTheBytes) {
  const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
      {"plain", "plain", "UTF-8"},
      {"gr\xC3\xBC\xC3\x9F", "grüß", "UTF-8"},
      {"gr\xFC\xDF", "grüß", "ISO-8859-1"},
      {"\xEF\xBB\xBF"
       "A",
       "A", "UTF-8"},
      {std::string("\xFF\xFE"
                   "A\0\xFC\0",
                   6),
       "Aü", "UTF-16LE"},
      {std::string("\xFE\xFF\0A\0\xFC", 6), "Aü", "UTF-16BE"},
      {std::string("A\n\x1A\0\0", 5), "A\n", "UTF-8"},
      {"cut \xC3", "cut Ã", "ISO-8859-1"},
      {"", "", "UTF-8"},
  };
  for (const auto& [bytes, text, name] : cases) {
    std::string encoding;
    EXPECT_EQ(decoded(bytes, encoding), text);
    EXPECT_EQ(encoding, name);
  }
  Options latin;
  latin.encoding = "ISO-8859-1";
  std::string encoding;
  EXPECT_EQ(decoded("\xC3\xBC", encoding, latin), "Ã¼");
}

TEST(Encoding, MainframeFiles) {
  const std::string line = "       MOVE SOME-NAME TO OTHER-NAME(1).";
  std::string lines;
  std::string records;
  for (int i = 0; i < 5; ++i) {
    lines += ebcdic(line, "IBM037") + '\x15';
    std::string record = line;
    record.resize(80, ' ');
    records += ebcdic(record, "IBM1047");
  }
  std::string encoding;
  EXPECT_EQ(decoded(lines, encoding).substr(0, line.size() + 1), line + "\n");
  EXPECT_EQ(encoding, "CP037");
  Options open;
  open.ebcdic = "cp1047";
  EXPECT_EQ(decoded(records, encoding, open).find("\n"), 80u);
  EXPECT_EQ(pictureOf(records).places.substr(0, 40), pictureOf(line + "\n").places.substr(0, 40));
  Options never;
  never.ebcdic = "never";
  decoded(lines, encoding, never);
  EXPECT_EQ(encoding, "ISO-8859-1");
}

TEST(Encoding, RecordsWithoutLineEndsAreCut) {
  std::string record = "000100     MOVE A TO B.";
  record.resize(80, ' ');
  EXPECT_EQ(pictureOf(record + record).places,
            "MOVE<1:12> A<1:17> TO<1:19> B<1:22> .<1:23> MOVE<2:12> A<2:17> TO<2:19> B<2:22> .<2:23>");
}

} // namespace
} // namespace cobol
