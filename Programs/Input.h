#pragma once

#include <LayerData/Table.h>

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "Bytes.h"

namespace program {

/// How the data of a command is read.
struct InputOptions {
  std::string format = "auto";
  std::string separator;
  std::string encoding = "auto";
  std::string header = "detect";
  std::string longLines = "fail";
  std::vector<std::string> textColumns;
  bool allText = false;
  std::uint64_t maxRows = 0;
  bool tellsLosses = true;
};

/// Adds the argument that names a table.
void AddTableArgument(CLI::App& command, const char* name, std::string& path);
void AddInputOptions(CLI::App& command, InputOptions& options);

/// Reads a table from a file, or from standard input for "-", and tells what was lost.
/// @throws layerdata::Error that names the file, and the line where there is one
layerdata::Table ReadTable(const std::string& path, const InputOptions& options);

/// As `ReadTable`, from bytes that have been read.
layerdata::Table ParseTable(const Bytes& bytes, const std::string& path,
                            const InputOptions& options);

/// A document: valid UTF-8.
std::string ReadDocument(const std::string& path);

}  // namespace program
