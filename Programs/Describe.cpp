#include <LayerData/Print.h>

#include <algorithm>
#include <sstream>

#include "Bytes.h"
#include "Commands.h"
#include "Html.h"
#include "Input.h"
#include "Summary.h"
#include "Target.h"
#include "Words.h"

namespace program {

namespace {

using layerdata::Table;

struct Options {
  std::string input, html;
  InputOptions reading;
};

/// Blocks of eight heights; a range with any value is not empty.
std::string Histogram(const std::vector<Bar>& bars) {
  static constexpr const char* kBlocks[] = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
  std::uint64_t most = 1;
  for (const Bar& bar : bars) most = std::max(most, bar.count);
  std::string text;
  for (const Bar& bar : bars) text += kBlocks[(bar.count * 8 + most - 1) / most];
  return text;
}

void PrintRanges(std::ostream& out, const ColumnSummary& summary) {
  if (!summary.bars.empty())
    out << "  " << summary.min << " " << Histogram(summary.bars) << " " << summary.max << "\n";
  if (!summary.mean.empty())
    out << "  mean " << summary.mean << ", quartiles " << summary.q1 << ", " << summary.median
        << ", " << summary.q3 << "\n";
}

void PrintFrequencies(std::ostream& out, const ColumnSummary& summary) {
  constexpr std::size_t kLabel = 24, kBar = 24;
  std::size_t width = 0;
  for (const Bar& bar : summary.bars)
    width = std::max(width, layerdata::detail::CellText(bar.label, kLabel).width);
  for (const Bar& bar : summary.bars) {
    const layerdata::detail::CellText label(bar.label, kLabel);
    const std::size_t length =
        std::max<std::size_t>(1, kBar * bar.count / summary.bars.front().count);
    out << "  " << label.text << std::string(width - label.width, ' ') << " ";
    for (std::size_t i = 0; i < length; ++i) out << "█";
    out << " " << bar.count << "\n";
  }
  if (!summary.bars.empty() && summary.otherCount != 0)
    out << "  others " << summary.otherCount << "\n";
  if (summary.bars.empty() && summary.count != 0)
    out << "  from " << layerdata::detail::CellText(summary.min, kLabel).text << " to "
        << layerdata::detail::CellText(summary.max, kLabel).text << "\n";
}

void PrintSummary(std::ostream& out, const ColumnSummary& summary) {
  out << "\n"
      << summary.name << ": " << summary.type << ", " << Counted(summary.count, "value") << ", "
      << summary.distinct << " different";
  if (summary.nulls != 0) out << ", " << summary.nulls << " empty";
  out << "\n";
  summary.hasRanges ? PrintRanges(out, summary) : PrintFrequencies(out, summary);
}

ExitCode Describe(const Options& options) {
  const Target output(options.html.empty() ? "-" : options.html);
  const Table table = ReadTable(options.input, options.reading);
  const std::string source = DisplayName(options.input);
  const auto summaries = Summarize(table);
  if (!options.html.empty()) {
    output.Write(ToHtml(table, summaries, source.substr(source.find_last_of("/\\") + 1)));
    return ExitCode::Success;
  }
  std::ostringstream out;
  out << source << ": " << Counted(table.RowCount(), "row") << ", "
      << Counted(table.ColumnCount(), "column") << "\n";
  for (const ColumnSummary& summary : summaries) PrintSummary(out, summary);
  output.Write(out.str());
  return ExitCode::Success;
}

void AddOptions(CLI::App& command, Options& options) {
  AddTableArgument(command, "input", options.input);
  command.add_option("--html", options.html,
                     "Write one page with the distributions and the first rows to this file");
  AddInputOptions(command, options.reading);
}

}  // namespace

void AddDescribe(CLI::App& app, Job& job) {
  AddCommand<Options>(app, job, "describe",
                      "Describe each column: type, empty values, statistics, distribution",
                      "  layerdata describe stations.csv\n"
                      "  layerdata describe stations.csv --html stations.html\n",
                      AddOptions, Describe);
}

}  // namespace program
