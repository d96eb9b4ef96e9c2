#include "desktop/options/option_captions.hpp"

#include "platform/runtime/string_table.hpp"

namespace desktop {

namespace {

struct Caption {
  std::string_view english;
  const char* japanese;
  const char* korean;
};

// Captions stand in the option documents in English; they are translated where they are shown.
constexpr Caption kCaptions[] = {
    {"Apply to selected programs", "選択したプログラムにのみ適用", "선택한 프로그램에만 적용"},
    {"Default search", "既定の検索", "기본 검색"},
    {"Filters", "フィルター", "필터"},
    {"Search Filters", "検索フィルター", "검색 필터"},
    {"Patterns", "パターン", "패턴"},
    {"Names like", "名前のパターン", "이름 패턴"},
    {"But not like", "除外するパターン", "제외할 패턴"},
    {"Parameters", "パラメーター", "매개 변수"},
    {"Search", "検索", "검색"},
    {"Override status", "状態を上書き", "상태 덮어쓰기"},
    {"Refresh lists", "リストを更新", "목록 새로 고침"},
    {"Refresh lists (for pattern filters only)", "リストを更新 (パターン フィルターのみ)",
     "목록 새로 고침(패턴 필터만)"},
    {"Synonym search", "シノニム検索", "동의어 검색"},
    {"Synonyms", "シノニム", "동의어"},
    {"Relationships that carry the value", "値を運ぶ関係", "값을 전달하는 관계"},
    {"Relationships that steer or frame it", "値を制御または囲む関係", "값을 제어하거나 둘러싸는 관계"},
    {"Kinds", "種類", "종류"},
    {"Redefinitions", "再定義", "재정의"},
    {"All that overlap, not the exact ones only", "完全一致だけでなく重なるものすべて",
     "정확히 일치하는 것뿐 아니라 겹치는 모든 것"},
    {"View all redefinitions in synonyms pane", "シノニム ペインにすべての再定義を表示",
     "동의어 창에 모든 재정의 표시"},
    {"Affected code report", "影響コード レポート", "영향 코드 보고서"},
    {"Lines of context", "前後の行数", "앞뒤 줄 수"},
    {"Show unused datanames", "未使用のデータ名を表示", "사용되지 않는 데이터 이름 표시"},
    {"Show unused datanames in Affected Code Report", "影響コード レポートに未使用のデータ名を表示",
     "영향 코드 보고서에 사용되지 않는 데이터 이름 표시"},
    {"Columns of", "列の言語", "열의 언어"},
    {"Columns", "列", "열"},
    {"Analysis", "解析", "분석"},
    {"Reading COBOL", "COBOL の読み方", "COBOL 읽기"},
    {"Dialect", "方言", "방언"},
    {"Format", "形式", "형식"},
    {"Debug lines", "デバッグ行", "디버그 줄"},
    {"Encoding", "文字コード", "인코딩"},
    {"Read every branch of conditional compilation", "条件付きコンパイルのすべての分岐を読む",
     "조건부 컴파일의 모든 분기 읽기"},
    {"Copybook folders", "COPY 句フォルダー", "카피북 폴더"},
    {"Sources", "ソース", "소스"},
    {"Source", "ソース", "소스"},
};

} // namespace

QString captionInLanguage(std::string_view caption) {
  if (platform::language() != platform::Language::English)
    for (const Caption& row : kCaptions)
      if (row.english == caption)
        return QString::fromUtf8(platform::language() == platform::Language::Japanese ? row.japanese : row.korean);
  return QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size()));
}

} // namespace desktop
