#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "cobol/conditions.hpp"
#include "cobol/copy_library.hpp"
#include "cobol/replacing.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// Puts the texts of copybooks and replacements into the words of a program. One walk with a stack of texts.
class Expander {
 public:
  Expander(TokenStream& stream, CopyLibrary& library, const Options& options, const ScanSettings& settings,
           Diagnostics& diagnostics);

  /// Fills the stream from the words of the program itself, whose names are already those of the stream.
  void run(TextBlock& main);
  /// What copybooks brought that the texts in front should have known: reading again with it gives other words.
  const ScanSettings& learned() const { return m_learned; }

 private:
  /// A copybook, however often it is copied.
  struct Copied {
    std::shared_ptr<const CopyText> text;
    std::uint16_t file = 0;             ///< index into TokenStream::files
    std::vector<NameId> names;          ///< its ids to those of the stream
    std::vector<std::uint16_t> further; ///< the same for Token::further; empty: it has none
  };
  /// A text that is being walked through.
  struct Frame {
    const TextBlock* block = nullptr;
    const Copied* copied = nullptr; ///< null for the program itself
    std::uint16_t file = 0;
    std::size_t at = 0;
    std::size_t mark = 0;
    std::vector<Token>* out = nullptr;
    std::vector<Token> own; ///< the text to replace in, when there is something to replace
    std::vector<ReplaceRule> rules;
    ScanSettings settings;
  };
  struct ReplaceList {
    std::vector<ReplaceRule> rules;
    bool also = false; ///< those in force stay
  };
  struct CopyRequest {
    std::string name;
    std::string library;
    Position at;
    bool isText = false; ///< written as a literal
    std::vector<ReplaceRule> rules;
  };

  void walk();
  void leave();
  void emit(Frame& frame, std::size_t to);
  void onMark(Frame& frame, const Mark& mark);
  void onCopy(Frame& frame, std::size_t at);
  void onReplace(Frame& frame, std::size_t at);
  void onSqlInclude(Frame& frame, std::size_t at);
  void onDirective(Frame& frame, const Directive& directive);
  void noteDefine(const Frame& frame, const Directive& directive);
  void include(Frame& frame, CopyRequest request);
  void enter(const std::string& path, CopyRequest& request, const Frame& outer, int& file);
  void applyReplace();
  void spend(std::size_t words, const Position& at);

  bool isWord(const Frame& frame, std::size_t at, Keyword word) const;
  bool isSymbol(const Frame& frame, std::size_t at, std::string_view text) const;
  std::string_view textAt(const Frame& frame, std::size_t at) const;
  Token tokenAt(const Frame& frame, std::size_t at) const;
  Position positionAt(const Frame& frame, std::size_t at) const;
  std::size_t readRules(const Frame& frame, std::size_t at, std::vector<ReplaceRule>& rules);
  bool readOperand(const Frame& frame, std::size_t& at, std::vector<Token>& words) const;
  std::uint16_t fileIndex(const TextBlock& block);
  const Copied* copiedOf(std::shared_ptr<const CopyText> text);
  std::vector<NameId> namesOf(const CopyText& copy);
  std::vector<std::uint16_t> furtherOf(const TextBlock& block, std::uint16_t file);

  TokenStream& m_stream;
  CopyLibrary& m_library;
  const Options& m_options;
  ScanSettings m_settings;
  ScanSettings m_learned;
  Diagnostics& m_diagnostics;
  Conditions m_conditions;
  std::vector<std::unique_ptr<Frame>> m_frames;
  std::unordered_map<std::string_view, std::uint16_t> m_fileIndexes; ///< by the path that a block holds
  std::unordered_map<const CopyText*, Copied> m_copied;
  std::set<std::string> m_defined; ///< names of constants
  std::vector<ReplaceList> m_replaceLists;
  std::size_t m_tokens = 0;
  bool m_spent = false;
};

} // namespace cobol
