#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Containers/NameMap.h"
#include "Core/Guard.h"
#include "Core/ObjectBase.h"
#include "Data/Interfaces/ISchema.h"
#include "Schema/Column.h"

namespace Data {

struct SchemaHeader {
  Structures::_UUID uuid{};
  std::string title;
  std::string description;
  std::string identifierColumn{};
  std::int32_t version = 1;
};

struct SchemaImpl final : Core::ObjectBase<Interfaces::ISchema> {
  using IErrorCode = Core::IErrorCode;
  using ValueType = Core::ValueType;

  explicit SchemaImpl(SchemaHeader header = {}) : header_(std::move(header)) {}

  // -- For the reader and the writer of documents --

  const SchemaHeader& Header() const { return header_; }
  const impl::NameMap<Column>& Columns() const { return columns_; }
  /// The attributes of the given column replace those of the column of this name, which is added if
  /// necessary.
  void Put(std::string_view name, Column column);
  /// Appends the violations that were found in the document. Reading continues regardless, and no
  /// operation returns them.
  void AppendLastError(std::string_view text) { lastError_ += text; }

  // -- ISchema --

  bool HasAllowedValues(const char* name) override { return Has<attributes::AllowedValues>(name); }
  bool HasDefaultValue(const char* name) override { return Has<attributes::DefaultValue>(name); }
  bool HasUpdateExpression(const char* name) override {
    return Has<attributes::UpdateExpression>(name);
  }
  bool HasInsertExpression(const char* name) override {
    return Has<attributes::InsertExpression>(name);
  }
  bool HasUnit(const char* name) override { return Has<attributes::Unit>(name); }

  const char* GetTitle() override { return header_.title.c_str(); }
  void SetTitle(const char* title) override;
  const char* GetDescription() override { return header_.description.c_str(); }
  void SetDescription(const char* description) override;

  bool GetColumnNames(Interfaces::IObjectList** out, IErrorCode** error) override;
  std::uint64_t GetColumnCount() override { return columns_.Count(); }

  bool ClearAllowedValues(const char* name, IErrorCode** error) override;
  bool AddAllowedValue(const char* name, Interfaces::IAllowedValue* value,
                       IErrorCode** error) override;
  bool SetAllowedValues(const char* name, Interfaces::IObjectList* values,
                        IErrorCode** error) override;
  bool GetAllowedValues(const char* name, Interfaces::IObjectList** out,
                        IErrorCode** error) override;

  bool SetColumnDescription(const char* name, const char* text, IErrorCode** error) override {
    return SetText<attributes::Description>(name, text, error);
  }
  const char* GetColumnDescription(const char* name, IErrorCode** error) override {
    return GetText<attributes::Description>(name, error);
  }
  bool SetDefaultValue(const char* name, const Structures::_VARIANT* value,
                       IErrorCode** error) override;
  bool GetDefaultValue(const char* name, Structures::_VARIANT* out, IErrorCode** error) override;
  bool SetUpdateExpression(const char* name, const char* text, IErrorCode** error) override {
    return SetText<attributes::UpdateExpression>(name, text, error);
  }
  const char* GetUpdateExpression(const char* name, IErrorCode** error) override {
    return GetText<attributes::UpdateExpression>(name, error);
  }
  bool SetUnit(const char* name, const char* text, IErrorCode** error) override {
    return SetText<attributes::Unit>(name, text, error);
  }
  const char* GetUnit(const char* name, IErrorCode** error) override {
    return GetText<attributes::Unit>(name, error);
  }
  bool SetInsertExpression(const char* name, const char* text, IErrorCode** error) override {
    return SetText<attributes::InsertExpression>(name, text, error);
  }
  const char* GetInsertExpression(const char* name, IErrorCode** error) override {
    return GetText<attributes::InsertExpression>(name, error);
  }
  bool SetAllowAnyValue(const char* name, bool flag, IErrorCode** error) override {
    return Set<attributes::AllowAnyValue>(name, flag, error);
  }
  bool GetAllowAnyValue(const char* name, IErrorCode** error) override {
    return Get<attributes::AllowAnyValue>(name, error);
  }
  bool SetWidth(const char* name, std::int32_t width, IErrorCode** error) override {
    return Set<attributes::Width>(name, width, error);
  }
  std::int32_t GetWidth(const char* name, IErrorCode** error) override {
    return Get<attributes::Width>(name, error);
  }
  bool SetDecimals(const char* name, std::int32_t decimals, IErrorCode** error) override {
    return Set<attributes::Decimals>(name, decimals, error);
  }
  std::int32_t GetDecimals(const char* name, IErrorCode** error) override {
    return Get<attributes::Decimals>(name, error);
  }
  bool SetType(const char* name, ValueType type, IErrorCode** error) override {
    return Set<attributes::Type>(name, type, error);
  }
  ValueType GetType(const char* name, IErrorCode** error) override {
    return Get<attributes::Type>(name, error);
  }
  bool SetReadOnly(const char* name, bool flag, IErrorCode** error) override {
    return Set<attributes::ReadOnly>(name, flag, error);
  }
  bool GetReadOnly(const char* name, IErrorCode** error) override {
    return Get<attributes::ReadOnly>(name, error);
  }
  bool SetDisplayName(const char* name, const char* text, IErrorCode** error) override {
    return SetText<attributes::DisplayName>(name, text, error);
  }
  const char* GetDisplayName(const char* name, IErrorCode** error) override {
    return GetText<attributes::DisplayName>(name, error);
  }
  bool SetGroup(const char* name, const char* text, IErrorCode** error) override {
    return SetText<attributes::Group>(name, text, error);
  }
  const char* GetGroup(const char* name, IErrorCode** error) override {
    return GetText<attributes::Group>(name, error);
  }
  bool SetHelpUri(const char* name, const char* text, IErrorCode** error) override {
    return SetText<attributes::HelpUri>(name, text, error);
  }
  const char* GetHelpUri(const char* name, IErrorCode** error) override {
    return GetText<attributes::HelpUri>(name, error);
  }
  bool SetVisible(const char* name, bool flag, IErrorCode** error) override {
    return Set<attributes::Visible>(name, flag, error);
  }
  bool GetVisible(const char* name, IErrorCode** error) override {
    return Get<attributes::Visible>(name, error);
  }
  bool SetDisplayAttribute(const char* name, bool flag, IErrorCode** error) override {
    return Set<attributes::DisplayAttribute>(name, flag, error);
  }
  bool GetDisplayAttribute(const char* name, IErrorCode** error) override {
    return Get<attributes::DisplayAttribute>(name, error);
  }

  bool AddColumnWithText(const char* name, const char* group, const char* displayName,
                         ValueType type, const char* description, const char* unit,
                         IErrorCode** error) override;
  bool AddColumnFull(const char* name, const char* group, const char* displayName, ValueType type,
                     std::int32_t width, std::int32_t decimals, const char* description,
                     const char* unit, IErrorCode** error) override;
  bool AddColumn(const char* name, ValueType type, std::int32_t width, std::int32_t decimals,
                 IErrorCode** error) override;

  void SetVersion(std::int32_t version) override { header_.version = version; }
  std::int32_t GetVersion() override { return header_.version; }
  bool ToJson(Interfaces::IJsonDocument** out, char indentCharacter, std::uint32_t indentCount,
              IErrorCode** error) override;
  bool GetJsonSchema(Interfaces::IJsonDocument** out, IErrorCode** error) override;
  bool CheckConsistency(IErrorCode** error) override;

  bool CloneWithUuid(const Structures::_UUID* uuid, Interfaces::ISchema** out,
                     IErrorCode** error) override;
  bool Clone(Interfaces::ISchema** out, IErrorCode** error) override;
  bool GetUuid(Structures::_UUID* out, IErrorCode** error) override;

  bool SetNullable(const char* name, bool flag, IErrorCode** error) override {
    return Set<attributes::Nullable>(name, flag, error);
  }
  bool GetNullable(const char* name, IErrorCode** error) override {
    return Get<attributes::Nullable>(name, error);
  }
  const char* GetIdentifierColumn() override { return header_.identifierColumn.c_str(); }
  void SetIdentifierColumn(const char* name) override;

 private:
  /// Changes the column of this name, or adds one with the change applied. If the change throws, no
  /// column is added.
  template <class Change>
  void Edit(std::string_view name, Change change) {
    if (Column* column = columns_.Find(name)) return change(*column);
    Column column;
    change(column);
    Add(name, std::move(column));
  }
  /// @pre the name is new
  void Add(std::string_view name, Column column);
  /// @throws std::out_of_range for an unknown column
  const Column& Find(const char* name);

  template <class A>
  bool Has(const char* name) {
    const Column* column = name ? columns_.Find(name) : nullptr;
    return column && column->Find<A>();
  }
  template <class A>
  bool Set(const char* name, typename A::Value value, IErrorCode** error) {
    return Core::Guarded(error, [&] {
      Core::CheckArgument(name);
      Edit(name, [&](Column& column) { column.Set<A>(std::move(value)); });
    });
  }
  template <class A>
  typename A::Value Get(const char* name, IErrorCode** error) {
    return Core::Guarded(error, [&] { return Find(name).template Get<A>(); });
  }
  template <class A>
  bool SetText(const char* name, const char* text, IErrorCode** error) {
    return Core::Guarded(error, [&] {
      Core::CheckArgument(name);
      Core::CheckArgument(text);
      Edit(name, [&](Column& column) { column.Set<A>(text); });
    });
  }
  template <class A>
  const char* GetText(const char* name, IErrorCode** error) {
    return Core::Guarded(error, [&] { return Find(name).template Get<A>().c_str(); });
  }

  SchemaHeader header_;
  impl::NameMap<Column> columns_;
  std::string lastError_;
};

}  // namespace Data
