#include "Documents/JsonToTable.h"

#include <stdexcept>
#include <utility>
#include <vector>

#include "Core/VariantRecord.h"
#include "DateTime/DateTimeImpl.h"
#include "Documents/JsonDocumentImpl.h"
#include "Documents/JsonReader.h"
#include "Documents/JsonWriter.h"
#include "Tables/ValueTypeDetection.h"
#include "Text/TextValue.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

_VARIANT MakeCell() { return Core::MakeNull(); }
_VARIANT MakeCell(bool value) { return Core::MakeInteger(ValueType::Bool, value); }
_VARIANT MakeCell(std::int64_t value) { return Core::MakeInteger(ValueType::Int64, value); }
/// Called only for integers above the range of Int64.
_VARIANT MakeCell(std::uint64_t) { throw std::runtime_error("Unsupported variant type"); }
_VARIANT MakeCell(double value) { return Core::MakeDouble(value); }
_VARIANT MakeCell(const char* begin, std::size_t length, bool) {
  const std::string_view text(begin, length);
  CalendarFields fields;
  if (!DetectDateTime(text, fields)) return MakeTextValue(text);
  return Core::MakeReference(ValueType::DateTime, MakeDateTime(fields).Detach());
}

/// Finds the column of each member of an object. Most objects list their members in the same order,
/// so a name is first compared with the column that followed the same member last time.
class MemberColumns {
 public:
  explicit MemberColumns(TableImpl& table) : table_(table) {}

  void StartObject() { next_ = 0; }
  ColumnImpl& Next(std::string_view name) {
    if (next_ >= followers_.size()) followers_.resize(next_ + 1);
    ColumnImpl*& follower = followers_[next_];
    if (!follower || follower->Name() != name)
      follower = &table_.AddNamedColumn(name.substr(0, name.find('\0')));
    next_ = static_cast<std::size_t>(follower->Index()) + 1;
    return *follower;
  }

 private:
  TableImpl& table_;
  /// `followers_[0]` is the column of the first member; `followers_[i + 1]` is the column that last
  /// followed the column with index i.
  std::vector<ColumnImpl*> followers_;
  std::size_t next_ = 0;
};

/// Handles the events of a text and fills a table. The table owns each cell from the start, so
/// nothing leaks if reading fails.
class TableBuilder {
 public:
  TableBuilder() : table_(Core::MakePtr<TableImpl>()), columns_(*table_), nested_(nestedText_) {}

  Core::Ptr<TableImpl> TakeTable() { return std::move(table_); }

  bool Null() { return Scalar(&JsonWriter::Null); }
  bool Bool(bool value) { return Scalar(&JsonWriter::Bool, value); }
  bool Int64(std::int64_t value) { return Scalar(&JsonWriter::Int64, value); }
  bool Uint64(std::uint64_t value) { return Scalar(&JsonWriter::Uint64, value); }
  bool Double(double value) { return Scalar(&JsonWriter::Double, value); }
  bool String(const char* text, std::size_t length, bool copy) {
    return Scalar(&JsonWriter::String, text, length, copy);
  }
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
    return true;
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
    row_ = &table_->AppendBlankRow();
    columns_.StartObject();
  }
  void EndRow() {
    table_->CheckHasColumns();
    row_ = nullptr;
  }

  /// A scalar: part of a nested value, or the value of a cell.
  template <class... Value>
  bool Scalar(bool (JsonWriter::*write)(Value...), Value... value) {
    if (depth_ != 0) return (nested_.*write)(value...);
    if (root_ == Root::None) StartValueTable();
    if (!row_) ThrowNotAnObject();
    Store(MakeCell(value...));
    return true;
  }

  /// A root that is neither an array nor an object.
  void StartValueTable() {
    StartTable(Root::Value, "JsonValue");
    column_ = &table_->AddNamedColumn("Value");
    row_ = &table_->AppendBlankRow();
  }

  /// Has the same effects as writing the cell through its row.
  void Store(const _VARIANT& value) {
    _VARIANT& cell = row_->Cell(*column_);
    // A repeated member replaces its value.
    Core::ReleaseReferenceOf(std::exchange(cell, value));
    column_->NoteValue(Core::TypeOf(value));
    row_->SetModified(1);
  }

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

  Core::Ptr<TableImpl> table_;
  MemberColumns columns_;
  Root root_ = Root::None;
  RowImpl* row_ = nullptr;        // of the object that is being read
  ColumnImpl* column_ = nullptr;  // of the member
  std::size_t depth_ = 0;         // of nested arrays and objects in the row
  TextBuffer nestedText_;
  JsonWriter nested_;
};

}  // namespace

Core::Ptr<TableImpl> ReadJsonTable(std::string_view text) {
  TableBuilder builder;
  if (!ParseJson(text, builder)) throw std::runtime_error("Json document is not valid!");
  return builder.TakeTable();
}

}  // namespace Data::impl
