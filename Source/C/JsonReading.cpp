#include <algorithm>
#include <optional>

#include "C/Call.h"
#include "C/InputText.h"
#include "C/Options.h"
#include "C/ReadReport.h"
#include "C/Threads.h"
#include "Documents/JsonReader.h"
#include "Documents/JsonText.h"
#include "Documents/JsonToTable.h"

using namespace Data;
using namespace Data::c;

namespace {

impl::JsonTableOptions OptionsOf(const ld_json_read_options& options, bool findsChanges) {
  impl::JsonTableOptions read;
  read.textColumns = ListedNames(options.text_columns, options.text_column_count);
  read.isAllText = options.all_text;
  if (options.max_rows != 0) read.maxRows = static_cast<std::size_t>(options.max_rows);
  read.findsChanges = findsChanges;
  return read;
}

bool AreLines(ld_json_form form, std::string_view text) {
  return form == LD_JSON_FORM_LINES || (form == LD_JSON_FORM_DETECT && impl::IsJsonLines(text));
}

std::size_t LineOf(std::string_view text, std::size_t position) {
  return 1 + static_cast<std::size_t>(std::ranges::count(text.substr(0, position), '\n'));
}

/// The number of lines that are not empty.
std::size_t CountLines(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1);
    if (text.substr(0, end + 1).find_first_not_of(" \t\r\n") != std::string_view::npos) ++count;
    text.remove_prefix(end + 1);
  }
  return count;
}

/// Where a text stops being JSON.
std::optional<std::size_t> FindInvalid(std::string_view text) {
  rapidjson::BaseReaderHandler<> ignoring;
  impl::JsonParser parser(text, ignoring);
  return parser.ParseAll() ? std::nullopt : std::optional(parser.Position());
}

[[noreturn]] void ThrowAtLine(const char* message, std::size_t line) {
  throw std::runtime_error(message + (" (line " + std::to_string(line) + ")"));
}

impl::JsonTableResult ReadDocument(std::string_view text, const impl::JsonTableOptions& options,
                                   Core::Parts& parts) {
  try {
    return impl::ReadJsonTable(text, options, parts);
  } catch (const impl::JsonFailure& failure) {
    // A text that is no JSON fails for that reason, wherever the fault is.
    if (const auto invalid = FindInvalid(text))
      ThrowAtLine("JsonDocument content is not valid", LineOf(text, *invalid));
    ThrowAtLine(failure.what(), LineOf(text, failure.position));
  }
}

impl::JsonTableResult ReadLines(std::string_view text, const impl::JsonTableOptions& options,
                                Core::Parts& parts) {
  try {
    return impl::ReadJsonLines(text, options, parts);
  } catch (const impl::JsonFailure& failure) {
    ThrowAtLine(failure.isNotJson ? "JsonDocument content is not valid" : failure.what(),
                LineOf(text, failure.position));
  }
}

/// @param source  what gives the bytes: the arguments of `InputBytes`
template <class... Source>
bool ReadJson(const ld_json_read_options* options, ld_table** table, ld_read_report** report,
              ld_error** error, Source... source) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(table);
    const auto known = ReadOptions(options);
    const auto read = OptionsOf(known, report != nullptr);
    Enumerator<ld_json_form>(known.form, LD_JSON_FORM_LINES, "ld_json_form");
    const InputBytes bytes(source...);
    InputText input(bytes, known.code_page);
    input.Terminate();
    const std::string_view text = impl::JsonTextOf(input.View());
    Threads threads(known.thread_count, {known.progress, known.progress_context});
    threads.Start(text.size());
    auto result = AreLines(known.form, text) ? ReadLines(text, read, threads)
                                             : ReadDocument(text, read, threads);
    threads.Finish();
    if (report)
      GiveObject(report, Core::MakePtr<ReadReport>(result, CountLines(text), input).Get());
    GiveObject(table, result.table.Get());
    return true;
  });
}

}  // namespace

bool ld_json_read(const void* data, uint64_t size, const ld_json_read_options* options,
                  ld_table** table, ld_read_report** report, ld_error** error) {
  return ReadJson(options, table, report, error, data, size);
}

bool ld_json_read_file(const char* path, const ld_json_read_options* options, ld_table** table,
                       ld_read_report** report, ld_error** error) {
  return ReadJson(options, table, report, error, path);
}
