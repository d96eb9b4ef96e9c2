#include "cobol/expander.hpp"

#include "cobol/characters.hpp"

#include <numeric>
#include <span>

namespace cobol {
namespace {

constexpr std::size_t kDepthLimit = 64;
constexpr std::size_t kCopyLimit = 200'000; // copybooks without a word can copy each other for ever
constexpr std::size_t kOperandLimit = 4096;
constexpr std::size_t kFileLimit = 0xFFFF;

// Members that the systems supply; the analyser knows their contents by itself.
bool isBuiltIn(std::string_view name) {
  return name == "SQLCA" || name == "SQLDA" || name == "DFHAID" || name == "DFHBMSCA" || name == "DFHEIBLK";
}

// They have the same ids everywhere.
const std::vector<NameId>& keywordIds() {
  static const std::vector<NameId> ids = [] {
    std::vector<NameId> all(keywordCount());
    std::iota(all.begin(), all.end(), NameId{0});
    return all;
  }();
  return ids;
}

bool isUnitHeader(Keyword word) {
  return word == Keyword::ProgramId || word == Keyword::FunctionId || word == Keyword::ClassId;
}

// The word behind END where such a unit ends.
bool isUnit(Keyword word) {
  return word == Keyword::Program || word == Keyword::Function || word == Keyword::Class;
}

// A word of a replacing operand with its parts on later lines.
std::vector<Position> allPlaces(const Token& token, const FurtherPlaces& further) {
  std::vector<Position> places{token.position()};
  const std::vector<Position>& parts = further.of(token.further);
  places.insert(places.end(), parts.begin(), parts.end());
  return places;
}

} // namespace

Expander::Expander(TokenStream& stream, CopyLibrary& library, const Options& options, const ScanSettings& settings,
                   Diagnostics& diagnostics)
    : m_stream(stream), m_library(library), m_options(options), m_settings(settings), m_learned(settings),
      m_diagnostics(diagnostics), m_conditions(options.allBranches) {}

void Expander::run(TextBlock& main) {
  fileIndex(main);
  m_stream.further = std::move(main.further);
  std::vector<Token>& out = m_stream.tokens;
  if (main.marks.empty()) {
    out = std::move(main.tokens);
  } else {
    out.reserve(main.tokens.size() + main.tokens.size() / 2);
    auto frame = std::make_unique<Frame>();
    frame->block = &main;
    frame->out = &out;
    frame->settings = m_settings;
    frame->settings.decimalComma = main.decimalComma;
    frame->settings.debugging = main.debugging;
    m_frames.push_back(std::move(frame));
    walk();
  }
  if (!m_replaceLists.empty()) applyReplace();
  Token end{};
  end.line = main.file.lines + 1;
  end.column = 1;
  out.push_back(end);
}

void Expander::walk() {
  while (!m_frames.empty()) {
    Frame& frame = *m_frames.back();
    const std::vector<Mark>& marks = frame.block->marks;
    while (frame.mark < marks.size() && marks[frame.mark].token < frame.at)
      ++frame.mark;
    if (frame.mark == marks.size()) {
      emit(frame, frame.block->tokens.size());
      leave();
      continue;
    }
    const Mark mark = marks[frame.mark++];
    emit(frame, mark.token);
    onMark(frame, mark);
  }
}

// The replacements of a COPY see the text with everything that it copies in turn.
void Expander::leave() {
  const std::unique_ptr<Frame> frame = std::move(m_frames.back());
  m_frames.pop_back();
  if (frame->rules.empty()) return;
  std::vector<Token>& out = *m_frames.back()->out;
  const std::size_t before = out.size() + frame->own.size();
  Replacing(std::move(frame->rules), m_stream.names, m_stream.further).apply(frame->own, out, m_options.wordLimit);
  const Position at = positionAt(*m_frames.back(), m_frames.back()->at);
  if (out.size() >= m_options.wordLimit) m_tokens = m_options.wordLimit;
  if (out.size() > before) spend(out.size() - before, at);
}

void Expander::spend(std::size_t words, const Position& at) {
  m_tokens += words;
  if (m_tokens <= m_options.wordLimit || m_spent) return;
  m_spent = true;
  m_diagnostics.add(Code::BudgetSpent, Severity::error, at,
                    "more than " + std::to_string(m_options.wordLimit) + " words; the rest is left out");
}

void Expander::emit(Frame& frame, std::size_t to) {
  if (to <= frame.at) return;
  const std::size_t from = frame.at;
  frame.at = to;
  if (!m_conditions.active() || m_spent) return;
  spend(to - from, positionAt(frame, from));
  if (m_spent) return;
  std::vector<Token>& out = *frame.out;
  const std::size_t before = out.size();
  const Token* words = frame.block->tokens.data();
  out.insert(out.end(), words + from, words + to);
  if (!frame.copied) return;
  const NameId* const names = frame.copied->names.data();
  for (Token& token : std::span(out).subspan(before)) {
    token.text = names[token.text];
    token.file = frame.file;
    if (token.further != 0) token.further = frame.copied->further[token.further];
  }
}

void Expander::onMark(Frame& frame, const Mark& mark) {
  if (mark.kind == MarkKind::directive) return onDirective(frame, frame.block->directives[mark.index]);
  if (!m_conditions.active()) return; // the words are passed over with the branch
  frame.settings.format = static_cast<Format>(mark.index);
  switch (mark.kind) {
  case MarkKind::copy:
    return onCopy(frame, mark.token);
  case MarkKind::replace:
    return onReplace(frame, mark.token);
  case MarkKind::sqlInclude:
    return onSqlInclude(frame, mark.token);
  case MarkKind::directive:
    break;
  }
}

bool Expander::isWord(const Frame& frame, std::size_t at, Keyword word) const {
  const std::vector<Token>& tokens = frame.block->tokens;
  return at < tokens.size() && tokens[at].kind == TokenKind::word && tokens[at].text == idOf(word);
}

std::string_view Expander::textAt(const Frame& frame, std::size_t at) const {
  if (at >= frame.block->tokens.size()) return {};
  const NameId id = frame.block->tokens[at].text;
  return frame.copied ? frame.copied->text->names.text(id) : m_stream.names.text(id);
}

bool Expander::isSymbol(const Frame& frame, std::size_t at, std::string_view text) const {
  return at < frame.block->tokens.size() && frame.block->tokens[at].kind == TokenKind::symbol &&
         textAt(frame, at) == text;
}

Token Expander::tokenAt(const Frame& frame, std::size_t at) const {
  Token token = frame.block->tokens[at];
  if (frame.copied) token.text = frame.copied->names[token.text];
  if (frame.copied && token.further != 0) token.further = frame.copied->further[token.further];
  token.file = frame.file;
  return token;
}

Position Expander::positionAt(const Frame& frame, std::size_t at) const {
  const std::vector<Token>& tokens = frame.block->tokens;
  if (tokens.empty()) return {frame.file, 1, 1, 0};
  Position position = tokens[std::min(at, tokens.size() - 1)].position();
  position.file = frame.file;
  return position;
}

// COPY name [OF library] [SUPPRESS [PRINTING]] [REPLACING …] .
void Expander::onCopy(Frame& frame, std::size_t at) {
  const std::vector<Token>& tokens = frame.block->tokens;
  std::size_t next = at + 1;
  const bool nameFollows =
      next < tokens.size() && (tokens[next].kind == TokenKind::word || tokens[next].kind == TokenKind::literal ||
                               tokens[next].kind == TokenKind::number);
  if (!nameFollows) return; // no COPY statement: the word stays
  CopyRequest request;
  request.isText = tokens[next].kind == TokenKind::literal;
  request.name = textAt(frame, next);
  request.at = positionAt(frame, next);
  ++next;
  // An extension without quotes: COPY NAME.CPY.
  if (!request.isText && next + 1 < tokens.size() && tokens[next].kind == TokenKind::period &&
      tokens[next].has(joined) && tokens[next + 1].kind == TokenKind::word && tokens[next + 1].has(joined)) {
    request.name.append(1, '.').append(textAt(frame, next + 1));
    next += 2;
  }
  if ((isWord(frame, next, Keyword::Of) || isWord(frame, next, Keyword::In)) && next + 1 < tokens.size()) {
    request.library = upper(textAt(frame, next + 1));
    next += 2;
  }
  if (isWord(frame, next, Keyword::Suppress)) ++next;
  if (isWord(frame, next, Keyword::Printing)) ++next;
  if (isWord(frame, next, Keyword::Replacing)) next = readRules(frame, next + 1, request.rules);
  if (next < tokens.size() && tokens[next].kind == TokenKind::period) {
    ++next;
  } else {
    m_diagnostics.add(Code::PeriodMissing, Severity::warning, request.at, "no period ends the COPY statement");
  }
  frame.at = next;
  include(frame, std::move(request));
}

// REPLACE ==a== BY ==b== … .   REPLACE [LAST] OFF.   REPLACE ALSO …
void Expander::onReplace(Frame& frame, std::size_t at) {
  std::size_t next = at + 1;
  const bool last = isWord(frame, next, Keyword::Last) && isWord(frame, next + 1, Keyword::Off);
  if (last) ++next;
  Token control = tokenAt(frame, at);
  control.kind = kReplaceControl;
  if (isWord(frame, next, Keyword::Off)) {
    control.text = last ? kReplaceLastOff : kReplaceOff;
    ++next;
  } else {
    const bool also = isWord(frame, next, Keyword::Also);
    if (also) ++next;
    std::vector<ReplaceRule> rules;
    const std::size_t behind = readRules(frame, next, rules);
    if (rules.empty()) return; // some other use of the word
    next = behind;
    control.text = static_cast<NameId>(m_replaceLists.size());
    m_replaceLists.push_back({std::move(rules), also});
  }
  if (next < frame.block->tokens.size() && frame.block->tokens[next].kind == TokenKind::period) ++next;
  frame.at = next;
  if (m_replaceLists.empty()) return;
  frame.out->push_back(control);
}

void Expander::onSqlInclude(Frame& frame, std::size_t at) {
  const std::vector<Token>& tokens = frame.block->tokens;
  const std::size_t name = at + 3;
  std::size_t next = name;
  while (next < tokens.size() && next < name + 4 && !isWord(frame, next, Keyword::EndExec))
    ++next;
  if (next == name || !isWord(frame, next, Keyword::EndExec)) return;
  CopyRequest request;
  request.isText = tokens[name].kind == TokenKind::literal;
  for (std::size_t i = name; i < next; ++i)
    request.name += textAt(frame, i);
  request.at = positionAt(frame, name);
  ++next;
  if (next < tokens.size() && tokens[next].kind == TokenKind::period) ++next;
  frame.at = next;
  include(frame, std::move(request));
}

void Expander::onDirective(Frame& frame, const Directive& directive) {
  const std::string_view text = directive.text;
  const bool include1 = text.starts_with("++INCLUDE ");
  if (include1 || text.starts_with("-INC ")) {
    if (!m_conditions.active()) return;
    CopyRequest request;
    const std::size_t from = text.find_first_not_of(" \t'\"", include1 ? 9 : 4);
    if (from == text.npos) return;
    request.name = text.substr(from, text.find_first_of(" \t.,'\"", from) - from);
    request.at = directive.at;
    request.at.file = frame.file;
    frame.settings.format = directive.format;
    return include(frame, std::move(request));
  }
  if (m_conditions.active()) noteDefine(frame, directive);
  if (m_conditions.take(text) == Conditions::Outcome::done) return;
  static constexpr std::string_view kWithoutEffect[] = {
      "LISTING", "PAGE",      "TURN",        "CALL-CONVENTION",     "LEAP-SECOND", "FLAG-02",
      "FLAG-85", "PROPAGATE", "COBOL-WORDS", "REF-MOD-ZERO-LENGTH", "DISPLAY",     "REGION"};
  const std::string_view word = text.substr(0, text.find_first_of(" \t\"'("));
  if (std::find(std::begin(kWithoutEffect), std::end(kWithoutEffect), word) != std::end(kWithoutEffect)) return;
  Position at = directive.at;
  at.file = frame.file;
  m_diagnostics.add(Code::DirectiveUnknown, Severity::information, at,
                    "the directive is not known: " + std::string(word));
}

// `DEFINE NAME …`, `CONSTANT NAME …`: the name can be used as that of a level 78.
void Expander::noteDefine(const Frame& frame, const Directive& directive) {
  const std::optional<Conditions::Definition> made = Conditions::definitionOf(directive.text);
  if (!made || !m_defined.insert(std::string(made->name)).second) return;
  Position at = directive.at;
  at.file = frame.file;
  at.column += directive.textColumn + static_cast<std::uint32_t>(made->name.data() - directive.text.data());
  at.length = static_cast<std::uint32_t>(made->name.size());
  m_stream.defines.push_back({m_stream.names.intern(made->name), made->value, at});
}

void Expander::include(Frame& frame, CopyRequest request) {
  if (m_spent) return;
  if (m_stream.copies.size() >= kCopyLimit) {
    m_spent = true;
    m_diagnostics.add(Code::BudgetSpent, Severity::error, request.at,
                      "more than " + std::to_string(kCopyLimit) + " copybooks are copied; the rest is left out");
    return;
  }
  CopyUse use{request.name, request.library, -1, request.at};
  std::string rival;
  const std::optional<std::string> path = m_library.find(request.name, request.library, frame.block->file.path, &rival);
  if (!rival.empty()) {
    m_diagnostics.add(Code::Ambiguous, Severity::warning, request.at,
                      "two copybooks differ in case only; taken is " + *path + ", not " + rival);
  }
  if (!path) {
    const Severity severity = isBuiltIn(upper(use.name)) ? Severity::information : Severity::error;
    m_diagnostics.add(Code::CopyMissing, severity, request.at, "the copybook " + request.name + " is not found");
  } else if (std::any_of(m_frames.begin(), m_frames.end(),
                         [&](const auto& open) { return open->block->file.path == *path; })) {
    m_diagnostics.add(Code::CopyCycle, Severity::error, request.at, "the copybook " + request.name + " copies itself");
    const auto known = m_fileIndexes.find(*path);
    if (known != m_fileIndexes.end()) use.file = known->second;
  } else if (m_frames.size() > kDepthLimit) {
    m_diagnostics.add(Code::CopyDepth, Severity::error, request.at, "copybooks are nested more than 64 deep");
  } else {
    enter(*path, request, frame, use.file);
  }
  m_stream.copies.push_back(std::move(use));
}

void Expander::enter(const std::string& path, CopyRequest& request, const Frame& outer, int& file) {
  auto frame = std::make_unique<Frame>();
  frame->settings = outer.settings;
  frame->settings.constants = m_conditions.constants();
  frame->copied = copiedOf(m_library.read(path, frame->settings, m_options));
  if (!frame->copied) {
    m_diagnostics.add(Code::BudgetSpent, Severity::error, request.at, "more than 65535 files");
    return;
  }
  const TextBlock& block = frame->copied->text->block;
  frame->block = &block;
  file = frame->file = frame->copied->file;
  m_learned.decimalComma = m_learned.decimalComma || (block.decimalComma && !outer.settings.decimalComma);
  m_learned.debugging = m_learned.debugging || (block.debugging && !outer.settings.debugging);
  frame->rules = std::move(request.rules);
  frame->out = frame->rules.empty() ? outer.out : &frame->own;
  m_frames.push_back(std::move(frame));
}

// A file is listed once; its own remarks are passed on with its first use.
std::uint16_t Expander::fileIndex(const TextBlock& block) {
  const auto [it, isNew] = m_fileIndexes.emplace(block.file.path, static_cast<std::uint16_t>(m_stream.files.size()));
  if (!isNew) return it->second;
  m_stream.files.push_back(block.file);
  for (Diagnostic remark : block.diagnostics.all()) {
    remark.at.file = it->second;
    m_diagnostics.add(remark.code, remark.severity, remark.at, std::move(remark.text));
  }
  return it->second;
}

// Null when there are too many files.
const Expander::Copied* Expander::copiedOf(std::shared_ptr<const CopyText> text) {
  if (const auto known = m_copied.find(text.get()); known != m_copied.end()) return &known->second;
  const TextBlock& block = text->block;
  if (m_stream.files.size() >= kFileLimit && !m_fileIndexes.contains(block.file.path)) return nullptr;
  Copied& copied = m_copied[text.get()];
  copied.file = fileIndex(block);
  copied.names = namesOf(*text);
  copied.further = furtherOf(block, copied.file);
  copied.text = std::move(text);
  return &copied;
}

std::vector<NameId> Expander::namesOf(const CopyText& copy) {
  std::vector<NameId> ids;
  const std::size_t count = copy.names.size();
  const std::vector<NameId>& keywords = keywordIds();
  ids.reserve(count);
  ids.assign(keywords.begin(), keywords.end());
  for (NameId id = keywordCount(); id < count; ++id)
    ids.push_back(m_stream.names.intern(copy.names.text(id), copy.names.hash(id)));
  return ids;
}

// The lists of a copybook's own become lists of the stream.
std::vector<std::uint16_t> Expander::furtherOf(const TextBlock& block, std::uint16_t file) {
  if (block.further.size() == 1) return {};
  std::vector<std::uint16_t> numbers{0};
  for (std::size_t i = 1; i < block.further.size(); ++i) {
    std::vector<Position> places = block.further.of(static_cast<std::uint16_t>(i));
    for (Position& place : places)
      place.file = file;
    numbers.push_back(m_stream.further.add(places));
  }
  return numbers;
}

// Reads `a BY b …` and gives the place behind; operands beyond the limit are left out.
std::size_t Expander::readRules(const Frame& frame, std::size_t at, std::vector<ReplaceRule>& rules) {
  const std::vector<Token>& tokens = frame.block->tokens;
  while (at < tokens.size() && tokens[at].kind != TokenKind::period) {
    ReplaceRule rule;
    std::size_t next = at;
    if (isWord(frame, next, Keyword::Leading)) rule.part = ReplaceRule::Part::leading;
    if (isWord(frame, next, Keyword::Trailing)) rule.part = ReplaceRule::Part::trailing;
    if (rule.part != ReplaceRule::Part::whole && !isWord(frame, next + 1, Keyword::By)) ++next;
    if (!readOperand(frame, next, rule.from) || !isWord(frame, next, Keyword::By)) break;
    ++next;
    if (!readOperand(frame, next, rule.to)) break;
    for (Token& token : rule.to)
      token.further = m_stream.further.add(allPlaces(token, m_stream.further));
    at = next;
    if (rules.size() == kOperandLimit) {
      m_diagnostics.add(Code::ReplaceLimit, Severity::error, positionAt(frame, at),
                        "more than 4096 replacement operands");
    }
    if (rules.size() <= kOperandLimit) rules.push_back(std::move(rule));
  }
  return at;
}

// Pseudo-text, a literal, or a word with its qualifiers and subscripts. False: there is none or it does not end.
bool Expander::readOperand(const Frame& frame, std::size_t& at, std::vector<Token>& words) const {
  const std::vector<Token>& tokens = frame.block->tokens;
  if (at >= tokens.size() || tokens[at].kind == TokenKind::period) return false;
  if (isSymbol(frame, at, "==")) {
    std::size_t end = at + 1;
    while (end < tokens.size() && !isSymbol(frame, end, "=="))
      ++end;
    if (end >= tokens.size()) return false;
    for (std::size_t i = at + 1; i < end; ++i)
      words.push_back(tokenAt(frame, i));
    at = end + 1;
    return true;
  }
  words.push_back(tokenAt(frame, at++));
  if (words.front().kind == TokenKind::symbol && at < tokens.size() && tokens[at].has(joined) &&
      tokens[at].kind == TokenKind::number) {
    words.push_back(tokenAt(frame, at++)); // a signed number
  }
  if (words.front().kind != TokenKind::word) return true;
  while ((isWord(frame, at, Keyword::Of) || isWord(frame, at, Keyword::In)) && at + 1 < tokens.size()) {
    words.push_back(tokenAt(frame, at));
    words.push_back(tokenAt(frame, at + 1));
    at += 2;
  }
  if (!isSymbol(frame, at, "(")) return true;
  std::size_t depth = 0;
  while (at < tokens.size()) {
    if (isSymbol(frame, at, "(")) ++depth;
    if (isSymbol(frame, at, ")")) --depth;
    words.push_back(tokenAt(frame, at++));
    if (depth == 0) break;
  }
  return true;
}

// REPLACE works on the text with all copybooks in it, from each statement to the next.
void Expander::applyReplace() {
  std::vector<Token> words = std::move(m_stream.tokens);
  std::vector<Token>& out = m_stream.tokens;
  out = {};
  out.reserve(words.size());
  std::vector<Token> stretch;
  std::unique_ptr<Replacing> active;
  std::vector<std::size_t> inForce; // lists; ALSO adds one, LAST OFF takes one away
  const auto activate = [&] {
    active.reset();
    std::vector<ReplaceRule> rules; // the newest first
    for (auto list = inForce.rbegin(); list != inForce.rend(); ++list)
      rules.insert(rules.end(), m_replaceLists[*list].rules.begin(), m_replaceLists[*list].rules.end());
    if (!rules.empty()) active = std::make_unique<Replacing>(std::move(rules), m_stream.names, m_stream.further);
  };
  const auto flush = [&] {
    if (active)
      active->apply(stretch, out, m_options.wordLimit);
    else
      out.insert(out.end(), stretch.begin(), stretch.end());
    stretch.clear();
  };
  std::size_t programs = 0; // that are open
  for (std::size_t i = 0; i < words.size(); ++i) {
    const Token& token = words[i];
    if (token.kind != kReplaceControl) {
      stretch.push_back(token);
      if (token.kind != TokenKind::word) continue;
      const Keyword word = keywordOf(token.text);
      programs += isUnitHeader(word);
      const bool ends =
          isUnit(word) && i > 0 && words[i - 1].kind == TokenKind::word && keywordOf(words[i - 1].text) == Keyword::End;
      if (!ends || programs == 0 || --programs > 0) continue;
      flush(); // a replacement holds up to the end of the outermost program
      inForce.clear();
      active.reset();
      continue;
    }
    flush();
    const bool ends = token.text == kReplaceOff || token.text == kReplaceLastOff;
    if (token.text == kReplaceLastOff && !inForce.empty()) {
      inForce.pop_back();
    } else if (ends || !m_replaceLists[token.text].also) {
      inForce.clear();
    }
    if (!ends) inForce.push_back(token.text);
    activate();
  }
  flush();
  if (out.size() >= m_options.wordLimit) spend(m_options.wordLimit, out.back().position());
}

} // namespace cobol
