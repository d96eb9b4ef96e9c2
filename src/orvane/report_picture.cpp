#include "orvane/report_picture.hpp"

#include <fmt/format.h>

#include "orvane/report_texts.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

using platform::Node;

// Measures in units of the picture; its width is fixed, its height grows with the bars.
constexpr int kWidth = 920;
constexpr int kOver = 10;      // how far a share above 100% reaches beyond the scale
constexpr int kDeclared = 842; // right edges of the figures
constexpr int kUsed = 912;
constexpr int kRow = 22, kBar = 7;
constexpr int kHead = 46; // headings of the bars
constexpr int kFoot = 24;
constexpr int kLegend = 150; // width of an entry
constexpr int kSky = 150, kSkyTop = 24, kSkyHeight = 100;
constexpr std::size_t kMostBars = 40;
constexpr std::size_t kMostColumns = 460; // of the skyline
constexpr std::size_t kLabel = 30;        // letters
constexpr std::size_t kLabelEnd = 10;     // of a cut name; programs of a family differ at their ends
constexpr double kLetter = 7.3;           // width
constexpr int kSteps = 5;                 // of a scale

struct Share {
  std::string program, declared, used; // as the report prints them
  double declarations = 0, usages = 0; // percent
};

class Picture {
 public:
  Picture(platform::Document& document, const std::vector<ReportColumn>& columns, std::vector<Share> shares)
      : m_document(document), m_columns(columns), m_shares(std::move(shares)),
        m_bars(std::min(m_shares.size(), kMostBars)), m_top(m_shares.size() > kMostBars ? kSky : 0) {
    for (const Share& share : m_shares)
      m_above += share.declarations > 0 || share.usages > 0 ? 1 : 0;
    std::size_t letters = 8;
    for (std::size_t i = 0; i < m_bars; ++i)
      letters = std::max(letters, std::min(kLabel, displayWidth(m_shares[i].program)));
    m_left = 20 + static_cast<int>(kLetter * static_cast<double>(letters));
    m_width = kDeclared - 70 - m_left;
    m_scale = scaleFor(m_shares);
  }

  Node draw() {
    const int height = m_top + kHead + static_cast<int>(m_bars) * kRow + kFoot;
    Node svg = element("svg", {{"viewBox", fmt::format("0 0 {} {}", kWidth, height)},
                               {"role", "img"},
                               {"aria-labelledby", "picture-title picture-text"}});
    Node title = element("title", {{"id", "picture-title"}});
    title.setText(ownText("picture"));
    svg.appendChild(title);
    Node description = element("desc", {{"id", "picture-text"}});
    description.setText(inWords());
    svg.appendChild(description);
    drawLegend(svg);
    if (m_top > 0) drawSkyline(svg);
    drawGrid(svg);
    for (std::size_t i = 0; i < m_bars; ++i)
      drawBars(svg, m_shares[i], m_top + kHead + static_cast<int>(i) * kRow);
    const std::string foot = m_shares.size() > m_bars ? number("largest", m_bars, m_shares.size())
                                                      : number("above", m_above, m_shares.size());
    text(svg, m_left, height - 6, "faint", foot);
    return svg;
  }

 private:
  // Up to 10, 25, 50 or 100%: small shares are told apart as well.
  static int scaleFor(const std::vector<Share>& shares) {
    double most = 0;
    for (const Share& share : shares)
      most = std::max({most, share.declarations, share.usages});
    for (const int scale : {10, 25, 50})
      if (most <= scale) return scale;
    return 100;
  }

  using Attributes = std::vector<std::pair<const char*, std::string>>;

  Node element(const char* name, const Attributes& attributes) const {
    Node node = m_document.createElement(name);
    for (const auto& [key, value] : attributes)
      node.setAttribute(key, value);
    return node;
  }
  void add(Node& parent, const char* name, const Attributes& attributes) const {
    parent.appendChild(element(name, attributes));
  }
  void text(Node& parent, int x, int y, const char* style, const std::string& words) const {
    Node node = element("text", {{"x", std::to_string(x)}, {"y", std::to_string(y)}});
    if (*style) node.setAttribute("class", style);
    node.setText(words);
    parent.appendChild(node);
  }
  static std::string number(const char* key, std::size_t first, std::size_t second) {
    return platform::fillTemplate(ownText(key), {std::to_string(first), std::to_string(second)});
  }
  const std::string& caption(std::size_t percentage) const { return m_columns[percentage].caption; }

  std::string inWords() const {
    std::string words = number("above", m_above, m_shares.size());
    for (std::size_t i = 0; i < std::min<std::size_t>(3, m_bars); ++i)
      words += fmt::format("; {}: {} {}, {} {}", m_shares[i].program, caption(0), m_shares[i].declared, caption(1),
                           m_shares[i].used);
    return words;
  }

  void drawGrid(Node& svg) const {
    const int top = m_top + kHead - 6;
    const int bottom = m_top + kHead + static_cast<int>(m_bars) * kRow;
    for (int step = 0; step <= kSteps; ++step) {
      const int x = m_left + m_width * step / kSteps;
      add(svg, "path", {{"class", "grid"}, {"d", fmt::format("M{} {}V{}", x, top, bottom)}});
      text(svg, x, top - 6, "middle", fmt::format("{}%", m_scale * step / kSteps));
    }
  }

  // On top of the picture, whichever part stands there.
  void drawLegend(Node& svg) const {
    const int left = m_top > 0 ? kWidth - 20 - 2 * kLegend : m_left;
    for (const int part : {0, 1}) {
      const int x = left + part * kLegend;
      add(svg, "rect",
          {{"x", std::to_string(x)},
           {"y", "5"},
           {"width", "10"},
           {"height", "10"},
           {"class", part == 0 ? "declared" : "used"}});
      text(svg, x + 15, 14, "", caption(static_cast<std::size_t>(part)));
    }
  }

  void drawBars(Node& svg, const Share& share, int top) const {
    Node row = element("g", {});
    Node whole = m_document.createElement("title"); // a cut name whole, where the pointer rests
    whole.setText(fmt::format("{}: {} {}, {} {}", share.program, caption(0), share.declared, caption(1), share.used));
    row.appendChild(whole);
    text(row, m_left - 10, top + 12, "name", label(share.program));
    drawBar(row, share.declarations, top, "declared");
    drawBar(row, share.usages, top + kBar + 1, "used");
    text(row, kDeclared, top + 12, share.declarations > 100 ? "figure over" : "figure", share.declared);
    text(row, kUsed, top + 12, share.usages > 100 ? "figure over" : "figure", share.used);
    svg.appendChild(row);
  }

  // A share above 100% ends in a point beyond the scale.
  void drawBar(Node& row, double percent, int top, const char* style) const {
    if (percent <= 0) return;
    const double length = std::max(1.0, m_width * percent / m_scale);
    std::string shape;
    if (percent > 100)
      shape = fmt::format("M{} {}h{}l{} {}l-{} {}h-{}z", m_left, top, m_width, kOver, kBar / 2.0, kOver, kBar / 2.0,
                          m_width);
    else
      shape = fmt::format("M{} {}h{:.1f}v{}h-{:.1f}z", m_left, top, length, kBar, length);
    add(row, "path", {{"class", style}, {"d", shape}});
  }

  static std::string label(const std::string& name) {
    if (displayWidth(name) <= kLabel) return name;
    const std::size_t letters = platform::countCodePoints(name);
    std::size_t end = std::min(kLabelEnd, letters);
    std::string_view last = std::string_view(name).substr(platform::firstCodePoints(name, letters - end).size());
    while (displayWidth(last) > kLabelEnd)
      last = std::string_view(name).substr(platform::firstCodePoints(name, letters - --end).size());
    std::size_t begin = kLabel;
    while (displayWidth(platform::firstCodePoints(name, begin)) + 1 + displayWidth(last) > kLabel)
      --begin;
    return std::string(platform::firstCodePoints(name, begin)) + "…" + std::string(last);
  }

  // Every program from left to right; a column stands for several when there are many and shows the largest of them.
  void drawSkyline(Node& svg) const {
    const int base = kSkyTop + kSkyHeight;
    const int whole = kWidth - 60;
    text(svg, 40, 14, "", ownText("all"));
    for (const int step : {0, 1}) {
      const int y = base - kSkyHeight * step;
      add(svg, "path", {{"class", "grid"}, {"d", fmt::format("M40 {}h{}", y, whole)}});
      text(svg, 34, y + 4, "end", fmt::format("{}%", m_scale * step));
    }
    const std::size_t columns = std::min(m_shares.size(), kMostColumns);
    std::string used = fmt::format("M40 {}", base);
    std::string declared;
    for (std::size_t i = 0; i < columns; ++i) {
      const auto largest = [&](double Share::*share) {
        double most = 0;
        for (std::size_t k = i * m_shares.size() / columns; k < (i + 1) * m_shares.size() / columns; ++k)
          most = std::max(most, m_shares[k].*share);
        return base - kSkyHeight * std::min(most / m_scale, 1.0);
      };
      const double right = 40 + whole * static_cast<double>(i + 1) / static_cast<double>(columns);
      used += fmt::format("V{:.1f}H{:.1f}", largest(&Share::usages), right);
      declared += fmt::format("{}{:.1f}H{:.1f}", i == 0 ? "M40 " : "V", largest(&Share::declarations), right);
    }
    add(svg, "path", {{"class", "used"}, {"d", used + fmt::format("V{}z", base)}});
    add(svg, "path", {{"class", "declared-line"}, {"d", declared}});
    text(svg, kWidth - 20, base + 16, "end", number("above", m_above, m_shares.size()));
  }

  platform::Document& m_document;
  std::vector<ReportColumn> m_columns; ///< the two percentages
  std::vector<Share> m_shares;         ///< the largest first
  std::size_t m_bars;
  int m_top;       ///< where the bars' part begins
  int m_left = 0;  ///< where the bars begin
  int m_width = 0; ///< of a bar as long as the scale
  int m_scale = 100;
  std::size_t m_above = 0;
};

} // namespace

platform::Node reportPicture(platform::Document& document, const std::vector<ReportColumn>& columns,
                             RecordFile& records) {
  std::vector<std::size_t> percentages;
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (columns[i].kind == FieldKind::percent) percentages.push_back(i);
  if (percentages.size() != 2 || records.count() == 0) return {};
  std::vector<Share> shares;
  records.rewind();
  while (const auto record = records.next()) {
    const std::string& declared = (*record)[percentages[0]];
    const std::string& used = (*record)[percentages[1]];
    shares.push_back({xmlText(record->front()), xmlText(platform::trimmed(declared)), xmlText(platform::trimmed(used)),
                      percentageOf(declared).value_or(0), percentageOf(used).value_or(0)});
  }
  std::stable_sort(shares.begin(), shares.end(), [](const Share& a, const Share& b) {
    return a.usages != b.usages ? a.usages > b.usages : a.declarations > b.declarations;
  });
  return Picture(document, {columns[percentages[0]], columns[percentages[1]]}, std::move(shares)).draw();
}

} // namespace orvane
