#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

/// The commands of the program. Each function adds one with its options; parsing the command line
/// sets `job` to the work of the command that it names.
namespace program {

enum class ExitCode {
  Success = 0,
  Failure = 1,       ///< something could not be read, written or done
  Usage = 2,         ///< the command line asks for something that does not exist
  RuleBroken = 3,    ///< the data or the document does not obey its rules
  Interrupted = 130  ///< by Ctrl-C
};

/// A command line that can be parsed but makes no sense.
struct UsageError : std::runtime_error {
  using runtime_error::runtime_error;
};

using Job = std::function<ExitCode()>;

void AddConvert(CLI::App& app, Job& job);
void AddShow(CLI::App& app, Job& job);
void AddDescribe(CLI::App& app, Job& job);
void AddSchema(CLI::App& app, Job& job);
void AddCheck(CLI::App& app, Job& job);
void AddJoin(CLI::App& app, Job& job);
void AddSort(CLI::App& app, Job& job);
void AddHash(CLI::App& app, Job& job);
void AddUuid(CLI::App& app, Job& job);

/// Adds a command whose work is `run(options)`.
/// @param examples  lines for the end of its help
template <class Options, class AddOptions, class Run>
CLI::App* AddCommand(CLI::App& app, Job& job, const char* name, const char* description,
                     const char* examples, AddOptions&& addOptions, Run run) {
  CLI::App* command = app.add_subcommand(name, description);
  const auto options = std::make_shared<Options>();
  addOptions(*command, *options);
  command->footer(std::string("Examples:\n") + examples);
  command->callback([&job, options, run] { job = [options, run] { return run(*options); }; });
  return command;
}

}  // namespace program
