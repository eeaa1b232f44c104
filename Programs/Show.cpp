#include <LayerData/Print.h>

#include <sstream>

#include "Bytes.h"
#include "Commands.h"
#include "Input.h"
#include "Names.h"
#include "System.h"
#include "Target.h"

namespace program {

namespace {

using layerdata::Table;

struct Options {
  std::string input;
  std::int64_t rows = 20;
  std::size_t width = 0, cellWidth = 32;
  std::vector<std::string> columns;
  InputOptions reading;
};

ExitCode Show(const Options& options) {
  const Target output("-");
  const Table table =
      SelectColumns(ReadTable(options.input, options.reading), options.columns, options.input);
  layerdata::PrintOptions print;
  print.rows = options.rows;
  print.width = options.width != 0 ? options.width : TerminalWidth();
  print.cellWidth = options.cellWidth;
  print.types = true;
  std::ostringstream text;
  layerdata::Print(text, table, print);
  output.Write(text.str());
  return ExitCode::Success;
}

void AddOptions(CLI::App& command, Options& options) {
  AddTableArgument(command, "input", options.input);
  command.add_option("-n,--rows", options.rows, "Number of rows")
      ->check(CLI::Range(std::int64_t{0}, std::int64_t{1'000'000'000}))
      ->capture_default_str();
  command.add_option("-w,--width", options.width, "Width of the output; that of the terminal")
      ->check(CLI::Range(1, 1'000'000));
  command.add_option("--cell-width", options.cellWidth, "Most of one column")
      ->check(CLI::Range(1, 1'000'000))
      ->capture_default_str();
  AddColumnsOption(command, options.columns);
  AddInputOptions(command, options.reading);
}

}  // namespace

void AddShow(CLI::App& app, Job& job) {
  AddCommand<Options>(app, job, "show", "Show the first rows and the types of the columns",
                      "  layerdata show stations.csv\n"
                      "  layerdata show stations.json -n 5 -c name,height\n",
                      AddOptions, Show);
}

}  // namespace program
