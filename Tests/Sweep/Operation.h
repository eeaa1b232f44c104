#pragma once

#include <array>
#include <variant>

#include "Sweep/Description.h"
#include "Sweep/FailingMemory.h"

namespace Data::tests {

using Mode = FailingMemory::Mode;
using Objects = std::vector<Ptr<IObject>>;

inline constexpr char kLackOfMemory[] = "a lack of memory, told as such";

/// One call of an operation: values for it, room for what it gives (it converts to any kind of
/// out-pointer), and what came of it.
class Call {
 public:
  const Variant text{"a text of more than sixteen bytes"}, other{"one more text of that length"};
  const Variant date = Date("2024-11-14T10:20:30.5Z"), json = JsonVariant(R"({"a":[1,2.5]})");

  operator IErrorCode**() {
    isGuarded_ = true;
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

  void Return(const char* text) { returned_ = text; }
  void Return(void* block) { returned_ = std::int64_t{block != nullptr}; }
  void Return(IObject* object) { returned_ = object; }
  template <class Number>
  requires(!std::is_pointer_v<Number>) void Return(Number value) {
    returned_ = static_cast<std::int64_t>(value);
  }
  void Throw(const std::exception& exception) { thrown_ = exception.what(); }

  /// What it returned, gave and reported, or what it threw; to be asked once.
  std::string Outcome() {
    const std::string outcome = Describe();
    // The cryptography fails in its own words.
    const auto isReportOf = [&](std::string_view message) {
      return outcome.starts_with("0 error 2 \"" + std::string(message));
    };
    const bool isLack = isGuarded_ ? isReportOf("std::bad_alloc") || isReportOf("Failed to ") ||
                                         isReportOf("SecureString: ")
                                   : outcome == "throws std::bad_alloc";
    return isLack ? kLackOfMemory : outcome;
  }

 private:
  std::string Describe() {
    if (!thrown_.empty()) return "throws " + thrown_;
    std::string outcome = std::visit([](auto value) { return Show(value); }, returned_);
    for (std::size_t i = 0; i < objectCount_; ++i)
      if (const auto object = adopt_[i](&out_[i])) outcome += " " + tests::Describe(object.Get());
    for (const Variant& value : values_) outcome += tests::Describe(value);
    return error_ ? outcome + " error " + tests::Describe(error_.Get()) : outcome;
  }
  static std::string Show(std::int64_t value) { return std::to_string(value); }
  static std::string Show(const char* text) { return text ? text : "0"; }
  static std::string Show(IObject* object) { return object ? tests::Describe(object) : "0"; }

  std::array<void*, 2> out_;
  std::array<Ptr<IObject> (*)(void*), 2> adopt_;
  std::array<Variant, 2> values_;
  std::size_t objectCount_ = 0, valueCount_ = 0;
  Ptr<IErrorCode> error_;
  bool isGuarded_ = false;
  std::variant<std::int64_t, const char*, IObject*> returned_;
  std::string thrown_;
};

/// A line of the table: what is called, on which objects.
struct Operation {
  template <class Function, class... Interface>
  Operation(std::string name, Function function, Ptr<Interface> (*... makers)())
      : name(std::move(name)), make([=] { return Objects{makers()...}; }) {
    perform = [=]<std::size_t... i>(std::index_sequence<i...>) {
      return [=](const Objects& objects, Call& call) {
        const auto run = [&] {
          if constexpr (std::is_invocable_v<Function, Interface*...>)
            return function(static_cast<Interface*>(objects[i].Get())...);
          else
            return function(call, static_cast<Interface*>(objects[i].Get())...);
        };
        if constexpr (std::is_void_v<decltype(run())>) {
          run();
        } else {
          call.Return(run());
        }
      };
    }
    (std::index_sequence_for<Interface...>());
  }

  /// The outcome with the n-th allocation failing.
  std::string Outcome(const Objects& objects, std::uint64_t n = 0, Mode mode = {}) const {
    Call call;
    try {
      const FailingMemory failure(n, mode);
      perform(objects, call);
    } catch (const std::exception& exception) {
      call.Throw(exception);
    }
    return call.Outcome();
  }

  friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

  std::string name;
  std::function<Objects()> make;
  std::function<void(const Objects&, Call&)> perform;
};
/// The table, a line for each operation that allocates.
std::vector<Operation> Operations();

}  // namespace Data::tests
