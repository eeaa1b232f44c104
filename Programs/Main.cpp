// layerdata: converts, shows, describes, checks, joins and sorts tables of attributes.

#include <LayerData/layerdata.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>

#include "Commands.h"
#include "Console.h"
#include "SchemaDocument.h"
#include "System.h"

namespace {

using namespace program;

constexpr const char* kFooter =
    "Exit codes: 0 success, 1 failure, 2 wrong usage, 3 a rule of a schema is broken, 130 "
    "interrupted.\n"
    "layerdata COMMAND --help tells the options and examples of a command.\n";

void AddCommands(CLI::App& app, Job& job) {
  app.set_version_flag("--version", std::string("layerdata ") + ld_version_text());
  app.add_flag("-q,--quiet", isQuiet, "No warnings and no progress, only failures");
  app.footer(kFooter);
  app.require_subcommand(1);
  app.fallthrough();
  AddConvert(app, job);
  AddShow(app, job);
  AddDescribe(app, job);
  AddSchema(app, job);
  AddCheck(app, job);
  AddJoin(app, job);
  AddSort(app, job);
  AddHash(app, job);
  AddUuid(app, job);
}

ExitCode Complain(const char* message, ExitCode code) {
  std::fprintf(stderr, "layerdata: %s\n", message);
  return code;
}

/// The command that the user meant, for the hint at its help.
std::string CommandOf(const CLI::App& app) {
  std::string name = "layerdata";
  const CLI::App* command = &app;
  for (auto used = command->get_subcommands(); !used.empty(); used = command->get_subcommands()) {
    command = used.front();
    name += " " + command->get_name();
  }
  return name;
}

ExitCode Parse(CLI::App& app, std::vector<std::string> arguments) {
  try {
    std::ranges::reverse(arguments);
    app.parse(std::move(arguments));
    return ExitCode::Success;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      app.exit(error);
      std::cout.flush();
      return std::cout ? ExitCode::Success
                       : Complain("Cannot write standard output", ExitCode::Failure);
    }
    const std::string hint = CommandOf(app) + " --help tells what it understands";
    return Complain((std::string(error.what()) + "\n" + hint).c_str(), ExitCode::Usage);
  }
}

ExitCode Run(const std::vector<std::string>& arguments) {
  Job job;
  CLI::App app{"Converts, shows, describes, checks, joins and sorts tables of attributes.",
               "layerdata"};
  AddCommands(app, job);
  const ExitCode parsed = Parse(app, arguments);
  return parsed == ExitCode::Success && job ? job() : parsed;
}

ExitCode RunAndComplain(const std::vector<std::string>& arguments) {
  try {
    const ExitCode code = Run(arguments);
    return IsInterrupted() ? Complain("interrupted", ExitCode::Interrupted) : code;
  } catch (const UsageError& error) {
    return Complain(error.what(), ExitCode::Usage);
  } catch (const BrokenSchema& error) {
    return Complain(error.what(), ExitCode::RuleBroken);
  } catch (const std::bad_alloc&) {
    return Complain("there is not enough memory", ExitCode::Failure);
  } catch (const std::exception& error) {
    if (IsInterrupted()) return Complain("interrupted", ExitCode::Interrupted);
    const bool isMemory = std::string_view(error.what()).ends_with("std::bad_alloc");
    return Complain(isMemory ? "there is not enough memory" : error.what(), ExitCode::Failure);
  }
}

}  // namespace

int main(int argc, char** argv) {
  PrepareStreams();
  return static_cast<int>(RunAndComplain(Arguments(argc, argv)));
}
