#include <LayerData/Schema.h>

#include "Bytes.h"
#include "Commands.h"
#include "Console.h"
#include "Input.h"
#include "SchemaDocument.h"
#include "Target.h"
#include "Words.h"

namespace program {

namespace {

// -- infer --

struct InferOptions {
  std::string input, title, output = "-";
  InputOptions reading;
};

/// The name of a file without its folder and ending.
std::string TitleOf(const std::string& path) {
  if (path == "-") return "Table";
  const std::string name = path.substr(path.find_last_of("/\\") + 1);
  return name.substr(0, name.rfind('.'));
}

ExitCode Infer(const InferOptions& options) {
  const Target output(options.output);
  const auto table = ReadTable(options.input, options.reading);
  const std::string title = options.title.empty() ? TitleOf(options.input) : options.title;
  output.Write(layerdata::Schema::Infer(table, title).ToJson().ToText().ToString() + "\n");
  return ExitCode::Success;
}

void AddInferOptions(CLI::App& command, InferOptions& options) {
  AddTableArgument(command, "input", options.input);
  command.add_option("--title", options.title, "Title of the schema; the name of the file");
  command.add_option("-o,--output", options.output, "Output file, or - for standard output")
      ->capture_default_str();
  AddInputOptions(command, options.reading);
}

// -- check --

struct CheckOptions {
  std::string document;
};

ExitCode Check(const CheckOptions& options) {
  const auto rules = ReadRules(options.document);
  if (!isQuiet)
    Target("-").Write(DisplayName(options.document) + " is a schema of " +
                      Counted(rules.size(), "column") + "\n");
  return ExitCode::Success;
}

void AddCheckOptions(CLI::App& command, CheckOptions& options) {
  command.add_option("document", options.document, "Schema document, or - for standard input")
      ->required();
}

}  // namespace

void AddSchema(CLI::App& app, Job& job) {
  CLI::App* schema = app.add_subcommand("schema", "Make and check schema documents");
  schema->require_subcommand(1);
  AddCommand<InferOptions>(*schema, job, "infer", "Write the schema that a table obeys",
                           "  layerdata schema infer stations.csv -o stations.schema.json\n",
                           AddInferOptions, Infer);
  AddCommand<CheckOptions>(*schema, job, "check", "Check that a document is a schema",
                           "  layerdata schema check stations.schema.json\n", AddCheckOptions,
                           Check);
}

}  // namespace program
