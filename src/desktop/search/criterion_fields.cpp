#include "desktop/search/criterion_fields.hpp"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"
#include "orvane/criteria/criterion.hpp"
#include "orvane/store_format.hpp"
#include "platform/runtime/text.hpp"

namespace desktop {

namespace {

// The argument behind "tab:word " or "tab:"; nothing when the part is another one.
std::optional<std::string> argumentOf(const std::string& part, const std::string& head) {
  const std::string_view start = std::string_view(part).substr(0, head.size());
  if (!platform::equalsIgnoringCase(start, head)) return std::nullopt;
  return std::string(platform::trimmed(std::string_view(part).substr(head.size())));
}

QLabel* hint(const QString& words) {
  auto* label = new QLabel(words);
  label->setWordWrap(true);
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, theme().muted);
  label->setPalette(palette);
  return label;
}

class NameFields final : public CriterionFields {
 public:
  explicit NameFields(QWidget* parent) : CriterionFields(parent), m_like(new QLineEdit), m_unlike(new QLineEdit) {
    auto* form = new QFormLayout(this);
    m_like->setPlaceholderText(QStringLiteral("*ACCT*"));
    form->addRow(text(Text::SearchLike), m_like);
    form->addRow(text(Text::SearchUnlike), m_unlike);
    form->addRow(hint(text(Text::SearchWildcards)));
    for (QLineEdit* edit : {m_like, m_unlike})
      connect(edit, &QLineEdit::textChanged, this, [this] { changed(); });
    setFocusProxy(m_like);
  }
  void addParts(std::vector<std::string>& parts) const override {
    const std::string like = m_like->text().trimmed().toStdString(), unlike = m_unlike->text().trimmed().toStdString();
    if (!like.empty() || !unlike.empty()) parts.push_back(orvane::nameOfPatterns(like, unlike));
  }
  bool takePart(const std::string& part) override {
    const auto argument = argumentOf(part, "Names:");
    if (!argument) return false;
    const auto [like, unlike] = orvane::patternsIn(*argument);
    m_like->setText(text(like));
    m_unlike->setText(text(unlike));
    return true;
  }
  void clear() override {
    m_like->clear();
    m_unlike->clear();
  }

 private:
  QLineEdit* m_like;
  QLineEdit* m_unlike;
};

// Words of a tab that each take an argument.
class ArgumentFields final : public CriterionFields {
 public:
  ArgumentFields(std::string tab, QWidget* parent) : CriterionFields(parent), m_tab(std::move(tab)) {
    m_form = new QFormLayout(this);
  }
  void add(const std::string& word, const QString& caption, const QString& example, const QStringList& choices = {}) {
    auto* box = new QComboBox;
    box->setEditable(true);
    box->addItem(QString());
    box->addItems(choices);
    box->lineEdit()->setPlaceholderText(example);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_form->addRow(caption, box);
    m_fields.push_back({word, box});
    connect(box, &QComboBox::editTextChanged, this, [this] { changed(); });
    if (m_fields.size() == 1) setFocusProxy(box);
  }
  void addHint(const QString& words) { m_form->addRow(hint(words)); }
  void addParts(std::vector<std::string>& parts) const override {
    for (const auto& [word, box] : m_fields)
      if (const QString argument = box->currentText().trimmed(); !argument.isEmpty())
        parts.push_back(m_tab + ":" + word + " " + argument.toStdString());
  }
  bool takePart(const std::string& part) override {
    for (const auto& [word, box] : m_fields)
      if (const auto argument = argumentOf(part, m_tab + ":" + word + " "))
        return box->setEditText(text(*argument)), true;
    return false;
  }
  void clear() override {
    for (const auto& [word, box] : m_fields)
      box->setEditText(QString());
  }

 private:
  std::string m_tab;
  QFormLayout* m_form;
  std::vector<std::pair<std::string, QComboBox*>> m_fields;
};

// Words that stand alone.
class WordFields final : public CriterionFields {
 public:
  WordFields(std::string tab, QWidget* parent) : CriterionFields(parent), m_tab(std::move(tab)) {
    m_column = new QVBoxLayout(this);
    m_column->addStretch(1);
  }
  void add(const std::string& word, const QString& caption) {
    auto* box = new QCheckBox(caption);
    m_column->insertWidget(static_cast<int>(m_boxes.size()), box);
    m_boxes.push_back({word, box});
    connect(box, &QCheckBox::toggled, this, [this] { changed(); });
    if (m_boxes.size() == 1) setFocusProxy(box);
  }
  void addParts(std::vector<std::string>& parts) const override {
    for (const auto& [word, box] : m_boxes)
      if (box->isChecked()) parts.push_back(m_tab + ":" + word);
  }
  bool takePart(const std::string& part) override {
    for (const auto& [word, box] : m_boxes)
      if (platform::equalsIgnoringCase(part, m_tab + ":" + word)) return box->setChecked(true), true;
    return false;
  }
  void clear() override {
    for (const auto& [word, box] : m_boxes)
      box->setChecked(false);
  }

 private:
  std::string m_tab;
  QVBoxLayout* m_column;
  std::vector<std::pair<std::string, QCheckBox*>> m_boxes;
};

QStringList kindWords() {
  QStringList words;
  for (std::uint8_t kind = 0;; ++kind) {
    const std::string_view word = orvane::kindWord(kind);
    if (word.empty()) return words;
    words << text(std::string(word));
  }
}

} // namespace

std::vector<CriterionTab> criterionTabs(QWidget* parent) {
  auto* declaration = new ArgumentFields("Declaration", parent);
  declaration->add("Level", text(Text::SearchLevel), QStringLiteral("1-49"));
  declaration->add("Picture", text(Text::SearchPicture), QStringLiteral("9(6)"));
  declaration->add(
      "Usage", text(Text::SearchUsage), QStringLiteral("COMP-3"),
      {QStringLiteral("DISPLAY"), QStringLiteral("COMP"), QStringLiteral("COMP-3"), QStringLiteral("COMP-5")});
  declaration->add("Size", text(Text::SearchSize), QStringLiteral("6-8"));
  declaration->add("Kind", text(Text::SearchKind), QString(), kindWords());
  auto* use = new WordFields("Use", parent);
  use->add("Unused", text(Text::SearchUnused));
  use->add("ReadOnly", text(Text::SearchReadOnly));
  use->add("WrittenOnly", text(Text::SearchWrittenOnly));
  use->add("FileRecord", text(Text::SearchFileRecord));
  use->add("Call", text(Text::SearchCall));
  use->add("Embedded", text(Text::SearchEmbedded));
  auto* across = new ArgumentFields("Across", parent);
  across->add("call", text(Text::SearchAcrossCall), QStringLiteral("SUB(1) at 1-8"));
  across->add("file", text(Text::SearchAcrossFile), QStringLiteral("ACCTMST at 9-16"));
  across->addHint(text(Text::SearchAcrossHint));
  return {{text(Text::SearchNames), new NameFields(parent)},
          {text(Text::SearchDeclaration), declaration},
          {text(Text::SearchUse), use},
          {text(Text::SearchAcross), across}};
}

} // namespace desktop
