#include "Html.h"

#include <LayerData/Print.h>

#include <algorithm>

#include "Words.h"

namespace program {

namespace {

using layerdata::Column;
using layerdata::Table;

constexpr std::int64_t kRows = 50;

constexpr std::string_view kHead = R"html(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<style>
:root {
  --page: #f6f7f9; --card: #fff; --ink: #1a1f26; --soft: #5d6875; --line: #dfe3e8;
  --bar: #2f6fc4; --track: #e8ecf1; --null: #c4722a;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #14171b; --card: #1d2227; --ink: #e6e9ed; --soft: #9aa5b1; --line: #323941;
    --bar: #6ba5ec; --track: #2b323a; --null: #e09a5a;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; padding: 24px clamp(12px, 4vw, 40px) 48px; max-width: 1240px;
  background: var(--page); color: var(--ink); font: 15px/1.5 system-ui, sans-serif;
}
h1 { margin: 0; font-size: 1.5rem; overflow-wrap: anywhere; }
h2 { margin: 32px 0 12px; font-size: 1.1rem; }
h3 { margin: 0; font-size: 1rem; overflow-wrap: anywhere; }
p { margin: 0; color: var(--soft); }
.cards { display: grid; gap: 16px; grid-template-columns: repeat(auto-fill, minmax(min(100%, 330px), 1fr)); }
.card { min-width: 0; padding: 16px; background: var(--card); border: 1px solid var(--line); border-radius: 8px; }
.title { display: flex; gap: 8px; justify-content: space-between; align-items: baseline; }
.type { flex: none; padding: 0 8px; border: 1px solid var(--line); border-radius: 99px; color: var(--soft); font-size: .8rem; }
.share { display: flex; height: 4px; margin: 8px 0; background: var(--null); border-radius: 2px; overflow: hidden; }
.share span { background: var(--track); }
svg { display: block; width: 100%; margin-top: 12px; }
svg rect { fill: var(--bar); }
svg .track { fill: var(--track); }
.ends { display: flex; gap: 16px; justify-content: space-between; color: var(--soft); font-size: .8rem; }
.ends span { min-width: 0; overflow-wrap: anywhere; }
dl { display: grid; grid-template-columns: auto 1fr; gap: 0 12px; margin: 12px 0 0; font-size: .85rem; }
dt { color: var(--soft); }
dd { margin: 0; text-align: right; font-variant-numeric: tabular-nums; overflow-wrap: anywhere; }
.values { width: 100%; margin-top: 12px; border-collapse: collapse; font-size: .85rem; table-layout: fixed; }
.values td { padding: 2px 0; white-space: nowrap; overflow: hidden; text-overflow: ellipsis; }
.values td:nth-child(2):not(:last-child) { width: 36%; padding: 0 8px; }
.values td:last-child { width: 22%; text-align: right; font-variant-numeric: tabular-nums; }
.values svg { margin: 0; }
.rows { overflow-x: auto; background: var(--card); border: 1px solid var(--line); border-radius: 8px; }
.rows table { min-width: 100%; border-collapse: collapse; font-size: .85rem; }
.rows th, .rows td { max-width: 320px; padding: 4px 12px; border-bottom: 1px solid var(--line); text-align: left; white-space: nowrap; overflow: hidden; text-overflow: ellipsis; }
.rows tr:last-child td { border-bottom: 0; }
.rows th small { display: block; color: var(--soft); font-weight: 400; }
.rows .number { text-align: right; font-variant-numeric: tabular-nums; }
.rows .null { color: var(--soft); }
</style>
)html";

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

/// A count in groups of three digits.
std::string Grouped(std::int64_t count) {
  std::string text = std::to_string(count);
  for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, "\u202F");
  return text;
}

std::string GroupedCount(std::int64_t count, const char* what) {
  return Counted(count, what, Grouped(count));
}

std::string Tip(const Bar& bar) {
  return "<title>" + Escaped(bar.label) + ": " + Grouped(static_cast<std::int64_t>(bar.count)) +
         "</title>";
}

/// Bars side by side, each with a label that shows under the pointer.
std::string Histogram(const ColumnSummary& summary) {
  constexpr std::size_t kHeight = 80, kWidth = 20;
  std::uint64_t most = 1;
  for (const Bar& bar : summary.bars) most = std::max(most, bar.count);
  std::string svg = "<svg role=\"img\" aria-label=\"Distribution of " + Escaped(summary.name) +
                    "\" viewBox=\"0 0 " + std::to_string(kWidth * summary.bars.size()) + " " +
                    std::to_string(kHeight) + "\" height=\"80\" preserveAspectRatio=\"none\">";
  for (std::size_t i = 0; i < summary.bars.size(); ++i) {
    const Bar& bar = summary.bars[i];
    const std::uint64_t height = (bar.count * kHeight + most - 1) / most;
    const std::string x = std::to_string(kWidth * i + 1), width = std::to_string(kWidth - 2);
    svg += "<rect class=\"track\" x=\"" + x + "\" y=\"79\" width=\"" + width +
           "\" height=\"1\"/><rect x=\"" + x + "\" y=\"" + std::to_string(kHeight - height) +
           "\" width=\"" + width + "\" height=\"" + std::to_string(height) + "\">" + Tip(bar) +
           "</rect>";
  }
  return svg + "</svg><div class=\"ends\"><span>" + Escaped(summary.min) + "</span><span>" +
         Escaped(summary.max) + "</span></div>";
}

std::string ValueRow(const Bar& bar, std::uint64_t most) {
  return "<tr><td title=\"" + Escaped(bar.label) + "\">" + Escaped(bar.label) +
         "</td><td><svg viewBox=\"0 0 100 10\" height=\"10\" preserveAspectRatio=\"none\">"
         "<rect class=\"track\" width=\"100\" height=\"10\"/><rect width=\"" +
         std::to_string((100 * bar.count + most - 1) / most) + "\" height=\"10\"/></svg></td><td>" +
         Grouped(static_cast<std::int64_t>(bar.count)) + "</td></tr>";
}

std::string Values(const ColumnSummary& summary) {
  if (summary.bars.empty()) return {};
  std::string html = "<table class=\"values\">";
  for (const Bar& bar : summary.bars) html += ValueRow(bar, summary.bars.front().count);
  if (summary.otherCount != 0)
    html += "<tr><td colspan=\"2\"><i>others</i></td><td>" +
            Grouped(static_cast<std::int64_t>(summary.otherCount)) + "</td></tr>";
  return html + "</table>";
}

void AddFact(std::string& html, const char* name, const std::string& value) {
  if (!value.empty()) html += std::string("<dt>") + name + "</dt><dd>" + Escaped(value) + "</dd>";
}

std::string Facts(const ColumnSummary& summary) {
  std::string html;
  if (!summary.hasRanges && summary.bars.empty()) {
    AddFact(html, "First", summary.min);
    AddFact(html, "Last", summary.max);
  }
  AddFact(html, "Mean", summary.mean);
  AddFact(html, "First quartile", summary.q1);
  AddFact(html, "Median", summary.median);
  AddFact(html, "Third quartile", summary.q3);
  return html.empty() ? html : "<dl>" + html + "</dl>";
}

/// The part of the values that are not Null, in percent.
std::string FilledShare(const ColumnSummary& summary) {
  const std::int64_t all = summary.count + summary.nulls;
  return std::to_string(
      all == 0 ? 0.0 : 100.0 * static_cast<double>(summary.count) / static_cast<double>(all));
}

std::string Card(const ColumnSummary& summary) {
  std::string html = "<section class=\"card\"><div class=\"title\"><h3>" + Escaped(summary.name) +
                     "</h3><span class=\"type\">" + summary.type + "</span></div>";
  html += "<div class=\"share\"><span style=\"width:" + FilledShare(summary) + "%\"></span></div>";
  html += "<p>" + GroupedCount(summary.count, "value") + ", " + Grouped(summary.distinct) +
          " different, " + Grouped(summary.nulls) + " empty</p>";
  const bool hasHistogram = summary.hasRanges && !summary.bars.empty();
  html += hasHistogram ? Histogram(summary) : Values(summary);
  return html + Facts(summary) + "</section>\n";
}

bool IsNumeric(const ColumnSummary& summary) {
  return summary.type == "integer" || summary.type == "number";
}

std::string HeaderRow(const std::vector<ColumnSummary>& summaries) {
  std::string html = "<tr>";
  for (const ColumnSummary& summary : summaries)
    html += std::string(IsNumeric(summary) ? "<th class=\"number\">" : "<th>") +
            Escaped(summary.name) + "<small>" + summary.type + "</small></th>";
  return html + "</tr>\n";
}

std::string CellOf(const layerdata::Cell& cell, bool isNumeric, bool isDay) {
  if (cell.IsNull())
    return isNumeric ? "<td class=\"number null\">–</td>" : "<td class=\"null\">–</td>";
  std::string text = cell.ToText();
  if (isDay) text.resize(std::min(text.find('T'), text.size()));
  const std::string escaped = Escaped(text);
  return std::string(isNumeric ? "<td class=\"number\">" : "<td>") + escaped + "</td>";
}

std::string FirstRows(const Table& table, const std::vector<ColumnSummary>& summaries) {
  const std::int64_t rows = std::min(kRows, table.RowCount());
  std::string html = "<h2>First " + GroupedCount(rows, "row") +
                     "</h2>\n<div class=\"rows\"><table>" + HeaderRow(summaries);
  for (const layerdata::Row row : table.Head(rows)) {
    html += "<tr>";
    for (std::size_t i = 0; i < summaries.size(); ++i)
      html += CellOf(row[i], IsNumeric(summaries[i]), summaries[i].holdsDays);
    html += "</tr>\n";
  }
  return html + "</table></div>\n";
}

}  // namespace

std::string ToHtml(const Table& table, const std::vector<ColumnSummary>& summaries,
                   const std::string& title) {
  std::string html(kHead);
  html += "<title>" + Escaped(title) + "</title>\n</head>\n<body>\n<h1>" + Escaped(title) +
          "</h1>\n<p>" + GroupedCount(table.RowCount(), "row") + ", " +
          GroupedCount(table.ColumnCount(), "column") +
          "</p>\n<h2>Columns</h2>\n<div class=\"cards\">\n";
  for (const ColumnSummary& summary : summaries) html += Card(summary);
  return html + "</div>\n" + FirstRows(table, summaries) + "</body>\n</html>\n";
}

}  // namespace program
