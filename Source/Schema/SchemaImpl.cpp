#include "Schema/SchemaImpl.h"

#include <algorithm>

#include "Containers/ObjectListImpl.h"
#include "Documents/JsonDocumentImpl.h"
#include "Schema/LayerSchemaText.h"
#include "Schema/SchemaWriter.h"

namespace Data {

using Core::CheckArgument;
using Core::CheckOutPointer;
using Core::Guarded;
using Core::IObject;
using Core::Ptr;
using Interfaces::IAllowedValue;
using Interfaces::IJsonDocument;
using Interfaces::IObjectList;
using Interfaces::ISchema;
using Structures::_UUID;
using Structures::_VARIANT;

namespace {

/// The list and its entries may be the caller's own objects, so the list may change while it is
/// read. What is added meanwhile is left out: each entry might add another.
attributes::AllowedValueList AllowedValuesOf(IObjectList& list) {
  const Ptr<IObjectList> held(&list);
  attributes::AllowedValueList values;
  const std::uint64_t count = list.GetCount();
  for (std::uint64_t i = 0; i < std::min(count, list.GetCount()); ++i)
    values.push_back(Core::CastToInterface<IAllowedValue>(list.GetAt(i)));
  return values;
}

/// The width and decimals of a column without limits.
constexpr std::int32_t kNoLimit = -1;

}  // namespace

void SchemaImpl::SetTitle(const char* title) {
  if (title) header_.title = title;
}

void SchemaImpl::SetDescription(const char* description) {
  if (description) header_.description = description;
}

void SchemaImpl::SetIdentifierColumn(const char* name) {
  header_.identifierColumn = name ? name : "";
}

void SchemaImpl::Add(std::string_view name, Column column) {
  const bool isIdentifier = columns_.Count() == 0 && header_.identifierColumn.empty();
  std::string identifier(isIdentifier ? name : std::string_view());
  columns_.Add(name, std::move(column));
  if (isIdentifier) header_.identifierColumn = std::move(identifier);
}

const Column& SchemaImpl::Find(const char* name) {
  CheckArgument(name);
  const Column* column = columns_.Find(name);
  if (!column) Core::ThrowMissingKey();
  return *column;
}

void SchemaImpl::Put(std::string_view name, Column column) {
  if (Column* existing = columns_.Find(name)) {
    existing->TakeOver(std::move(column));
  } else {
    Add(name, std::move(column));
  }
}

bool SchemaImpl::GetColumnNames(IObjectList** out, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckOutPointer(out);
    auto names = Core::MakePtr<impl::ObjectListImpl>();
    for (std::uint64_t i = 0; i < columns_.Count(); ++i) names->AddText(columns_.NameAt(i));
    *out = names.Detach();
  });
}

bool SchemaImpl::ClearAllowedValues(const char* name, IErrorCode** error) {
  return Set<attributes::AllowedValues>(name, {}, error);
}

bool SchemaImpl::AddAllowedValue(const char* name, IAllowedValue* value, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckArgument(name);
    CheckArgument(value);
    const Ptr<ISchema> self(this);
    Ptr<IAllowedValue> added(value);
    Edit(name, [&](Column& column) {
      if (column.Find<attributes::AllowedValues>()) {
        column.Edit<attributes::AllowedValues>().push_back(std::move(added));
      } else {  // memory for the first value comes before the column has a list
        attributes::AllowedValueList first(1);
        first[0] = std::move(added);
        column.Set<attributes::AllowedValues>(std::move(first));
      }
    });
  });
}

bool SchemaImpl::SetAllowedValues(const char* name, IObjectList* values, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckArgument(name);
    const Ptr<ISchema> self(this);
    auto list =
        values ? AllowedValuesOf(*Core::CheckInterface(values)) : attributes::AllowedValueList();
    Edit(name, [&](Column& column) { column.Set<attributes::AllowedValues>(std::move(list)); });
  });
}

bool SchemaImpl::GetAllowedValues(const char* name, IObjectList** out, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckOutPointer(out);
    const Ptr<ISchema> self(this);
    auto objects = CopyOf<IObject>(Find(name).Get<attributes::AllowedValues>());
    *out = Core::MakePtr<impl::ObjectListImpl>(std::move(objects)).Detach();
  });
}

bool SchemaImpl::SetDefaultValue(const char* name, const _VARIANT* value, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckArgument(name);
    Core::CheckRecord(value);
    const Ptr<ISchema> self(this);
    Core::Variant copy(*value);
    Edit(name, [&](Column& column) { column.Set<attributes::DefaultValue>(std::move(copy)); });
  });
}

bool SchemaImpl::GetDefaultValue(const char* name, _VARIANT* out, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckArgument(out);
    Core::CopyVariant(&Find(name).Get<attributes::DefaultValue>(), out);
  });
}

bool SchemaImpl::AddColumn(const char* name, ValueType type, std::int32_t width,
                           std::int32_t decimals, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckArgument(name);
    Put(name, Column(NewColumn{name, type, width, decimals}));
  });
}

bool SchemaImpl::AddColumnWithText(const char* name, const char* group, const char* displayName,
                                   ValueType type, const char* description, const char* unit,
                                   IErrorCode** error) {
  return AddColumnFull(name, group, displayName, type, kNoLimit, kNoLimit, description, unit,
                       error);
}

bool SchemaImpl::AddColumnFull(const char* name, const char* group, const char* displayName,
                               ValueType type, std::int32_t width, std::int32_t decimals,
                               const char* description, const char* unit, IErrorCode** error) {
  return Guarded(error, [&] {
    for (const char* text : {name, group, displayName, description, unit}) CheckArgument(text);
    Column column(NewColumn{name, type, width, decimals});
    column.Set<attributes::Description>(description);
    column.Set<attributes::Unit>(unit);
    column.Set<attributes::Group>(group);
    column.Set<attributes::DisplayName>(displayName);
    Put(name, std::move(column));
  });
}

bool SchemaImpl::ToJson(IJsonDocument** out, char indentCharacter, std::uint32_t indentCount,
                        IErrorCode** error) {
  return Guarded(error, [&] {
    CheckOutPointer(out);
    const Ptr<ISchema> self(this);
    *out = WriteSchema(*this, {indentCharacter, indentCount}).Detach();
  });
}

bool SchemaImpl::GetJsonSchema(IJsonDocument** out, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckOutPointer(out);
    auto document = Core::MakePtr<impl::JsonDocumentImpl>();
    document->SetContent(kLayerSchemaText.data(), kLayerSchemaText.size());
    if (!document->IsValid())
      throw std::runtime_error("Json schema is invalid: " + std::string(kLayerSchemaText));
    *out = document.Detach();
  });
}

bool SchemaImpl::CheckConsistency(IErrorCode** error) {
  return Guarded(error, [&] {
    for (std::uint64_t i = 0; i < columns_.Count(); ++i) {
      const Column& column = columns_.ValueAt(i);
      attributes::All::ForEach([&]<class A>(A) {
        if constexpr (attributes::HasInitial<A>) column.Get<A>();
      });
    }
  });
}

bool SchemaImpl::CloneWithUuid(const _UUID* uuid, ISchema** out, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckArgument(uuid);
    CheckOutPointer(out);
    const Ptr<ISchema> self(this);
    SchemaHeader header = header_;
    header.uuid = *uuid;
    auto clone = Core::MakePtr<SchemaImpl>(std::move(header));
    const std::uint64_t count = columns_.Count();
    for (std::uint64_t i = 0; i < count; ++i)
      clone->columns_.Add(columns_.NameAt(i), columns_.ValueAt(i));
    *out = clone.Detach();
  });
}

bool SchemaImpl::Clone(ISchema** out, IErrorCode** error) {
  return CloneWithUuid(&header_.uuid, out, error);
}

bool SchemaImpl::GetUuid(_UUID* out, IErrorCode** error) {
  return Guarded(error, [&] {
    CheckArgument(out);
    *out = header_.uuid;
  });
}

}  // namespace Data
