#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "LayerData/Handle.h"
#include "LayerData/Options.h"
#include "LayerData/Progress.h"
#include "LayerData/ReadReport.h"

namespace layerdata {

/// How JSON is read into a table; see `ld_json_read_options`. The defaults detect whether the text
/// is one document or JSON lines.
struct JsonOptions {
  /// The form of a JSON text.
  enum class Form : std::uint32_t {
    Detect = LD_JSON_FORM_DETECT,
    Document = LD_JSON_FORM_DOCUMENT,  ///< one value
    Lines = LD_JSON_FORM_LINES         ///< an object on each line
  };

  std::uint32_t codePage = 0;              ///< 0: by the byte-order mark, UTF-8 without one
  Form form = Form::Detect;                ///< of the text
  std::vector<std::string> textColumns{};  ///< whose cells stay text
  bool allText = false;                    ///< whether all columns are text columns
  std::uint64_t maxRows = 0;               ///< 0: no limit
  std::uint32_t threads = 0;               ///< for JSON lines; 0: as many as the process may use
  Progress progress{};                     ///< counts bytes
};

/// How a table is written as JSON; see `ld_json_write_options`.
struct JsonWriteOptions {
  bool lines = false;                 ///< JSON lines: an object on each line
  std::uint32_t indentation = 0;      ///< spaces for each level of an array
  ValueForm form = ValueForm::Exact;  ///< of the values
  std::uint32_t threads = 0;          ///< 0: as many as the process may use, for large tables
  Progress progress{};                ///< counts rows
};

namespace detail {

/// Reads with the function `read(options, &table, &report, &error)`.
template <class Read>
Handle<ld_table> ReadJson(const JsonOptions& options, ReadReport* report, Read&& read) {
  ld_json_read_options record{};
  record.form = static_cast<ld_json_form>(options.form);
  return ReadTable(record, options, report, read);
}

/// Writes with the function `write(options, &error)` or `write(options, &text, &error)`.
template <class... Result, class Write>
void WriteJson(const JsonWriteOptions& options, Write&& write, Result... result) {
  ld_json_write_options record{};
  record.layout = options.lines ? LD_JSON_LAYOUT_LINES : LD_JSON_LAYOUT_ARRAY;
  record.indentation = options.indentation;
  WriteTable(record, options, write, result...);
}

}  // namespace detail
}  // namespace layerdata
