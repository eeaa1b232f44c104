#include "Input.h"

#include <filesystem>

#include "Bytes.h"
#include "Commands.h"
#include "Console.h"
#include "Encodings.h"
#include "Names.h"
#include "Warnings.h"
#include "Words.h"

namespace program {

namespace {

using layerdata::CsvOptions;
using layerdata::Error;
using layerdata::HeaderLine;
using layerdata::LongLines;
using layerdata::ReadReport;
using layerdata::Table;

enum class Format { Csv, Tsv, Json, JsonLines };

/// By its ending, or else by how it begins.
Format FormatOf(const std::string& path, std::string_view bytes) {
  std::string ending = path.substr(std::min(path.rfind('.'), path.size()));
  for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (ending == ".csv" || ending == ".txt") return Format::Csv;
  if (ending == ".tsv" || ending == ".tab") return Format::Tsv;
  if (ending == ".json") return Format::Json;
  if (ending == ".jsonl" || ending == ".ndjson") return Format::JsonLines;
  const auto first = bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  const char begin = first == std::string_view::npos ? '\0' : bytes[first];
  return begin == '[' || begin == '{' ? Format::Json : Format::Csv;
}

Format FormatOf(const InputOptions& options, const std::string& path, std::string_view bytes) {
  if (options.format == "csv") return Format::Csv;
  if (options.format == "tsv") return Format::Tsv;
  if (options.format == "json") return Format::Json;
  if (options.format == "jsonl") return Format::JsonLines;
  return FormatOf(path, bytes);
}

bool IsUtf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

/// What the library counts as white space, and byte-order marks.
bool IsBlank(std::string_view bytes) {
  return bytes.find_first_not_of(" \t\r\n\xEF\xBB\xBF\xFF\xFE") == std::string_view::npos;
}

/// Text that would be read as something else than it is.
void RequireText(std::string_view bytes, std::uint32_t codePage, const std::string& source) {
  if (IsBlank(bytes)) throw Error(source + " is empty");
  if (codePage == kUtf16 || codePage == kUtf16BigEndian) return;
  if (codePage == 0 && IsUtf16(bytes)) return;
  if (bytes.find('\0') != std::string_view::npos)
    throw Error(source +
                " holds zero bytes: it is no text, or UTF-16 without a byte-order mark "
                "(--encoding utf-16le)");
  if (codePage != 0 && codePage != kUtf8) return;
  const std::size_t invalid = FindInvalidUtf8(bytes);
  if (invalid == std::string_view::npos) return;
  throw Error(AtLine(source, LineOf(bytes, invalid)) +
              "this is not UTF-8; --encoding says what it is, as in --encoding latin1");
}

/// Shows the progress of reading bytes, which leave memory meanwhile.
layerdata::Progress ProgressOfReading(const Bytes& bytes, const std::string& source) {
  constexpr std::uint64_t kStep = std::uint64_t{8} << 20;
  return [&bytes, show = ShowProgress("reading " + source), next = kStep](
             std::uint64_t done, std::uint64_t total) mutable {
    if (done >= next) {
      bytes.Forget();
      next = done + kStep;
    }
    return show(done, total);
  };
}

CsvOptions CsvOptionsOf(const InputOptions& options, Format format, std::uint32_t codePage) {
  CsvOptions csv;
  csv.separator = SeparatorOf(options.separator);
  if (format == Format::Tsv && csv.separator.empty()) csv.separator = "\t";
  csv.codePage = codePage;
  csv.header = options.header == "yes"  ? HeaderLine::Yes
               : options.header == "no" ? HeaderLine::No
                                        : HeaderLine::Detect;
  csv.longLines = options.longLines == "skip"   ? LongLines::Skip
                  : options.longLines == "keep" ? LongLines::Keep
                                                : LongLines::Fail;
  csv.textColumns = SplitLists(options.textColumns);
  csv.allText = options.allText;
  csv.unquoteNames = true;
  csv.maxRows = options.maxRows;
  return csv;
}

/// The text of the bytes as the report of a reading counts its lines.
class Utf8Text {
 public:
  Utf8Text(std::string_view bytes, std::uint32_t codePage) : view_(bytes) {
    if (codePage != kUtf16 && codePage != kUtf16BigEndian) return;
    std::u16string wide;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
      const auto first = static_cast<unsigned char>(bytes[i]);
      const auto second = static_cast<unsigned char>(bytes[i + 1]);
      wide += static_cast<char16_t>(codePage == kUtf16 ? second << 8 | first : first << 8 | second);
    }
    converted_ = layerdata::Text::FromUtf16(wide);
    view_ = converted_;
  }

  std::string_view View() const { return view_; }

 private:
  layerdata::Text converted_;
  std::string_view view_;
};

std::uint32_t CodePageUsed(std::string_view bytes, std::uint32_t codePage) {
  if (codePage != 0) return codePage;
  return bytes.starts_with("\xFF\xFE")   ? kUtf16
         : bytes.starts_with("\xFE\xFF") ? kUtf16BigEndian
                                         : kUtf8;
}

/// Finds out whether a failure was that of a line with too many values, and says more about it.
void RethrowLongLine(std::string_view bytes, CsvOptions csv, const std::string& source) {
  if (csv.longLines != LongLines::Fail) return;
  csv.longLines = LongLines::Keep;
  csv.progress = {};
  ReadReport report;
  const Table table = Table::ParseCsv(bytes, csv, &report);
  using layerdata::detail::Ask;
  if (Ask<std::uint64_t>(ld_read_report_get_long_line_count, report.Get()) == 0) return;
  std::uint64_t line = 0, values = 0;
  layerdata::detail::Call(ld_read_report_get_long_line, report.Get(), std::uint64_t{0}, &line,
                          &values);
  const Utf8Text text(bytes, CodePageUsed(bytes, csv.codePage));
  throw LongLineError(text.View(), source, table, line, values);
}

Table ParseCsv(const Bytes& bytes, CsvOptions csv, const std::string& source, ReadReport* report) {
  csv.progress = ProgressOfReading(bytes, source);
  try {
    return Table::ParseCsv(bytes.View(), csv, report);
  } catch (const Error&) {
    if (!IsInterrupted()) RethrowLongLine(bytes.View(), csv, source);
    throw;
  }
}

layerdata::JsonOptions JsonOptionsOf(const InputOptions& options, Format format,
                                     std::uint32_t codePage) {
  layerdata::JsonOptions json;
  json.codePage = codePage;
  if (format == Format::JsonLines) json.form = layerdata::JsonOptions::Form::Lines;
  json.textColumns = SplitLists(options.textColumns);
  json.allText = options.allText;
  json.maxRows = options.maxRows;
  return json;
}

/// The parser needs a text of its own. The library reads a file right into it.
Table ParseJson(const Bytes& bytes, const std::string& path, layerdata::JsonOptions json,
                ReadReport* report) {
  json.progress = ShowProgress("reading " + DisplayName(path));
  return bytes.IsMapped() ? Table::ReadJson(path, json, report)
                          : Table::ParseJson(bytes.View(), json, report);
}

}  // namespace

void AddTableArgument(CLI::App& command, const char* name, std::string& path) {
  command.add_option(name, path, "CSV, TSV or JSON file, or - for standard input")->required();
}

void AddInputOptions(CLI::App& command, InputOptions& options) {
  command.option_defaults()->group("Reading");
  command.add_option("--from", options.format, "Format of the input: auto, csv, tsv, json, jsonl")
      ->check(CLI::IsMember({"auto", "csv", "tsv", "json", "jsonl"}))
      ->capture_default_str();
  command.add_option("-s,--separator", options.separator,
                     "Between the values of a line: one or more bytes, \\t, or tab, comma, "
                     "semicolon, pipe, space; detected by default");
  command
      .add_option("-e,--encoding", options.encoding,
                  "As utf-8, utf-16le, latin1, windows-1252, cp437")
      ->capture_default_str();
  command.add_option("--header", options.header, "Whether the first line names the columns")
      ->check(CLI::IsMember({"detect", "yes", "no"}))
      ->capture_default_str();
  command
      .add_option("--long-lines", options.longLines,
                  "Whether a line with too many values is an error, is skipped, or is kept "
                  "without the extra values")
      ->check(CLI::IsMember({"fail", "skip", "keep"}))
      ->capture_default_str();
  command
      .add_option("--text", options.textColumns,
                  "Columns whose values stay text as written, so that 00501 keeps its zeros; "
                  "separated by commas")
      ->allow_extra_args(false);
  command.add_flag("--all-text", options.allText, "All columns are text");
  command.add_option("--max-rows", options.maxRows, "Read only the first rows")
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{1} << 62));
  command.option_defaults()->group("Options");
}

Table ParseTable(const Bytes& bytes, const std::string& path, const InputOptions& options) {
  const std::string source = DisplayName(path);
  const std::uint32_t codePage = CodePageOf(options.encoding);
  RequireText(bytes.View(), codePage, source);
  bytes.Forget();
  const Format format = FormatOf(options, path, bytes.View());
  const bool isJson = format == Format::Json || format == Format::JsonLines;
  ReadReport report;
  ReadReport* const wanted = isQuiet || !options.tellsLosses ? nullptr : &report;
  try {
    Table table = isJson ? ParseJson(bytes, path, JsonOptionsOf(options, format, codePage), wanted)
                         : ParseCsv(bytes, CsvOptionsOf(options, format, codePage), source, wanted);
    if (wanted) {
      const Utf8Text text(bytes.View(), CodePageUsed(bytes.View(), codePage));
      WarnOfLosses(table, report, text.View(), source, [&] { bytes.Forget(); });
    }
    return table;
  } catch (const Error& error) {
    if (std::string_view(error.what()).starts_with(source)) throw;
    throw Error(source + ": " + error.what(), error.Code());
  }
}

Table ReadTable(const std::string& path, const InputOptions& options) {
  CodePageOf(options.encoding);  // a wrong name is found before the work
  return ParseTable(Bytes(path), path, options);
}

std::string ReadDocument(const std::string& path) {
  const Bytes bytes(path);
  const std::string_view text = bytes.View();
  if (IsBlank(text)) throw Error(DisplayName(path) + " is empty");
  const std::size_t invalid = std::min(FindInvalidUtf8(text), text.find('\0'));
  if (invalid != std::string_view::npos)
    throw Error(AtLine(DisplayName(path), LineOf(text, invalid)) + "this is not UTF-8");
  return std::string(text);
}

}  // namespace program
