// Converts delimited text to JSON or CSV and prints a summary of the table to standard error.
//
//   CsvToJson airports.csv --output airports.json
//   CsvToJson --bad-lines keep --format csv < survey.txt > survey.csv

#include <CLI/CLI.hpp>
#include <cstdint>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "Core/Ptr.h"
#include "Core/ValueTypes.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IString.h"
#include "Data/Ranges.h"

namespace {

using Core::IErrorCode;
using Core::Ptr;
using Data::Interfaces::IColumn;
using Data::Interfaces::IJsonDocument;
using Data::Interfaces::IObjectList;
using Data::Interfaces::IString;
using Data::Interfaces::ITable;

struct Options {
  std::string input = "-";
  std::string output = "-";
  std::string separator;
  std::string badLines = "fail";
  std::string format = "json";
  std::int64_t preview = 0;
};

/// Throws the error of a library call that failed.
void Require(bool done, const Ptr<IErrorCode>& error) {
  if (!done) throw std::runtime_error(error->GetMessage());
}

// -- Reading --

std::string ReadAll(const std::string& path) {
  if (path == "-") return {std::istreambuf_iterator(std::cin), {}};
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("Cannot read " + path);
  return {std::istreambuf_iterator(file), {}};
}

struct Reading {
  Ptr<ITable> table;
  Ptr<IObjectList> problems;  // a message for each line with too many values
};

Reading Parse(const std::string& text, const Options& options) {
  Reading reading;
  Ptr<IErrorCode> error;
  const auto table = reading.table.Receive();
  if (!options.separator.empty()) {
    Require(Data_ParseCsvWithSeparator(text.data(), options.separator.c_str(), table, text.size(),
                                       error.Receive()),
            error);
  } else if (options.badLines == "fail") {
    Require(Data_ParseCsv(text.data(), text.size(), table, error.Receive()), error);
  } else {
    Require(Data_ParseCsvWithErrors(text.data(), table, reading.problems.Receive(), text.size(),
                                    options.badLines == "keep", error.Receive()),
            error);
  }
  return reading;
}

// -- Reporting --

std::vector<std::size_t> CountNulls(const Ptr<ITable>& table) {
  std::vector<std::size_t> nulls(Data::Columns(table).size());
  for (const Data::Row row : Data::Rows(table))
    for (std::size_t column = 0; column < nulls.size(); ++column)
      nulls[column] += row.IsNull(column);
  return nulls;
}

void PrintColumns(const Ptr<ITable>& table) {
  const auto nulls = CountNulls(table);
  for (IColumn* column : Data::Columns(table)) {
    const auto index = static_cast<std::size_t>(column->GetIndex());
    std::cerr << "  " << std::left << std::setw(20) << column->GetName() << " " << std::setw(10)
              << Core::GetValueTypeName(column->GetType()) << nulls[index] << " null\n";
  }
}

void PrintRows(const Ptr<ITable>& table, std::int64_t count) {
  for (const Data::Row row : Data::Rows(table)) {
    if (row.Index() == count) return;
    for (IColumn* column : Data::Columns(table))
      std::cerr << (column->GetIndex() ? " | " : "  ") << row.Get<std::string>(column);
    std::cerr << '\n';
  }
}

void PrintProblems(const Ptr<IObjectList>& problems) {
  for (std::uint64_t i = 0; problems && i < problems->GetCount(); ++i)
    std::cerr << "  " << Core::CastToInterface<IString>(problems->GetAt(i))->GetUtf8() << '\n';
}

void PrintSummary(const Reading& reading, const Options& options) {
  const auto problems = reading.problems ? reading.problems->GetCount() : 0;
  std::cerr << reading.table->GetRowCount() << " rows, " << reading.table->GetColumnCount()
            << " columns, " << problems << " problem lines\n";
  PrintColumns(reading.table);
  PrintProblems(reading.problems);
  PrintRows(reading.table, options.preview);
}

// -- Writing --

Ptr<IString> ToCsv(const Ptr<ITable>& table, const std::string& separator) {
  Ptr<IString> csv;
  Ptr<IErrorCode> error;
  Require(
      Data_ConvertTableToCsv(table.Get(), separator.c_str(), csv.Receive(), false, error.Receive()),
      error);
  return csv;
}

Ptr<IString> ToJson(const Ptr<ITable>& table) {
  Ptr<IJsonDocument> json;
  Ptr<IErrorCode> error;
  Require(Data_TableToJson(table.Get(), json.Receive(), error.Receive()), error);
  return json->GetContent();
}

void WriteAll(const std::string& path, const Ptr<IString>& text) {
  std::ofstream file;
  if (path != "-") file.open(path, std::ios::binary);
  std::ostream& stream = path == "-" ? std::cout : file;
  const char* bytes = text->GetUtf8();
  stream.write(bytes, static_cast<std::streamsize>(text->GetLength())) << std::flush;
  if (!stream) throw std::runtime_error("Cannot write " + path);
}

// -- Command line --

void Convert(const Options& options) {
  const Reading reading = Parse(ReadAll(options.input), options);
  PrintSummary(reading, options);
  WriteAll(options.output, options.format == "json" ? ToJson(reading.table)
                                                    : ToCsv(reading.table, options.separator));
}

void Describe(CLI::App& app, Options& options) {
  app.allow_windows_style_options(false);  // so that "/tmp/a.csv" is a path
  app.add_option("input", options.input, "Input file, or - for standard input")
      ->capture_default_str();
  app.add_option("-o,--output", options.output, "Output file, or - for standard output")
      ->capture_default_str();
  app.add_option("-f,--format", options.format, "Output format")
      ->check(CLI::IsMember({"json", "csv"}))
      ->capture_default_str();
  auto* badLines = app.add_option("-b,--bad-lines", options.badLines,
                                  "Whether a line with too many values is an error, is skipped, "
                                  "or is kept without the extra values")
                       ->check(CLI::IsMember({"fail", "skip", "keep"}))
                       ->capture_default_str();
  app.add_option("-s,--separator", options.separator, "Text between values; detected by default")
      ->excludes(badLines);
  app.add_option("-p,--preview", options.preview, "Number of rows to print in the summary");
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Options options;
    CLI::App app{"Converts delimited text to JSON or CSV."};
    Describe(app, options);
    CLI11_PARSE(app, argc, argv);
    Convert(options);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
