#include "C/Call.h"
#include "C/InputText.h"
#include "C/Options.h"
#include "C/ReadReport.h"
#include "C/Threads.h"
#include "C/Utf8.h"
#include "Tables/Csv/CsvReader.h"

using namespace Data;
using namespace Data::c;

namespace {

impl::ExtraValues ExtraValuesOf(ld_long_lines longLines) {
  constexpr impl::ExtraValues kAll[] = {impl::ExtraValues::Fail, impl::ExtraValues::DropLine,
                                        impl::ExtraValues::DropValues};
  return kAll[Enumerator<std::size_t>(longLines, LD_LONG_LINES_KEEP, "ld_long_lines")];
}

impl::CsvOptions OptionsOf(const ld_csv_read_options& options, bool findsChanges) {
  impl::CsvOptions read;
  if (options.separator) read.separator = options.separator;
  read.extraValues = ExtraValuesOf(options.long_lines);
  read.header = Enumerator<impl::CsvHeader>(options.header, LD_HEADER_LINE_NO, "ld_header_line");
  read.unquotesNames = options.unquote_names || options.header == LD_HEADER_LINE_YES;
  read.textColumns = ListedNames(options.text_columns, options.text_column_count);
  read.isAllText = options.all_text;
  if (options.max_rows != 0) read.maxRows = static_cast<std::size_t>(options.max_rows);
  read.findsChanges = findsChanges;
  return read;
}

/// @param source  what gives the bytes: the arguments of `InputBytes`
template <class... Source>
bool ReadCsv(const ld_csv_read_options* options, ld_table** table, ld_read_report** report,
             ld_error** error, Source... source) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(table);
    const auto known = ReadOptions(options);
    const auto read = OptionsOf(known, report != nullptr);
    const InputBytes bytes(source...);
    const InputText text(bytes, known.code_page);
    // Before the rows are there: the pages of a large text may leave memory as it is read.
    const bool isWellFormed = !report || IsUtf8(text.View());
    Threads threads(known.thread_count, {known.progress, known.progress_context});
    threads.Start(text.View().size());
    auto result = impl::ReadCsv(text.View(), read, threads);
    threads.Finish();
    if (report)
      GiveObject(report, Core::MakePtr<ReadReport>(result, text.CodePage(), isWellFormed).Get());
    GiveObject(table, result.table.Get());
    return true;
  });
}

}  // namespace

bool ld_csv_read(const void* data, uint64_t size, const ld_csv_read_options* options,
                 ld_table** table, ld_read_report** report, ld_error** error) {
  return ReadCsv(options, table, report, error, data, size);
}

bool ld_csv_read_file(const char* path, const ld_csv_read_options* options, ld_table** table,
                      ld_read_report** report, ld_error** error) {
  return ReadCsv(options, table, report, error, path);
}
