#include "C/ExactValues.h"
#include "C/Writing.h"
#include "C/WritingCells.h"
#include "Documents/JsonText.h"
#include "Documents/TableToJson.h"

using namespace Data;
using namespace Data::c;
using Core::ValueKind;
using impl::TextBuffer;
using Structures::_VARIANT;

namespace {

// -- The exact form --

class ExactJsonCells {
 public:
  explicit ExactJsonCells(const impl::TableCursor& table) : table_(table), dates_(table) {}

  template <class Row>
  bool Append(Row& row, const _VARIANT& cell, std::size_t column, TextBuffer& text) const;

 private:
  const impl::TableCursor& table_;
  DateColumns dates_;
};

/// A document whose root is an object or array, without white space; any other as a string.
/// @param content  followed by a zero byte
void AppendDocument(std::string_view content, TextBuffer& text) {
  TextBuffer json;
  impl::AppendCompactJson(json, impl::JsonTextOf(content));
  const char first = json.View().front();
  if (first == '{' || first == '[') {
    text.Append(json.View());
  } else {
    impl::AppendJsonString(text, content);
  }
}

void AppendInteger(const _VARIANT& cell, TextBuffer& text) {
  if (Core::TypeOf(cell) == Core::ValueType::Int64) {
    impl::AppendInteger(text, static_cast<std::int64_t>(cell.value[0]));
  } else if (const auto value = ExactInt64(cell)) {
    impl::AppendInteger(text, *value);
  } else {
    impl::AppendJsonString(text, ExactText(cell));
  }
}

template <class Row>
bool ExactJsonCells::Append(Row& row, const _VARIANT& cell, std::size_t column,
                            TextBuffer& text) const {
  if (!HasValue(cell)) return text.Append("null"), true;
  const auto appendString = [&](const impl::PaddedText& value) {
    impl::AppendJsonString(text, value);
  };
  switch (Core::KindOf(Core::TypeOf(cell))) {
    case ValueKind::SignedInteger:
    case ValueKind::UnsignedInteger:
    case ValueKind::WideInteger:
      return AppendInteger(cell, text), true;
    case ValueKind::Real:
      return impl::AppendJsonReal(text, Core::ToDouble(cell), table_, column), true;
    case ValueKind::Bool:
      return text.Append(Core::ToBool(cell) ? "true" : "false"), true;
    case ValueKind::DateTime: {
      const std::size_t size = text.Size();
      text.Put('"');
      if (dates_.Append(cell, column, text)) return text.Put('"'), true;
      text.CutTo(size);
      return row.UseText(cell, appendString);
    }
    case ValueKind::Document:
      if (Core::TypeOf(cell) == Core::ValueType::JsonDocument)
        return row.UseText(
            cell, [&](const impl::PaddedText& value) { AppendDocument(value.View(), text); });
      [[fallthrough]];
    default:
      return row.UseText(cell, appendString);
  }
}

// -- Options --

/// Checked options, ready to write a table.
class JsonJob {
 public:
  explicit JsonJob(const ld_json_write_options* given) : options_(ReadOptions(given)) {
    constexpr std::uint32_t kMostSpaces = 16;
    isExact_ = CheckedForm(options_) == LD_VALUE_FORM_EXACT;
    layout_.isLines =
        Enumerator<ld_json_layout>(options_.layout, LD_JSON_LAYOUT_LINES, "ld_json_layout") != 0;
    layout_.indentation = options_.indentation;
    if (layout_.indentation > kMostSpaces)
      throw std::runtime_error("The indentation is too large!");
    if (layout_.isLines && layout_.indentation != 0)
      throw std::runtime_error("JSON lines cannot be indented!");
  }

  const ld_json_write_options& Options() const { return options_; }
  void operator()(Interfaces::ITable& table, Core::Parts& parts, impl::TextOutput& output) const {
    if (!isExact_) return impl::WriteJsonTable(table, layout_, parts, output);
    impl::TableCursor cursor(table);
    impl::WriteJson(cursor, layout_, ExactJsonCells(cursor), parts, output);
  }

 private:
  ld_json_write_options options_;
  impl::JsonLayout layout_;
  bool isExact_;
};

}  // namespace

bool ld_json_write(ld_table* table, const ld_json_write_options* options, ld_string** result,
                   ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    const JsonJob job(options);
    WriteText(table, job.Options(), result, job);
    return true;
  });
}

bool ld_json_write_file(ld_table* table, const char* path, const ld_json_write_options* options,
                        ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    const JsonJob job(options);
    WriteFile(table, path, job.Options(), job);
    return true;
  });
}
