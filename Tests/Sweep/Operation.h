#pragma once

#include <array>

#include "Script.h"
#include "Sweep/FailingMemory.h"

namespace Data::tests {

using Objects = std::vector<Ptr<IObject>>;

/// One call of an operation. It provides argument values, and converts to any kind of out-pointer
/// to receive what the operation returns.
class Call {
 public:
  const Variant text{"a text of more than sixteen bytes"}, other{"one more text of that length"};
  const Variant date = Date("2024-11-14T10:20:30.5Z"), json = JsonVariant(R"({"a":[1,2.5]})");
  bool isGuarded = false;

  operator IErrorCode**() {
    isGuarded = true;
    return error_.Receive();
  }
  operator Structures::_VARIANT*() { return &values_[valueCount_++]; }
  template <std::derived_from<IObject> Interface>
  operator Interface**() {
    adopt_[objectCount_] = [](void* out) {
      return Ptr<IObject>::Adopt(*static_cast<Interface**>(out));
    };
    return new (&out_[objectCount_++]) Interface*(nullptr);
  }

  /// What the operation returned, stored and reported, or what it threw.
  template <class Function>
  std::string Outcome(Function function, std::uint64_t n, bool onlyOne) {
    const auto fail = [&] {
      const FailingMemory failure(n, onlyOne);
      return function();
    };
    try {
      if constexpr (std::is_void_v<decltype(function())>) {
        fail();
        return Given("");
      } else {
        return Given(Shown(fail()));
      }
    } catch (const std::exception& exception) {
      return "throws "s + exception.what();
    }
  }

 private:
  template <class Returned>
  static std::string Shown(Returned value) {
    if constexpr (std::is_convertible_v<Returned, IObject*>)
      return value ? Describe(value) : "0";
    else if constexpr (std::is_convertible_v<Returned, const char*>)
      return value ? value : "0";
    else
      return std::to_string(static_cast<std::int64_t>(value));
  }
  std::string Given(std::string outcome) {
    for (std::size_t i = 0; i < objectCount_; ++i)
      if (const auto object = adopt_[i](&out_[i])) outcome += " " + Describe(object.Get());
    for (const Variant& value : values_) outcome += Describe(value);
    return error_ ? outcome + " error " + Describe(error_.Get()) : outcome;
  }

  std::array<void*, 2> out_;
  std::array<Ptr<IObject> (*)(void*), 2> adopt_;
  std::array<Variant, 2> values_;
  std::size_t objectCount_ = 0, valueCount_ = 0;
  Ptr<IErrorCode> error_;
};

/// A line of the table: the operation and the new objects with which it is called.
struct Operation {
  Operation() = default;
  template <class Function, class... Make>
  Operation(std::string name, Function function, Make... make)
      : name(std::move(name)), make([=] { return Objects{make()...}; }) {
    const auto withArguments = [=]<std::size_t... i>(std::index_sequence<i...>) {
      return [=](Call& call, const Objects& objects, std::uint64_t n, bool onlyOne) {
        const auto run = [&] {
          if constexpr (std::is_invocable_v<Function, decltype(make().Get())...>)
            return function(static_cast<decltype(make().Get())>(objects[i].Get())...);
          else
            return function(call, static_cast<decltype(make().Get())>(objects[i].Get())...);
        };
        return call.Outcome(run, n, onlyOne);
      };
    };
    outcome = withArguments(std::index_sequence_for<Make...>());
  }
  friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

  std::string name;
  std::function<Objects()> make;
  /// The outcome of one call while the n-th allocation fails.
  std::function<std::string(Call&, const Objects&, std::uint64_t n, bool onlyOne)> outcome;
  bool mayNeedNoMemory = false;
};

/// A line for each operation that allocates.
std::vector<Operation> Operations();
/// The functions of the C interface.
std::vector<Operation> CFunctions();

}  // namespace Data::tests
