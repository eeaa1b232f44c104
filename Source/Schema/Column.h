#pragma once

#include <algorithm>
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

/// The arguments of `AddColumn`; a new column's attributes are computed from them.
struct NewColumn {
  std::string_view name;
  Core::ValueType type;
  std::int32_t width;
  std::int32_t decimals;
};

/// The default value of a column of this type.
Core::Variant ZeroOf(Core::ValueType type);

/// How an attribute is read from a column of a document.
enum class Reading : std::uint8_t {
  Required,  ///< an argument of `AddColumn`
  Optional,
  IfText,  ///< optional; ignored unless it is a string
  Never
};

/// How an attribute is written to a column of a document.
enum class Writing : std::uint8_t {
  Required,  ///< a column without it cannot be written
  IfSet,
  IfNotEmpty
};

/// The attributes of a column, each defined once: its type, its key in documents, how it is read
/// and written there, and the value that `AddColumn` sets. `AddColumn` does not set an attribute
/// without `Initial`.
namespace attributes {

using AllowedValueList = std::vector<Core::Ptr<Interfaces::IAllowedValue>>;

template <class T, Reading reading = Reading::Optional, Writing writing = Writing::Required>
struct Attribute {
  using Value = T;
  static constexpr Reading kReading = reading;
  static constexpr Writing kWriting = writing;
};
using Text = Attribute<std::string>;
using Expression = Attribute<std::string, Reading::IfText, Writing::IfSet>;
using Flag = Attribute<bool>;
using RequiredInteger = Attribute<std::int32_t, Reading::Required>;

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
struct Type : Attribute<Core::ValueType, Reading::Required> {
  static constexpr std::string_view kKey = "type";
  static Value Initial(const NewColumn& column) { return column.type; }
};
struct DefaultValue : Attribute<Core::Variant> {
  static constexpr std::string_view kKey = "defaultValue";
  static Value Initial(const NewColumn& column) { return ZeroOf(column.type); }
};
struct UpdateExpression : Expression {
  static constexpr std::string_view kKey = "updateExpression";
};
struct InsertExpression : Expression {
  static constexpr std::string_view kKey = "insertExpression";
};
struct Unit : Attribute<std::string, Reading::Optional, Writing::IfSet> {
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
struct Nullable : Attribute<bool, Reading::Never, Writing::IfSet> {
  static constexpr std::string_view kKey = "nullable";
};
struct AllowedValues : Attribute<AllowedValueList, Reading::Optional, Writing::IfNotEmpty> {
  static constexpr std::string_view kKey = "allowedValues";
  static Value Initial(const NewColumn&) { return {}; }
};

/// Whether `AddColumn` sets the attribute.
template <class A>
concept HasInitial = requires(const NewColumn& column) {
  A::Initial(column);
};

template <class... A>
struct List {
  /// An attribute's storage; `std::get` finds it by its type.
  template <class Name>
  struct Slot {
    std::optional<typename Name::Value> value;
  };
  using Slots = std::tuple<Slot<A>...>;

  /// Calls the visitor with an object of each attribute, in order.
  template <class Visitor>
  static void ForEach(Visitor&& visit) {
    (visit(A()), ...);
  }
};

/// All attributes, in the order in which they are written to documents.
using All = List<Group, DisplayName, Description, HelpUri, Type, DefaultValue, UpdateExpression,
                 InsertExpression, Unit, Width, Decimals, ReadOnly, AllowAnyValue, DisplayAttribute,
                 Visible, Nullable, AllowedValues>;

}  // namespace attributes

/// A copy of a list of objects. Adding a reference may call code that changes the list; what it
/// adds is left out.
template <class Interface>
std::vector<Core::Ptr<Interface>> CopyOf(const attributes::AllowedValueList& list) {
  std::vector<Core::Ptr<Interface>> copy;
  const std::size_t count = list.size();
  copy.reserve(count);
  for (std::size_t i = 0; i < std::min(count, list.size()); ++i) {
    Core::Ptr<Interface> object = list[i];
    copy.push_back(std::move(object));
  }
  return copy;
}

/// The attributes that a column has. The caller's objects are released only when no change is half
/// done, since their code may use the column again.
class Column {
 public:
  Column() = default;
  /// A column with all attributes that `AddColumn` sets.
  explicit Column(const NewColumn& column) {
    attributes::All::ForEach([&]<class A>(A) {
      if constexpr (attributes::HasInitial<A>) Set<A>(A::Initial(column));
    });
  }
  Column(const Column& other) {
    attributes::All::ForEach([&]<class A>(A) {
      const auto* value = other.Find<A>();
      if (!value) return;
      if constexpr (std::is_same_v<A, attributes::AllowedValues>) {
        Slot<A>() = CopyOf<Interfaces::IAllowedValue>(*value);
      } else {
        Slot<A>() = *value;
      }
    });
  }
  Column(Column&&) = default;
  Column& operator=(const Column&) = delete;
  ~Column() = default;

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
    std::swap(Edit<A>(), value);
  }
  /// The attribute, to be changed; a missing one is added with an empty value first.
  template <class A>
  typename A::Value& Edit() {
    auto& value = Slot<A>();
    if (!value) value.emplace();
    return *value;
  }

  /// Replaces the attributes that the other column has.
  void TakeOver(Column other) {
    attributes::All::ForEach([&]<class A>(A) {
      if (auto& value = other.Slot<A>()) Slot<A>().swap(value);
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
