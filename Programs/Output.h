#pragma once

#include <LayerData/Table.h>

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>

#include "Target.h"

namespace program {

/// How the result of a command is written.
struct OutputOptions {
  std::string path = "-";
  std::string format;
  std::string separator;
  std::string encoding = "utf-8";
  std::uint32_t indentation = 0;
  bool withoutHeader = false;
  bool windowsLineEnds = false;
  std::string longitude, latitude;
};

void AddOutputOptions(CLI::App& command, OutputOptions& options);

/// Writes tables as the options say. Everything that can be wrong with the options and the target
/// is found when it is made.
class Output {
 public:
  explicit Output(const OutputOptions& options);
  void Write(const layerdata::Table& table) const;

 private:
  enum class Format { Csv, Tsv, Json, JsonLines, GeoJson };

  Format FormatOf() const;
  layerdata::CsvWriteOptions Csv() const;
  layerdata::JsonWriteOptions Json() const;
  bool IsCsv() const { return format_ == Format::Csv || format_ == Format::Tsv; }
  bool WritePieces(const layerdata::Table& table) const;
  void WriteText(std::string_view text) const;

  OutputOptions options_;
  Target target_;
  Format format_;
  std::uint32_t codePage_;
};

}  // namespace program
