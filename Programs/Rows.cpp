#include "Commands.h"
#include "Input.h"
#include "Names.h"
#include "Output.h"

namespace program {

namespace {

using layerdata::JoinKey;
using layerdata::JoinKind;
using layerdata::Order;
using layerdata::Table;

// -- sort --

struct SortOptions {
  std::string input;
  std::vector<std::string> keys;
  bool nullsFirst = false;
  InputOptions reading;
  OutputOptions writing;
};

/// A key as "name", "name:asc" or "name:desc".
layerdata::SortKey SortKeyOf(const std::string& text, const Table& table, bool nullsFirst) {
  const auto colon = text.rfind(':');
  const std::string order = colon == std::string::npos ? std::string() : text.substr(colon + 1);
  const bool hasOrder = !table.HasColumn(text) && (order == "asc" || order == "desc");
  const bool isDescending = hasOrder && order == "desc";
  return {hasOrder ? text.substr(0, colon) : text,
          isDescending ? nullsFirst ? Order::DescendingNullsFirst : Order::Descending
          : nullsFirst ? Order::AscendingNullsFirst
                       : Order::Ascending};
}

ExitCode Sort(const SortOptions& options) {
  const Output output(options.writing);
  const Table table = ReadTable(options.input, options.reading);
  std::vector<layerdata::SortKey> keys;
  for (const std::string& key : SplitLists(options.keys)) {
    keys.push_back(SortKeyOf(key, table, options.nullsFirst));
    RequireColumns(table, {keys.back().column}, options.input);
  }
  output.Write(table.SortBy(keys));
  return ExitCode::Success;
}

void AddSortOptions(CLI::App& command, SortOptions& options) {
  AddTableArgument(command, "input", options.input);
  command
      .add_option("-b,--by", options.keys,
                  "Columns to sort by, as NAME or NAME:desc; separated by commas")
      ->required()
      ->check(NamesSomething)
      ->allow_extra_args(false);
  command.add_flag("--nulls-first", options.nullsFirst, "Empty values come first, not last");
  AddInputOptions(command, options.reading);
  AddOutputOptions(command, options.writing);
}

// -- join --

struct JoinOptions {
  std::string left, right;
  std::vector<std::string> keys;
  std::string kind = "inner";
  InputOptions reading;
  OutputOptions writing;
};

JoinKind JoinKindOf(const std::string& name) {
  if (name == "left") return JoinKind::Left;
  if (name == "right") return JoinKind::Right;
  return name == "full" ? JoinKind::Full : JoinKind::Inner;
}

ExitCode Join(const JoinOptions& options) {
  const Output output(options.writing);
  if (options.left == "-" && options.right == "-")
    throw UsageError("Only one of the tables can come from standard input");
  const Table left = ReadTable(options.left, options.reading);
  const Table right = ReadTable(options.right, options.reading);
  std::vector<JoinKey> keys;
  for (const std::string& key : SplitLists(options.keys)) {
    const auto names = SplitPair(key, [&](const auto& name) { return left.HasColumn(name); });
    RequireColumns(left, {names.first}, options.left);
    RequireColumns(right, {names.second}, options.right);
    keys.emplace_back(names.first, names.second);
  }
  output.Write(left.Join(right, keys, JoinKindOf(options.kind)));
  return ExitCode::Success;
}

void AddJoinOptions(CLI::App& command, JoinOptions& options) {
  AddTableArgument(command, "left", options.left);
  command.add_option("right", options.right, "The other table")->required();
  command
      .add_option("--on", options.keys,
                  "Columns whose values are equal, as NAME or LEFT=RIGHT; separated by commas")
      ->required()
      ->check(NamesSomething)
      ->allow_extra_args(false);
  command
      .add_option("-k,--kind", options.kind,
                  "Which rows without a partner are kept: inner (none), left, right, full")
      ->check(CLI::IsMember({"inner", "left", "right", "full"}))
      ->capture_default_str();
  AddInputOptions(command, options.reading);
  AddOutputOptions(command, options.writing);
}

}  // namespace

void AddSort(CLI::App& app, Job& job) {
  AddCommand<SortOptions>(app, job, "sort", "Sort the rows of a table",
                          "  layerdata sort stations.csv --by country,height:desc\n"
                          "  layerdata sort - --by date -t jsonl < readings.csv\n",
                          AddSortOptions, Sort);
}

void AddJoin(CLI::App& app, Job& job) {
  AddCommand<JoinOptions>(app, job, "join", "Join two tables on columns with equal values",
                          "  layerdata join readings.csv stations.csv --on station=id\n"
                          "  layerdata join a.csv b.json --on id,year -k left -o both.csv\n",
                          AddJoinOptions, Join);
}

}  // namespace program
