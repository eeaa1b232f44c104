#include "Commands.h"
#include "Input.h"
#include "Names.h"
#include "Output.h"

namespace program {

namespace {

using layerdata::Table;

struct Options {
  std::string input;
  InputOptions reading;
  OutputOptions writing;
  std::vector<std::string> columns, renames;
};

/// Gives columns new names, also to each other's.
void Rename(Table& table, const std::vector<std::string>& renames, const std::string& source) {
  std::vector<std::pair<std::string, std::string>> pairs;
  for (const std::string& rename : renames) {
    pairs.push_back(SplitPair(rename, [&](const auto& name) { return table.HasColumn(name); }));
    if (pairs.back().first == rename) throw UsageError("--rename takes OLD=NEW, not " + rename);
    RequireColumns(table, {pairs.back().first}, source);
  }
  for (const auto& [old, name] : pairs) table[old].SetName("\x01" + name);
  for (const auto& [old, name] : pairs) table["\x01" + name].SetName(name);
}

ExitCode Convert(const Options& options) {
  const Output output(options.writing);
  Table table =
      SelectColumns(ReadTable(options.input, options.reading), options.columns, options.input);
  Rename(table, options.renames, options.input);
  output.Write(table);
  return ExitCode::Success;
}

void AddOptions(CLI::App& command, Options& options) {
  AddTableArgument(command, "input", options.input);
  AddColumnsOption(command, options.columns);
  command.add_option("--rename", options.renames, "OLD=NEW; may be repeated")
      ->allow_extra_args(false);
  AddInputOptions(command, options.reading);
  AddOutputOptions(command, options.writing);
}

}  // namespace

void AddConvert(CLI::App& app, Job& job) {
  AddCommand<Options>(
      app, job, "convert", "Convert a table to another format",
      "  layerdata convert stations.csv -o stations.json\n"
      "  layerdata convert survey.txt -s '\\t' -e latin1 --text zip -t csv > survey.csv\n"
      "  layerdata convert stations.csv -c name,lon,lat --rename name=title -o s.geojson\n",
      AddOptions, Convert);
}

}  // namespace program
