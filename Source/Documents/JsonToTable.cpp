#include "Documents/JsonToTable.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "Core/VariantRecord.h"
#include "DateTime/DateTimeImpl.h"
#include "Documents/JsonDocumentImpl.h"
#include "Documents/JsonReader.h"
#include "Documents/JsonWriter.h"
#include "Tables/CellLimit.h"
#include "Tables/ValueTypeDetection.h"
#include "Text/TextValue.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

using Core::ObjectPool;

_VARIANT MakeCell(ObjectPool&) { return Core::MakeNull(); }
_VARIANT MakeCell(ObjectPool&, bool value) { return Core::MakeInteger(ValueType::Bool, value); }
_VARIANT MakeCell(ObjectPool&, std::int64_t value) {
  return Core::MakeInteger(ValueType::Int64, value);
}
/// Called only for integers above the range of Int64.
_VARIANT MakeCell(ObjectPool&, std::uint64_t) {
  throw std::runtime_error("Unsupported variant type");
}
_VARIANT MakeCell(ObjectPool&, double value) { return Core::MakeDouble(value); }
_VARIANT MakeCell(ObjectPool& pool, const char* begin, std::size_t length, bool) {
  const std::string_view text(begin, length);
  CalendarFields fields;
  if (!DetectDateTime(text, fields)) return MakeTextValue(text, &pool);
  return Core::MakeReference(ValueType::DateTime, MakeDateTime(fields, &pool).Detach());
}

_VARIANT MakeTextCell(ObjectPool&, std::string_view) { return Core::MakeNull(); }
_VARIANT MakeTextCell(ObjectPool&, std::string_view, bool value) {
  return MakeTextValue(value ? "true" : "false");
}
_VARIANT MakeTextCell(ObjectPool& pool, std::string_view number, auto) {
  return MakeTextValue(number, &pool);
}
_VARIANT MakeTextCell(ObjectPool& pool, std::string_view, const char* begin, std::size_t length,
                      bool) {
  return MakeTextValue({begin, length}, &pool);
}

/// How the text of a value differs from the one that its cell gives.
/// @param number  its text if it is a number
std::optional<TextChange> ChangeOf(std::string_view number, const _VARIANT& cell) {
  switch (Core::TypeOf(cell)) {
    case ValueType::DateTime:
      return TextChange::DateForm;
    case ValueType::Int64:
    case ValueType::Double:
      return ChangeOfNumber(number, cell);
    default:
      return std::nullopt;
  }
}

/// The text of a value; of a scalar that can change, a number or a string.
std::string_view TextOf(std::string_view number, auto...) { return number; }
std::string_view TextOf(std::string_view, const char* begin, std::size_t length, bool) {
  return {begin, length};
}

/// Finds the column of each member of an object. Most objects list their members in the same order,
/// so a name is first compared with the column that followed the same member last time.
class MemberColumns {
 public:
  MemberColumns(TableImpl& table, CellLimit& limit) : table_(table), limit_(limit) {}

  void StartObject() { next_ = 0; }
  ColumnImpl& Next(std::string_view name) {
    if (next_ >= followers_.size()) followers_.resize(next_ + 1);
    ColumnImpl*& follower = followers_[next_];
    if (!follower || follower->Name() != name) follower = &Column(name.substr(0, name.find('\0')));
    next_ = static_cast<std::size_t>(follower->Index()) + 1;
    return *follower;
  }

 private:
  ColumnImpl& Column(std::string_view name) {
    const std::size_t count = table_.ColumnCount();
    ColumnImpl& column = table_.AddNamedColumn(name);
    if (table_.ColumnCount() != count) limit_.AddColumn(table_.RowCount(), count + 1);
    return column;
  }

  TableImpl& table_;
  CellLimit& limit_;
  /// `followers_[0]` is the column of the first member; `followers_[i + 1]` is the column that last
  /// followed the column with index i.
  std::vector<ColumnImpl*> followers_;
  std::size_t next_ = 0;
};

/// The least memory that the objects of a table typically take per byte of text.
constexpr std::size_t kBytesPerCharacter = 2;

/// Handles the events of a text and fills a table. The table owns each cell from the start, so
/// nothing leaks if reading fails.
class TableBuilder {
 public:
  /// @param textSize  of the part that is read
  /// @param limit     of all parts
  TableBuilder(std::size_t textSize, CellLimit& limit, const JsonTableOptions& options,
               Core::Parts& parts)
      : options_(options),
        limit_(limit),
        isPlain_(options.textColumns.empty() && !options.isAllText && !options.findsChanges),
        parts_(parts),
        pool_(options.maxRows == SIZE_MAX ? kBytesPerCharacter * textSize : 0),
        table_(Core::MakePtr<TableImpl>()),
        columns_(*table_, limit),
        nested_(nestedText_) {}

  using Parser = JsonParser<TableBuilder>;
  /// The parser that calls this handler, and its text.
  void Follow(const Parser& parser, std::string_view text) {
    parser_ = &parser;
    text_ = text;
  }

  TableImpl& Table() { return *table_; }
  /// Makes the objects that follow rows of one table, as those of an array are.
  void StartRows(const char* name) { StartTable(Root::Array, name); }
  /// Whether all rows that were asked for are read; the parser is then stopped.
  bool IsFull() const { return isFull_; }
  JsonTableResult TakeResult() { return {std::move(table_), std::move(changes_)}; }

  bool Null() { return Scalar(&JsonWriter::Null); }
  bool Bool(bool value) { return Scalar(&JsonWriter::Bool, value); }
  bool Int64(std::int64_t value) { return Scalar(&JsonWriter::Int64, value); }
  bool Uint64(std::uint64_t value) { return Scalar(&JsonWriter::Uint64, value); }
  bool Double(double value) { return Scalar(&JsonWriter::Double, value); }
  bool String(const char* text, std::size_t length, bool copy) {
    return Scalar(&JsonWriter::String, text, length, copy);
  }
  void NumberText(std::string_view number) { number_ = number; }
  bool Key(const char* name, std::size_t length, bool) {
    if (depth_ != 0) return nested_.Key(name, length);
    column_ = &columns_.Next({name, length});
    return true;
  }

  bool StartObject() {
    if (EnterNested()) return nested_.StartObject();
    if (root_ == Root::None) StartTable(Root::Object, "JsonObject");
    StartRow();
    return true;
  }
  bool EndObject(std::size_t) {
    if (depth_ != 0) return nested_.EndObject() && LeaveNested();
    EndRow();
    return !isFull_;
  }
  bool StartArray() {
    if (EnterNested()) return nested_.StartArray();
    if (root_ != Root::None) ThrowNotAnObject();
    StartTable(Root::Array, "JsonArray");
    return true;
  }
  bool EndArray(std::size_t) { return depth_ == 0 || (nested_.EndArray() && LeaveNested()); }

 private:
  enum class Root { None, Array, Object, Value };

  [[noreturn]] static void ThrowNotAnObject() {
    throw std::runtime_error(
        "Object in the array is not of the type object! Data structure is inconsistent across "
        "array!");
  }

  void StartTable(Root root, const char* name) {
    root_ = root;
    table_->Header().SetName(name);
  }

  void StartRow() {
    limit_.AddRow(table_->ColumnCount());
    row_ = &table_->AppendBlankRow(&pool_);
    columns_.StartObject();
  }
  void EndRow() {
    table_->CheckHasColumns();
    row_ = nullptr;
    isFull_ = table_->RowCount() >= options_.maxRows;
    const std::size_t step = parser_->Position() - advanced_;
    if (step < Core::Parts::kStep) return;
    advanced_ += step;
    parts_.Advance(step);
  }

  /// A scalar: part of a nested value, or the value of a cell.
  template <class... Value>
  bool Scalar(bool (JsonWriter::*write)(Value...), Value... value) {
    if (depth_ != 0) return (nested_.*write)(value...);
    if (root_ == Root::None) StartValueTable();
    if (!row_) ThrowNotAnObject();
    if (isPlain_) {
      Store(MakeCell(pool_, value...));
    } else if (IsText(*column_)) {
      Store(MakeTextCell(pool_, number_, value...));
    } else {
      Store(MakeCell(pool_, value...));
      NoteChange(TextOf(number_, value...));
    }
    return true;
  }

  /// A root that is neither an array nor an object.
  void StartValueTable() {
    StartTable(Root::Value, "JsonValue");
    column_ = &table_->AddNamedColumn("Value");
    row_ = &table_->AppendBlankRow(&pool_);
  }

  /// Has the same effects as writing the cell through its row.
  void Store(const _VARIANT& value) {
    _VARIANT& cell = row_->Cell(*column_);
    // A repeated member replaces its value.
    Core::ReleaseReferenceOf(std::exchange(cell, value));
    column_->NoteValue(Core::TypeOf(value));
    row_->SetModified(1);
  }

  bool IsText(const ColumnImpl& column);
  void NoteChange(std::string_view text);

  /// Enters an array or object that is nested in a row.
  /// @return false if it is not nested in a row
  bool EnterNested() {
    if (!row_) return false;
    if (depth_++ == 0) {
      nestedText_.Clear();
      nested_.Reset(nestedText_);
    }
    return true;
  }
  bool LeaveNested() {
    if (--depth_ == 0)
      Store(Core::MakeReference(ValueType::JsonDocument,
                                JsonDocumentImpl::FromJson(nestedText_.View()).Detach()));
    return true;
  }

  const Parser* parser_ = nullptr;
  std::string_view text_;
  const JsonTableOptions& options_;
  CellLimit& limit_;
  bool isPlain_;
  Core::Parts& parts_;
  ObjectPool pool_;  // of the rows and what their cells refer to
  Core::Ptr<TableImpl> table_;
  MemberColumns columns_;
  Root root_ = Root::None;
  RowImpl* row_ = nullptr;        // of the object that is being read
  ColumnImpl* column_ = nullptr;  // of the member
  std::size_t depth_ = 0;         // of nested arrays and objects in the row
  TextBuffer nestedText_;
  JsonWriter nested_;
  bool isFull_ = false;
  std::size_t advanced_ = 0;  // bytes of which the parts know
  std::string_view number_;   // the text of the last number
  std::vector<bool> isText_;  // by column, of those met so far
  std::vector<ColumnChanges> changes_;
  std::size_t counted_ = 0, line_ = 1;  // the line of a position in the text
};

bool TableBuilder::IsText(const ColumnImpl& column) {
  const auto index = static_cast<std::size_t>(column.Index());
  for (std::size_t i = isText_.size(); i <= index; ++i) {
    const std::string& name = table_->Header().Columns()[i]->Name();
    const auto& names = options_.textColumns;
    isText_.push_back(options_.isAllText || std::ranges::find(names, name) != names.end());
  }
  return isText_[index];
}

void TableBuilder::NoteChange(std::string_view text) {
  if (!options_.findsChanges) return;
  const auto change = ChangeOf(text, row_->Cell(*column_));
  if (!change) return;
  const auto index = static_cast<std::size_t>(column_->Index());
  if (changes_.size() <= index) changes_.resize(index + 1);
  ChangedTexts& texts = changes_[index][static_cast<std::size_t>(*change)];
  if (texts.count == 0) {
    // The positions only grow, so each line end is counted once.
    const std::size_t position = parser_->Position();
    const auto passed = text_.substr(counted_, position - counted_);
    line_ += static_cast<std::size_t>(std::ranges::count(passed, '\n'));
    counted_ = position;
  }
  texts.Note(text, line_);
}

/// The parser has met something else than JSON.
struct NotJson final : std::runtime_error {
  NotJson() : std::runtime_error("Json document is not valid!") {}
};

/// Runs a step of a parser, and adds the position to its failure.
/// @param offset  of the parser's text
template <class Step>
void WithPosition(const TableBuilder::Parser& parser, std::size_t offset, Step&& step) {
  try {
    step();
  } catch (const NotJson& failure) {
    throw JsonFailure(failure.what(), true, offset + parser.Position());
  } catch (const std::runtime_error& failure) {
    throw JsonFailure(failure.what(), false, offset + parser.Position());
  }
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r") == std::string_view::npos;
}

/// Reads a line that is not blank.
void ReadLine(std::string_view text, std::size_t begin, std::size_t end,
              TableBuilder::Parser& parser, const TableBuilder& builder) {
  parser.SkipTo(begin);
  const bool isRead = parser.ParseNext() || builder.IsFull();
  if (isRead && parser.Position() <= end &&
      (builder.IsFull() || IsBlank(text.substr(parser.Position(), end - parser.Position()))))
    return;
  // This line is wrong, even if its value ends on a later one.
  parser.SkipTo(std::min(parser.Position(), end));
  throw NotJson();
}

/// Reads the lines of a part of a text.
/// @param text  from the part to the end of the whole text
/// @param size  of the part
void ReadLines(std::string_view text, std::size_t size, std::size_t offset, TableBuilder& builder) {
  TableBuilder::Parser parser(text, builder);
  builder.Follow(parser, text);
  WithPosition(parser, offset, [&] {
    for (std::size_t begin = 0, end = 0; begin < size && !builder.IsFull(); begin = end + 1) {
      end = std::min(text.substr(0, size).find('\n', begin), size);
      if (!IsBlank(text.substr(begin, end - begin))) ReadLine(text, begin, end, parser, builder);
    }
  });
}

constexpr const char* kLinesName = "JsonLines";

/// Reads the lines into the table of one builder.
JsonTableResult ReadOnePart(std::string_view text, const JsonTableOptions& options,
                            Core::Parts& parts) {
  CellLimit limit(text.size());
  TableBuilder builder(text.size(), limit, options, parts);
  builder.StartRows(kLinesName);
  ReadLines(text, text.size(), 0, builder);
  return builder.TakeResult();
}

std::vector<std::string_view> CutAtLineFeeds(std::string_view text, std::size_t count) {
  std::vector<std::string_view> cut;
  while (count > 1 && !text.empty()) {
    const std::size_t end = text.find('\n', (text.size() - 1) / count--);
    if (end == std::string_view::npos) break;
    cut.push_back(text.substr(0, end + 1));
    text.remove_prefix(end + 1);
  }
  if (!text.empty()) cut.push_back(text);
  return cut;
}

/// The members of the first lines, in their order.
std::vector<std::string> SampleColumns(std::string_view text, JsonTableOptions sample) {
  sample.maxRows = 100;
  sample.findsChanges = false;
  Core::Parts onePart;
  const auto result = ReadOnePart(text, sample, onePart);
  std::vector<std::string> names;
  for (const auto& column : result.table->Header().Columns()) names.push_back(column->Name());
  return names;
}

/// Joins the tables of the parts, which have the same columns.
JsonTableResult Join(std::vector<JsonTableResult>& read, std::string_view text,
                     const std::vector<std::string_view>& texts, Core::Parts& parts) {
  JsonTableResult joined = std::move(read.front());
  TableImpl& table = *joined.table;
  auto rows = table.GiveUpRows();
  std::vector<std::size_t> firstRows = {0};
  std::size_t rowCount = rows.size();
  joined.changes.resize(table.ColumnCount());
  for (std::size_t i = 1; i < read.size(); ++i) {
    firstRows.push_back(rowCount);
    rowCount += read[i].table->RowCount();
    const auto before = text.substr(0, static_cast<std::size_t>(texts[i].data() - text.data()));
    const bool hasChanges = !read[i].changes.empty();
    const auto lines = hasChanges ? static_cast<std::size_t>(std::ranges::count(before, '\n')) : 0;
    for (std::size_t column = 0; column < read[i].changes.size(); ++column)
      for (std::size_t kind = 0; kind < kTextChanges; ++kind)
        joined.changes[column][kind].Append(std::move(read[i].changes[column][kind]), lines);
    for (std::size_t column = 0; column < table.ColumnCount(); ++column) {
      ColumnImpl& from = read[i].table->ColumnAt(static_cast<std::int64_t>(column));
      table.Header().Columns()[column]->NoteValues({from.GetType(), from.HasSeenNull() != 0});
    }
  }
  rows.resize(rowCount);
  parts.Run(read.size(), [&](std::size_t i) {
    std::size_t index = firstRows[i];
    if (i == 0) return;
    for (auto& row : read[i].table->GiveUpRows()) {
      row->MoveTo(table, index);
      rows[index++] = std::move(row);
    }
  });
  table.AdoptRows(std::move(rows));
  return joined;
}

/// What a part finds that does not have the columns of the others: the text is then read in one.
struct OtherColumns {};

JsonTableResult ReadInParts(std::string_view text, const std::vector<std::string_view>& texts,
                            const JsonTableOptions& options, Core::Parts& parts) {
  const auto columns = SampleColumns(text, options);
  std::vector<JsonTableResult> read(texts.size());
  CellLimit limit(text.size());
  parts.Run(texts.size(), [&](std::size_t i) {
    TableBuilder builder(texts[i].size(), limit, options, parts);
    builder.StartRows(kLinesName);
    for (const auto& name : columns) builder.Table().AddNamedColumn(name);
    const auto offset = static_cast<std::size_t>(texts[i].data() - text.data());
    ReadLines(text.substr(offset), texts[i].size(), offset, builder);
    if (builder.Table().ColumnCount() != columns.size()) throw OtherColumns();
    read[i] = builder.TakeResult();
  });
  return Join(read, text, texts, parts);
}

}  // namespace

JsonTableResult ReadJsonTable(std::string_view text, const JsonTableOptions& options,
                              Core::Parts& parts) {
  CellLimit limit(text.size());
  TableBuilder builder(text.size(), limit, options, parts);
  TableBuilder::Parser parser(text, builder);
  builder.Follow(parser, text);
  WithPosition(parser, 0, [&] {
    if (!parser.ParseAll() && !builder.IsFull()) throw NotJson();
  });
  return builder.TakeResult();
}

JsonTableResult ReadJsonLines(std::string_view text, const JsonTableOptions& options,
                              Core::Parts& parts) {
  const bool isLimited = options.maxRows < text.size();
  const auto texts = CutAtLineFeeds(text, isLimited ? 1 : parts.CountFor(text.size()));
  if (texts.size() > 1) {
    try {
      return ReadInParts(text, texts, options, parts);
    } catch (const OtherColumns&) {
    }
  }
  return ReadOnePart(text, options, parts);
}

bool IsJsonLines(std::string_view text) {
  std::size_t at = text.find_first_not_of(" \t\r\n");
  if (at == std::string_view::npos || text[at] != '{') return false;
  int depth = 0;
  for (bool isString = false; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '"') isString = !isString;
    if (isString && c == '\\') ++at;
    if (isString) continue;
    depth += (c == '{') - (c == '}');
    if (depth == 0) break;
  }
  return at < text.size() && text.find_first_not_of(" \t\r\n", at + 1) != std::string_view::npos;
}

}  // namespace Data::impl
