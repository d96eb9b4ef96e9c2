#include "orvane/site/source_page.hpp"

#include <fmt/format.h>

#include "orvane/site/html.hpp"
#include "platform/files/files.hpp"

namespace orvane {

namespace {

constexpr std::string_view kWordClass[] = {"k", "", "n", "s", "p", "c", "m"}; // as cobol::WordKind
constexpr std::string_view kListClass[] = {"working", "affected", "clean"};

/// A stretch of a line with what is around it.
struct Piece {
  std::size_t from = 0, to = 0;
  std::string before, after;
};

class Lines {
 public:
  Lines(platform::WholeFile& out, const SourcePage& page, const cobol::SourceWords& source)
      : m_out(out), m_page(page), m_source(source), m_links(page.links) {
    std::sort(m_links.begin(), m_links.end(), [](const SiteLink& a, const SiteLink& b) {
      return std::pair(a.line, a.column) < std::pair(b.line, b.column);
    });
  }
  void write() {
    for (std::uint32_t line = 1; line <= m_source.lines.size(); ++line)
      writeLine(line);
  }

 private:
  void writeLine(std::uint32_t number) {
    const std::string& text = m_source.lines[number - 1];
    m_out.write(fmt::format("<span id=\"L{0}\"><a href=\"#L{0}\">{0}</a>", number));
    std::size_t at = 0;
    for (const Piece& piece : piecesOf(number, text)) {
      if (piece.from < at) continue;
      m_out.write(htmlText(std::string_view(text).substr(at, piece.from - at)));
      m_out.write(piece.before);
      m_out.write(htmlText(std::string_view(text).substr(piece.from, piece.to - piece.from)));
      m_out.write(piece.after);
      at = piece.to;
    }
    m_out.write(htmlText(std::string_view(text).substr(at)));
    m_out.write("</span>\n");
  }

  // Links first: a word that one lies over gives way.
  std::vector<Piece> piecesOf(std::uint32_t line, const std::string& text) {
    std::vector<Piece> pieces;
    for (; m_link < m_links.size() && m_links[m_link].line <= line; ++m_link)
      if (m_links[m_link].line == line) pieces.push_back(linkPiece(m_links[m_link], text));
    const std::size_t links = pieces.size();
    for (; m_word < m_source.words.size() && m_source.words[m_word].line <= line; ++m_word) {
      const cobol::SourceWord& word = m_source.words[m_word];
      const auto over = [&](const Piece& link) { return link.from < word.to && word.from < link.to; };
      if (std::any_of(pieces.begin(), pieces.begin() + static_cast<std::ptrdiff_t>(links), over)) continue;
      if (Piece piece = wordPiece(word, text); !piece.before.empty()) pieces.push_back(std::move(piece));
    }
    std::stable_sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) { return a.from < b.from; });
    return pieces;
  }

  Piece linkPiece(const SiteLink& link, const std::string& text) const {
    const std::size_t from = cobol::byteOfColumn(text, link.column);
    const std::size_t to = from + cobol::byteOfColumn(std::string_view(text).substr(from), link.length + 1);
    const SiteFile& target = m_page.files.at(link.target.file);
    // Pages of sources lie in one folder.
    std::string href = &target == &m_page.file ? "" : target.page.substr(target.page.rfind('/') + 1);
    if (link.target.line > 0) href += fmt::format("#L{}", link.target.line);
    const std::string list = listClass(link.line, link.column);
    return {from, to, fmt::format("<a{} href=\"{}\">", list.empty() ? "" : " class=\"" + list + "\"", href), "</a>"};
  }

  Piece wordPiece(const cobol::SourceWord& word, const std::string& text) const {
    Piece piece{word.from, word.to, "", ""};
    std::string name(kWordClass[static_cast<std::size_t>(word.kind)]);
    if (word.kind <= cobol::WordKind::name && !m_page.lists.empty()) {
      const auto column = static_cast<std::uint32_t>(columnOf(text, word.from));
      if (const std::string list = listClass(word.line, column); !list.empty()) name = list;
    }
    if (name.empty()) return piece;
    piece.before = fmt::format("<i class=\"{}\">", name);
    piece.after = "</i>";
    return piece;
  }

  static std::size_t columnOf(const std::string& text, std::size_t byte) {
    return 1 + static_cast<std::size_t>(std::count_if(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(byte),
                                                      [](char c) { return (c & 0xC0) != 0x80; }));
  }

  std::string listClass(std::uint32_t line, std::uint32_t column) const {
    const auto found = m_page.lists.find(sitePlace(line, column));
    return found == m_page.lists.end() ? "" : std::string(kListClass[static_cast<std::size_t>(found->second)]);
  }

  platform::WholeFile& m_out;
  const SourcePage& m_page;
  const cobol::SourceWords& m_source;
  std::vector<SiteLink> m_links;
  std::size_t m_link = 0;
  std::size_t m_word = 0;
};

std::string nameOf(const std::string& path) {
  return path.substr(path.find_last_of("\\/") + 1);
}

} // namespace

void writeSourcePage(const std::string& folder, const SourcePage& page, const cobol::Options& options) {
  std::string error;
  const auto source = cobol::readWords(page.file.native, options, page.file.format, error);
  platform::WholeFile out(folder + "/" + page.file.page);
  out.write(pageHead(nameOf(page.file.path) + " - " + page.project, "../Decor.css"));
  out.write(pageHeading(nameOf(page.file.path), page.project, "../index.html") + "\n");
  out.write(fmt::format("<p class=\"facts\"><code>{}</code>{}</p>\n", htmlText(page.file.path), page.facts));
  std::string remark = page.remark;
  if (!source)
    remark += fmt::format("<p class=\"warning\">This source cannot be read: {}.</p>\n", htmlText(error));
  else if (page.file.changed || source->hash != page.file.hash)
    remark += "<p class=\"warning\">This source has changed since its verification: links into it may miss their line, "
              "and its names are not linked. Verify the project and make the pages again.</p>\n";
  out.write(remark);
  out.write("<pre class=\"code\">");
  std::uint32_t lines = 0;
  if (source) {
    const bool fresh = source->hash == page.file.hash;
    Lines(out, fresh ? page : SourcePage{page.file, page.files, page.project, "", "", {}}, *source).write();
    lines = static_cast<std::uint32_t>(source->lines.size());
  }
  for (std::uint32_t line = lines + 1; line <= page.file.lines; ++line)
    out.write(fmt::format("<span id=\"L{}\"></span>", line));
  out.write("</pre>\n</body>\n</html>\n");
  out.finish();
}

} // namespace orvane
