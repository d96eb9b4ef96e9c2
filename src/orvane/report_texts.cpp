#include "orvane/report_texts.hpp"

#include "platform/runtime/error.hpp"
#include "platform/runtime/string_table.hpp"

namespace orvane {

namespace {

struct OwnText {
  std::string_view key;
  const char* english;
  const char* japanese;
  const char* korean;
};

constexpr OwnText kTexts[] = {
    {"program", "Program", "プログラム", "프로그램"},
    {"file", "File", "ファイル", "파일"},
    {"line", "Line", "行", "줄"},
    {"column", "Column", "桁", "열"},
    {"text", "Text", "テキスト", "텍스트"},
    {"marked", "Marked", "該当", "해당"},
    // totals
    {"total", "Total", "合計", "합계"},
    {"programs", "Programs", "プログラム数", "프로그램 수"},
    {"none", "(none)", "(なし)", "(없음)"},
    {"totals", "Totals", "集計", "집계"},
    // the picture; %1 and %2 are numbers
    {"picture", "Where the change lies: shares of declarations and usages by program",
     "変更の所在: プログラムごとの宣言と使用箇所の割合", "변경 위치: 프로그램별 선언 및 사용 비율"},
    {"above", "%1 of %2 programs above 0.0%", "%2 個中 %1 個のプログラムが 0.0% を超過",
     "프로그램 %2개 중 %1개가 0.0% 초과"},
    {"all", "All programs, the largest share of usages first", "全プログラム (使用箇所の割合が大きい順)",
     "전체 프로그램(사용 비율이 큰 순서)"},
    {"largest", "The %1 largest of %2; the table below has all", "%2 個のうち上位 %1 個 (すべては下の表)",
     "%2개 중 상위 %1개(전체는 아래 표 참조)"},
    // the effort sheet
    {"effort", "Effort", "作業量", "작업량"},
    {"size", "Change size", "変更規模", "변경 규모"},
    {"working", "Working", "作業中", "작업 중"},
    {"affected", "Affected", "影響あり", "영향 있음"},
    {"clean", "Clean", "影響なし", "영향 없음"},
    {"datanames", "Declarations", "宣言", "선언"},
    {"declaration_share", "Declarations(%)", "宣言(%)", "선언(%)"},
    {"affected_usages", "Affected usages", "影響ありの使用箇所", "영향 있는 사용"},
    {"usages", "Usages", "使用箇所", "사용"},
    {"usage_share", "Usages(%)", "使用箇所(%)", "사용(%)"},
};

} // namespace

std::string ownText(std::string_view key) {
  for (const OwnText& entry : kTexts) {
    if (entry.key != key) continue;
    switch (platform::language()) {
    case platform::Language::Japanese:
      return entry.japanese;
    case platform::Language::Korean:
      return entry.korean;
    default:
      return entry.english;
    }
  }
  throw platform::KeyError("no text " + std::string(key));
}

std::size_t displayWidth(std::string_view text) {
  std::size_t width = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool follows = (byte & 0xC0) == 0x80;
    width += byte >= 0xE0 ? 2 : follows ? 0 : 1;
  }
  return width;
}

} // namespace orvane
