#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "Core/Failures.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IAllowedValue.h"

namespace Data {

/// What a column is added with; its other attributes follow from it.
struct NewColumn {
  std::string_view name;
  Core::ValueType type;
  std::int32_t width;
  std::int32_t decimals;
};

/// The zero of a type: what a column of that type contains by default.
Core::Variant ZeroOf(Core::ValueType type);

/// How a document's reader treats a member.
enum class InDocument : std::uint8_t {
  Required,  ///< a column is added with it
  Optional,
  IfText,  ///< as `Optional`, and ignored when it is not a string
  NotRead
};

/// The attributes of a column, each described once: its key in documents, its
/// type, and what `AddColumn` sets. One without `Initial` is set by its setter
/// alone and written only then.
namespace attributes {

using AllowedValueList = std::vector<Core::Ptr<Interfaces::IAllowedValue>>;

template <class T, InDocument mode = InDocument::Optional>
struct Attribute {
  using Value = T;
  static constexpr InDocument kInDocument = mode;
};
using Text = Attribute<std::string>;
using Flag = Attribute<bool>;
using RequiredInteger = Attribute<std::int32_t, InDocument::Required>;

struct Group : Text {
  static constexpr std::string_view kKey = "group";
  static Value Initial(const NewColumn&) { return "Attribute Properties"; }
};
struct DisplayName : Text {
  static constexpr std::string_view kKey = "displayName";
  static Value Initial(const NewColumn& column) { return Value(column.name); }
};
struct Description : Text {
  static constexpr std::string_view kKey = "description";
  static Value Initial(const NewColumn&) { return {}; }
};
struct HelpUri : Text {
  static constexpr std::string_view kKey = "helpUri";
  static Value Initial(const NewColumn&) { return {}; }
};
struct Type : Attribute<Core::ValueType, InDocument::Required> {
  static constexpr std::string_view kKey = "type";
  static Value Initial(const NewColumn& column) { return column.type; }
};
struct DefaultValue : Attribute<Core::Variant> {
  static constexpr std::string_view kKey = "defaultValue";
  static Value Initial(const NewColumn& column) { return ZeroOf(column.type); }
};
struct UpdateExpression : Attribute<std::string, InDocument::IfText> {
  static constexpr std::string_view kKey = "updateExpression";
};
struct InsertExpression : Attribute<std::string, InDocument::IfText> {
  static constexpr std::string_view kKey = "insertExpression";
};
struct Unit : Text {
  static constexpr std::string_view kKey = "unit";
};
struct Width : RequiredInteger {
  static constexpr std::string_view kKey = "width";
  static Value Initial(const NewColumn& column) { return column.width; }
};
struct Decimals : RequiredInteger {
  static constexpr std::string_view kKey = "decimals";
  static Value Initial(const NewColumn& column) { return column.decimals; }
};
struct ReadOnly : Flag {
  static constexpr std::string_view kKey = "readOnly";
  static Value Initial(const NewColumn&) { return false; }
};
struct AllowAnyValue : Flag {
  static constexpr std::string_view kKey = "allowAnyValue";
  static Value Initial(const NewColumn&) { return true; }
};
struct DisplayAttribute : Flag {
  static constexpr std::string_view kKey = "displayAttribute";
  static Value Initial(const NewColumn&) { return false; }
};
struct Visible : Flag {
  static constexpr std::string_view kKey = "visible";
  static Value Initial(const NewColumn&) { return true; }
};
struct Nullable : Attribute<bool, InDocument::NotRead> {
  static constexpr std::string_view kKey = "nullable";
};
struct AllowedValues : Attribute<AllowedValueList> {
  static constexpr std::string_view kKey = "allowedValues";
  static Value Initial(const NewColumn&) { return {}; }
};

/// Whether `AddColumn` sets an attribute.
template <class A>
concept HasInitial = requires(const NewColumn& column) {
  A::Initial(column);
};

template <class... A>
struct List {
  /// Room for each attribute; `std::get` finds it by the attribute's name.
  template <class Name>
  struct Slot {
    std::optional<typename Name::Value> value;
  };
  using Slots = std::tuple<Slot<A>...>;

  /// Calls the visitor with one object of each attribute's name, in order.
  template <class Visitor>
  static void ForEach(Visitor&& visit) {
    (visit(A()), ...);
  }
};

/// All of them, in the order in which documents show them.
using All = List<Group, DisplayName, Description, HelpUri, Type, DefaultValue, UpdateExpression,
                 InsertExpression, Unit, Width, Decimals, ReadOnly, AllowAnyValue, DisplayAttribute,
                 Visible, Nullable, AllowedValues>;

}  // namespace attributes

/// The attributes that a column has.
class Column {
 public:
  Column() = default;
  /// Everything that `AddColumn` sets.
  explicit Column(const NewColumn& column) {
    attributes::All::ForEach([&]<class A>(A) {
      if constexpr (attributes::HasInitial<A>) Set<A>(A::Initial(column));
    });
  }

  /// The attribute, or null while the column does not have it.
  template <class A>
  const typename A::Value* Find() const {
    const auto& value = Slot<A>();
    return value ? &*value : nullptr;
  }
  /// @throws std::out_of_range while the column does not have it
  template <class A>
  const typename A::Value& Get() const {
    const auto* value = Find<A>();
    if (!value) Core::ThrowMissingKey();
    return *value;
  }
  template <class A>
  void Set(typename A::Value value) {
    Slot<A>() = std::move(value);
  }
  /// The attribute to be changed, made with its type's empty value if need be.
  template <class A>
  typename A::Value& Edit() {
    auto& value = Slot<A>();
    if (!value) value.emplace();
    return *value;
  }

  /// Every attribute that the other column has replaces the one here.
  void TakeOver(Column&& other) {
    attributes::All::ForEach([&]<class A>(A) {
      if (auto& value = other.Slot<A>()) Slot<A>() = std::move(value);
    });
  }

 private:
  template <class A>
  std::optional<typename A::Value>& Slot() {
    return std::get<attributes::All::Slot<A>>(slots_).value;
  }
  template <class A>
  const std::optional<typename A::Value>& Slot() const {
    return std::get<attributes::All::Slot<A>>(slots_).value;
  }

  attributes::All::Slots slots_;
};

}  // namespace Data
