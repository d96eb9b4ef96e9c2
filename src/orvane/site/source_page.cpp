#include "orvane/site/source_page.hpp"

#include <cerrno>
#include <cstring>

#include <fmt/format.h>

#include "cobol/shading.hpp"
#include "cobol/source_text.hpp"
#include "orvane/site/html.hpp"
#include "platform/files/files.hpp"

namespace orvane {

namespace {

// As cobol::Shade: margin, comment, directive, header, keyword, constant, number, literal, picture, embedded.
constexpr std::string_view kShadeClass[] = {"m", "c", "d", "h", "k", "v", "n", "l", "p", "e"};
constexpr std::string_view kListClass[] = {"working", "affected", "clean"};

/// The file as it lies there now.
struct Source {
  std::uint64_t hash = 0;
  cobol::ShadedText text;
};

std::optional<Source> readSource(const SiteFile& file, const cobol::Options& options, std::string& error) {
  std::optional<std::string> bytes = cobol::readBytes(file.native);
  if (!bytes) {
    error = std::strerror(errno);
    return std::nullopt;
  }
  cobol::Diagnostics remarks;
  const cobol::SourceText source = cobol::decode(std::move(*bytes), options, remarks);
  const auto format = file.format ? *file.format : cobol::detectFormat(source, remarks);
  return Source{source.file.hash, cobol::shade(source.text, format)};
}

// A column's byte; columns count characters.
std::size_t byteOf(std::string_view line, std::uint32_t column) {
  std::size_t at = 0;
  for (; column > 1 && at < line.size(); --column)
    do
      ++at;
    while (at < line.size() && (static_cast<unsigned char>(line[at]) & 0xC0) == 0x80);
  return at;
}

/// A piece of a line with what is around it.
struct Piece {
  std::uint32_t column = 0, length = 0;
  std::string before, after;
  std::uint32_t end() const { return column + length; }
};

class Lines {
 public:
  Lines(platform::WholeFile& out, const SourcePage& page, std::vector<SiteLink> links, const cobol::ShadedText& source)
      : m_out(out), m_page(page), m_source(source), m_links(std::move(links)) {
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
    m_out.write(fmt::format("<span id=\"L{0}\"><a href=\"#L{0}\">{0}</a>", number));
    std::string_view rest = m_source.lines[number - 1];
    std::uint32_t column = 1;
    const auto show = [&](std::uint32_t end) {
      const std::size_t bytes = byteOf(rest, end - column + 1);
      m_out.write(htmlText(rest.substr(0, bytes)));
      rest.remove_prefix(bytes);
      column = end;
    };
    for (const Piece& piece : piecesOf(number)) {
      if (piece.column < column) continue;
      show(piece.column);
      m_out.write(piece.before);
      show(piece.end());
      m_out.write(piece.after);
    }
    m_out.write(htmlText(rest));
    m_out.write("</span>\n");
  }

  // A shade that a link lies over gives way.
  std::vector<Piece> piecesOf(std::uint32_t line) {
    std::vector<Piece> pieces;
    for (; m_link < m_links.size() && m_links[m_link].line <= line; ++m_link)
      if (m_links[m_link].line == line) pieces.push_back(linkPiece(m_links[m_link]));
    const auto links = static_cast<std::ptrdiff_t>(pieces.size());
    for (const cobol::ShadedSpan& span : m_source.spans(line)) {
      const auto over = [&](const Piece& link) {
        return link.column < span.column + span.length && span.column < link.end();
      };
      if (std::any_of(pieces.begin(), pieces.begin() + links, over)) continue;
      pieces.push_back({span.column, span.length,
                        fmt::format("<i class=\"{}\">", kShadeClass[static_cast<std::size_t>(span.shade)]), "</i>"});
    }
    std::stable_sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) { return a.column < b.column; });
    return pieces;
  }

  Piece linkPiece(const SiteLink& link) const {
    std::string list;
    if (link.list >= 0) list = fmt::format(" class=\"{}\"", kListClass[static_cast<std::size_t>(link.list)]);
    if (link.target.file < 0) return {link.column, link.length, "<i" + list + ">", "</i>"};
    const SiteFile& target = m_page.files.at(link.target.file);
    // Pages of sources lie in one folder.
    std::string href = &target == &m_page.file ? "" : target.page.substr(target.page.rfind('/') + 1);
    if (link.target.line > 0) href += fmt::format("#L{}", link.target.line);
    return {link.column, link.length, fmt::format("<a{} href=\"{}\">", list, href), "</a>"};
  }

  platform::WholeFile& m_out;
  const SourcePage& m_page;
  const cobol::ShadedText& m_source;
  std::vector<SiteLink> m_links;
  std::size_t m_link = 0;
};

std::string nameOf(const std::string& path) {
  return path.substr(path.find_last_of("\\/") + 1);
}

} // namespace

void writeSourcePage(const std::string& folder, const SourcePage& page, const cobol::Options& options) {
  std::string error;
  const auto source = readSource(page.file, options, error);
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
    Lines(out, page, fresh ? page.links : std::vector<SiteLink>(), source->text).write();
    lines = static_cast<std::uint32_t>(source->text.lines.size());
  }
  for (std::uint32_t line = lines + 1; line <= page.file.lines; ++line)
    out.write(fmt::format("<span id=\"L{}\"></span>", line));
  out.write("</pre>\n</body>\n</html>\n");
  out.finish();
}

} // namespace orvane
