#include "Output.h"

#include "Commands.h"
#include "Console.h"
#include "Encodings.h"
#include "GeoJson.h"

namespace program {

using layerdata::Table;

void AddOutputOptions(CLI::App& command, OutputOptions& options) {
  command.option_defaults()->group("Writing");
  command.add_option("-o,--output", options.path, "Output file, or - for standard output")
      ->capture_default_str();
  command
      .add_option("-t,--to", options.format,
                  "Format of the output: csv, tsv, json, jsonl, geojson; by default what the "
                  "ending of the output file says, and csv for standard output")
      ->check(CLI::IsMember({"csv", "tsv", "json", "jsonl", "geojson"}));
  command.add_option("--output-separator", options.separator,
                     "Between the values of a line, as for --separator");
  command.add_option("--output-encoding", options.encoding, "As for --encoding")
      ->capture_default_str();
  command.add_option("--indent", options.indentation, "Spaces for each level of JSON")
      ->check(CLI::Range(0, 16));
  command.add_flag("--no-header", options.withoutHeader, "Leave out the line with the names");
  command.add_flag("--crlf", options.windowsLineEnds, "End lines as Windows does");
  command.add_option("--longitude", options.longitude,
                     "Column with the longitudes of GeoJSON points; by default the one named "
                     "longitude, lon, lng or x");
  command.add_option("--latitude", options.latitude,
                     "Column with the latitudes; by default the one named latitude, lat or y");
  command.option_defaults()->group("Options");
}

Output::Output(const OutputOptions& options)
    : options_(options),
      target_(options.path),
      format_(FormatOf()),
      codePage_(CodePageOf(options.encoding)) {
  try {  // what the library says of options, it says of a table without rows, too
    const Table nothing{"name"};
    IsCsv() ? nothing.ToCsv(Csv()) : nothing.ToJson(Json());
  } catch (const layerdata::Error& error) {
    throw UsageError(error.what());
  }
}

Output::Format Output::FormatOf() const {
  std::string name = options_.format;
  if (name.empty() && target_.IsStandardOutput()) return Format::Csv;
  if (name.empty()) name = target_.Path().substr(target_.Path().rfind('.') + 1);
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (name == "csv" || name == "txt") return Format::Csv;
  if (name == "tsv" || name == "tab") return Format::Tsv;
  if (name == "json") return Format::Json;
  if (name == "jsonl" || name == "ndjson") return Format::JsonLines;
  if (name == "geojson") return Format::GeoJson;
  throw UsageError("The ending of \"" + target_.Path() +
                   "\" says no format: give it with --to csv, tsv, json, jsonl or geojson");
}

layerdata::CsvWriteOptions Output::Csv() const {
  layerdata::CsvWriteOptions csv;
  csv.separator = SeparatorOf(options_.separator);
  if (format_ == Format::Tsv && csv.separator.empty()) csv.separator = "\t";
  csv.quoteNames = true;
  csv.header = !options_.withoutHeader;
  csv.windowsLineEnds = options_.windowsLineEnds;
  csv.progress = ShowProgress("writing " + target_.Path());
  return csv;
}

layerdata::JsonWriteOptions Output::Json() const {
  layerdata::JsonWriteOptions json;
  json.lines = format_ == Format::JsonLines;
  json.indentation = options_.indentation;
  json.progress = ShowProgress("writing " + target_.Path());
  return json;
}

void Output::Write(const Table& table) const {
  if (format_ == Format::GeoJson) {
    WriteText(ToGeoJson(table, options_.longitude, options_.latitude));
  } else if (codePage_ != kUtf8 || !WritePieces(table)) {
    WriteText(IsCsv() ? table.ToCsv(Csv()) : table.ToJson(Json()));
  }
  if (format_ == Format::Json && target_.IsStandardOutput() && codePage_ == kUtf8)
    target_.Write("\n");  // an array ends without one
}

/// The library writes to a path piece by piece: the whole text never stands in memory.
bool Output::WritePieces(const Table& table) const {
  return target_.WriteByPath([&](const std::string& path) {
    IsCsv() ? table.WriteCsv(path, Csv()) : table.WriteJson(path, Json());
  });
}

void Output::WriteText(std::string_view text) const {
  if (codePage_ == kUtf8) return target_.Write(text);
  target_.Write(Encode(text, codePage_, target_.Path()));
}

}  // namespace program
