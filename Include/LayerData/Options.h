#pragma once

#include "LayerData/Handle.h"
#include "LayerData/Progress.h"
#include "LayerData/ReadReport.h"

/// What the options of all formats share.
namespace layerdata::detail {

/// Reads with the function `read(options, &table, &report, &error)`.
/// @param record  what only this format has
template <class Record, class Options, class Read>
Handle<ld_table> ReadTable(Record record, const Options& options, ReadReport* report, Read&& read) {
  const auto textColumns = Names(options.textColumns);
  ProgressCall progress(options.progress);
  record.size = sizeof record;
  record.code_page = options.codePage;
  record.thread_count = options.threads;
  record.text_columns = textColumns.data();
  record.text_column_count = textColumns.size();
  record.all_text = options.allText;
  record.max_rows = options.maxRows;
  record.progress = progress.Function();
  record.progress_context = &progress;
  return progress.ReadTable(record, report, read);
}

/// Writes with the function `write(options, &error)` or `write(options, &text, &error)`.
/// @param record  what only this format has
template <class Record, class Options, class Write, class... Result>
void WriteTable(Record record, const Options& options, Write&& write, Result... result) {
  ProgressCall progress(options.progress);
  record.size = sizeof record;
  record.form = static_cast<ld_value_form>(options.form);
  record.thread_count = options.threads;
  record.progress = progress.Function();
  record.progress_context = &progress;
  progress.Run([&] { Call(write, &record, result...); });
}

}  // namespace layerdata::detail
