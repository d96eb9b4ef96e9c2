#include "desktop/texts.hpp"

#include "platform/runtime/string_table.hpp"

namespace desktop {

namespace {

struct Translations {
  Word word;
  const char* english;
  const char* japanese;
  const char* korean;
};

constexpr Translations kWords[] = {
    {Word::ok, "OK", "OK", "확인"},
    {Word::cancel, "Cancel", "キャンセル", "취소"},
    {Word::close, "Close", "閉じる", "닫기"},
    {Word::closePane, "Hide this pane", "このペインを隠す", "이 창 숨기기"},
    {Word::activityLog, "Activity Log", "アクティビティ ログ", "활동 로그"},
    {Word::minimize, "Minimize", "最小化", "최소화"},
    {Word::restore, "Restore", "元に戻す", "복원"},
    {Word::noPrograms, "No verified program in this project", "このプロジェクトには検証済みのプログラムがありません",
     "이 프로젝트에는 검증된 프로그램이 없습니다"},
    {Word::noWorking, "Nothing to decide here.\nApply a filter to find datanames.",
     "ここには検討中の項目がありません。\nフィルターを適用してデータ名を検索してください。",
     "검토할 항목이 없습니다.\n필터를 적용하여 데이터 이름을 찾으십시오."},
    {Word::noAffected, "No affected dataname yet.\nMove names here with F6.",
     "影響のあるデータ名はまだありません。\nF6 で移動できます。",
     "영향받는 데이터 이름이 아직 없습니다.\nF6 키로 이동할 수 있습니다."},
    {Word::noClean, "No clean dataname yet.\nMove names here with F8.",
     "影響のないデータ名はまだありません。\nF8 で移動できます。",
     "영향 없는 데이터 이름이 아직 없습니다.\nF8 키로 이동할 수 있습니다."},
    {Word::noSynonyms, "Select a dataname to see its synonyms", "データ名を選択するとシノニムが表示されます",
     "데이터 이름을 선택하면 동의어가 표시됩니다"},
    {Word::noSource, "Select a dataname to see its source", "データ名を選択するとソースが表示されます",
     "데이터 이름을 선택하면 소스가 표시됩니다"},
    {Word::noLog, "Nothing to report", "報告はありません", "보고할 내용이 없습니다"},
    {Word::toolbar, "Toolbar", "ツールバー", "도구 모음"},
    {Word::moreCommands, "More commands", "その他のコマンド", "추가 명령"},
    {Word::panes, "Panes", "ペイン", "창"},
};

} // namespace

QString word(Word word) {
  for (const Translations& row : kWords)
    if (row.word == word) switch (platform::language()) {
      case platform::Language::Japanese:
        return QString::fromUtf8(row.japanese);
      case platform::Language::Korean:
        return QString::fromUtf8(row.korean);
      default:
        return QString::fromUtf8(row.english);
      }
  return {};
}

} // namespace desktop
