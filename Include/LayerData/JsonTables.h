#pragma once

#include <cstdint>
#include <utility>

#include "LayerData/Handle.h"
#include "LayerData/Progress.h"

namespace layerdata {

/// How a table is written as JSON; see `ld_json_write_options`.
struct JsonWriteOptions {
  bool lines = false;                 ///< JSON lines: an object on each line
  std::uint32_t indentation = 0;      ///< spaces for each level of an array
  ValueForm form = ValueForm::Exact;  ///< of the values
  std::uint32_t threads = 0;          ///< 0: as many as the process may use, for large tables
  Progress progress{};                ///< counts rows
};

namespace detail {

/// Writes with the function `write(options, &error)` or `write(options, &text, &error)`.
template <class... Result, class Write>
void WriteJson(const JsonWriteOptions& options, Write&& write, Result... result) {
  ProgressCall progress(options.progress);
  ld_json_write_options record{};
  record.size = sizeof record;
  record.layout = options.lines ? LD_JSON_LAYOUT_LINES : LD_JSON_LAYOUT_ARRAY;
  record.indentation = options.indentation;
  record.form = static_cast<ld_value_form>(options.form);
  record.thread_count = options.threads;
  record.progress = progress.Function();
  record.progress_context = &progress;
  progress.Run([&] { Call(write, &record, result...); });
}

}  // namespace detail
}  // namespace layerdata
