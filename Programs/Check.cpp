#include <LayerData/ColumnData.h>

#include <algorithm>
#include <tuple>

#include "Bytes.h"
#include "Commands.h"
#include "Console.h"
#include "Input.h"
#include "Rules.h"
#include "SchemaDocument.h"
#include "Target.h"

namespace program {

namespace {

using layerdata::Column;
using layerdata::ColumnData;
using layerdata::Table;

struct Options {
  std::string input, schema;
  std::uint64_t most = 100;
  InputOptions reading;
};

struct Broken {
  std::int64_t row;
  std::int32_t column;
  std::string text;
};

/// The cells that break rules, the first ones of each column with their problems.
class Findings {
 public:
  explicit Findings(std::uint64_t most) : most_(most) {}

  void BeginColumn() { inColumn_ = 0; }
  /// @param text  gives the words for the finding
  template <class Text>
  void Add(std::int64_t row, std::int32_t column, Text&& text) {
    ++count_;
    if (++inColumn_ <= most_) broken_.push_back({row, column, text()});
  }

  std::uint64_t Count() const { return count_; }
  /// The first ones in the order of the rows.
  std::string Lines(const std::string& source) {
    std::ranges::sort(broken_, {}, [](const Broken& b) { return std::tuple(b.row, b.column); });
    if (broken_.size() > most_) broken_.resize(static_cast<std::size_t>(most_));
    std::string lines;
    for (const Broken& broken : broken_) lines += source + ": " + broken.text + "\n";
    if (count_ > broken_.size())
      lines += source + ": " + std::to_string(count_ - broken_.size()) + " more\n";
    return lines;
  }

 private:
  std::uint64_t most_, count_ = 0, inColumn_ = 0;
  std::vector<Broken> broken_;
};

/// Whether values of this format obey the rule whatever they are.
bool IsObeyedBy(const ColumnRule& rule, ld_column_format format) {
  if (!rule.allowed.empty() || rule.width > 0) return false;
  switch (rule.type) {
    case LD_VALUE_TYPE_INT64:
      return format == LD_COLUMN_FORMAT_INT64;
    case LD_VALUE_TYPE_DOUBLE:
      return format == LD_COLUMN_FORMAT_INT64 || format == LD_COLUMN_FORMAT_DOUBLE;
    case LD_VALUE_TYPE_DATE_TIME:
      return format == LD_COLUMN_FORMAT_DATE_TIME;
    case LD_VALUE_TYPE_STRING:
      return true;
    default:
      return false;
  }
}

/// Rows are counted from 1, without the header.
std::string AtCell(std::int64_t row, const std::string& column) {
  return "row " + std::to_string(row + 1) + ", column " + column + ": ";
}

void CheckColumn(const ColumnRule& rule, const Column& column, Findings& findings) {
  findings.BeginColumn();
  const ColumnData data(column);
  const bool obeysType = IsObeyedBy(rule, data.Format());
  if (obeysType && (rule.isNullable || data.NullCount() == 0)) return;
  const auto add = [&](std::int64_t row, const std::string& problem) {
    findings.Add(row, column.Index(), [&] { return AtCell(row, rule.name) + problem; });
  };
  for (std::int64_t row = 0; row < static_cast<std::int64_t>(data.Size()); ++row) {
    if (data.IsNull(static_cast<std::size_t>(row))) {
      if (!rule.isNullable) add(row, "there is no value");
    } else if (!obeysType) {
      const layerdata::Value value(column[row]);
      if (const std::string problem = ProblemOf(rule, value); !problem.empty())
        add(row, "'" + value.ToText() + "' " + problem);
    }
  }
}

/// Columns of texts are read as written, whatever their values look like.
InputOptions ReadingFor(const std::vector<ColumnRule>& rules, const Bytes& bytes,
                        const Options& options) {
  InputOptions first = options.reading;
  first.maxRows = 1;
  first.tellsLosses = false;
  const Table head = ParseTable(bytes, options.input, first);
  InputOptions reading = options.reading;
  for (const ColumnRule& rule : rules) {
    const bool isText =
        rule.type == LD_VALUE_TYPE_STRING || rule.type == LD_VALUE_TYPE_JSON_DOCUMENT;
    if (isText && head.HasColumn(rule.name)) reading.textColumns.push_back('"' + rule.name + '"');
  }
  return reading;
}

void WarnOfOtherColumns(const Table& table, const std::vector<ColumnRule>& rules,
                        const std::string& source) {
  for (const Column column : table.Columns())
    if (std::ranges::find(rules, column.Name(), &ColumnRule::name) == rules.end())
      Warn(source + ": the schema has no column '" + column.Name() + "'");
}

ExitCode Check(const Options& options) {
  const std::vector<ColumnRule> rules = ReadRules(options.schema);
  if (options.input == "-" && options.schema == "-")
    throw UsageError("Only one of data and schema can come from standard input");
  const std::string source = DisplayName(options.input);
  const Bytes bytes(options.input);
  const Table table = ParseTable(bytes, options.input, ReadingFor(rules, bytes, options));
  WarnOfOtherColumns(table, rules, source);
  Findings findings(options.most);
  for (const ColumnRule& rule : rules) {
    if (table.HasColumn(rule.name)) {
      CheckColumn(rule, table[rule.name], findings);
    } else {
      findings.BeginColumn();
      findings.Add(-1, 0, [&] { return "there is no column '" + rule.name + "'"; });
    }
  }
  Target("-").Write(findings.Lines(source));
  return findings.Count() == 0 ? ExitCode::Success : ExitCode::RuleBroken;
}

void AddOptions(CLI::App& command, Options& options) {
  AddTableArgument(command, "data", options.input);
  command.add_option("--schema", options.schema, "Schema document, or - for standard input")
      ->required();
  command.add_option("--most", options.most, "How many cells are told at most")
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{1'000'000'000}))
      ->capture_default_str();
  AddInputOptions(command, options.reading);
}

}  // namespace

void AddCheck(CLI::App& app, Job& job) {
  AddCommand<Options>(app, job, "check",
                      "Tell each cell that breaks a rule of a schema: type, empty values, allowed "
                      "values, width",
                      "  layerdata check stations.csv --schema stations.schema.json\n", AddOptions,
                      Check);
}

}  // namespace program
