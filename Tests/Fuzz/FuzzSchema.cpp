// A schema built by a sequence of setters is cloned, written and read again; some of the documents
// are damaged before they are read. An input that starts with "{" is itself the document.

#include <optional>

#include "Data/Interfaces/IAllowedValue.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/ISchema.h"
#include "Data/Interfaces/IString.h"
#include "Data/Structures/Uuid.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

constexpr const char* kNames[] = {"id", "name", "", "\xC3\xA4", "height"};

class Steps {
 public:
  explicit Steps(Input& input) : input_(input) {
    Data::Structures::_UUID uuid{};
    Require(Data_CreateSchema(&uuid, "title", "", schema_.Receive(), nullptr));
  }

  Ptr<ISchema> Run() {
    for (std::uint32_t left = input_.Below(24); left > 0 && !input_.IsEmpty(); --left) Step();
    return schema_;
  }
  /// Whether the text that is written for each value can be read back.
  bool CanBeRead() const { return canBeRead_; }

 private:
  void AddColumn(const char* name, ValueType type) {
    schema_->AddColumn(name, type, static_cast<std::int8_t>(input_.Byte()), 2, nullptr);
    const bool isWide = type == ValueType::Int128 || type == ValueType::UInt128;
    canBeRead_ = canBeRead_ && !isWide;  // their default has no readable text
  }
  void SetText(const char* name) {
    constexpr bool (ISchema::*kSetters[])(const char*, const char*, Core::IErrorCode**) = {
        &ISchema::SetColumnDescription,
        &ISchema::SetUpdateExpression,
        &ISchema::SetUnit,
        &ISchema::SetInsertExpression,
        &ISchema::SetDisplayName,
        &ISchema::SetGroup,
        &ISchema::SetHelpUri};
    const auto setter = kSetters[input_.Below(std::size(kSetters))];
    Require((schema_.Get()->*setter)(name, input_.Text(20).c_str(), nullptr));
  }
  void SetFlag(const char* name) {
    constexpr bool (ISchema::*kSetters[])(const char*, bool, Core::IErrorCode**) = {
        &ISchema::SetAllowAnyValue, &ISchema::SetReadOnly, &ISchema::SetVisible,
        &ISchema::SetDisplayAttribute, &ISchema::SetNullable};
    const auto setter = kSetters[input_.Below(std::size(kSetters))];
    Require((schema_.Get()->*setter)(name, input_.Flag(), nullptr));
  }
  void AllowValue(const char* name) {
    const Variant value = AnyValue(input_);
    const auto comparison = static_cast<Data::Structures::ComparisonOperator>(input_.Below(8));
    const std::string text = input_.Text(8);
    Ptr<IAllowedValue> allowed;
    if (Data_CreateAllowedValue(&value, comparison, text.c_str(), "", text.c_str(), "",
                                allowed.Receive(), nullptr))
      Require(schema_->AddAllowedValue(name, allowed.Get(), nullptr));
    canBeRead_ = false;
  }
  void SetDefault(const char* name) {
    const Variant value = AnyValue(input_);
    schema_->SetDefaultValue(name, &value, nullptr);
    canBeRead_ = false;
  }
  void Step() {
    const char* name = kNames[input_.Below(std::size(kNames))];
    const auto type = static_cast<ValueType>(input_.Below(28));
    const std::uint32_t step = input_.Below(8);
    if (step < 2) AddColumn(name, type);
    if (step == 2) SetText(name);
    if (step == 3) SetFlag(name);
    if (step == 4) AllowValue(name);
    if (step == 5) SetDefault(name);
    if (step == 6) schema_->SetIdentifierColumn(name);
    if (step == 7) schema_->SetTitle(input_.Text(12).c_str());
  }

  Input& input_;
  Ptr<ISchema> schema_;
  bool canBeRead_ = true;
};

Ptr<IJsonDocument> DocumentOf(std::string_view text) {
  const auto document = New(Data_CreateJsonDocument);
  document->SetContent(text.data(), text.size());
  return document;
}

std::string TextOf(const Ptr<ISchema>& schema) {
  Ptr<IJsonDocument> document;
  if (!schema->ToJson(document.Receive(), ' ', 1, nullptr)) return "";
  return document->GetContent()->GetUtf8();
}

std::string Damaged(std::string text, Input& input) {
  const std::size_t at = text.empty() ? 0 : (input.Byte() * 256u + input.Byte()) % text.size();
  const std::size_t erased = input.Below(12);
  return text.replace(at, erased, input.Text(12));
}

/// The text of the schema that a document gives; empty if it cannot be written.
std::optional<std::string> Rewritten(std::string_view text) {
  Ptr<ISchema> schema;
  if (!Data_ParseSchema(DocumentOf(text).Get(), schema.Receive(), nullptr)) return std::nullopt;
  return TextOf(schema);
}

/// Some types are read by other names than they are written, so the text of a schema that was read
/// may change once when it is read and written again, but never twice.
bool ReadAndCompare(std::string_view text) {
  const auto first = Rewritten(text);
  if (!first || first->empty()) return first.has_value();
  const auto second = Rewritten(*first);
  Require(second.has_value());
  Require(second->empty() || Rewritten(*second) == second);
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  if (size > 0 && data[0] == '{') {
    ReadAndCompare({data, size});
    return 0;
  }
  Input input(data, size);
  const bool isDamaged = input.Flag();
  Steps steps(input);
  const auto schema = steps.Run();
  Ptr<ISchema> clone;
  Require(schema->Clone(clone.Receive(), nullptr));
  const std::string text = TextOf(schema);
  Require(TextOf(clone) == text);
  if (isDamaged) {
    ReadAndCompare(Damaged(text, input));
  } else if (!text.empty()) {
    const bool isRead = ReadAndCompare(text);
    Require(isRead || !steps.CanBeRead());
  }
  return 0;
}
