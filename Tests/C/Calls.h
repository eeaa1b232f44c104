#pragma once

#include <LayerData/layerdata.h>

#include <array>
#include <tuple>
#include <type_traits>
#include <utility>

/// Calls of every function of the C interface with arguments that a class of the test provides.
namespace c_tests {

template <class T>
concept Complete = requires {
  sizeof(T);
};
template <class T>
struct IsHandleTrait : std::false_type {};
template <class T>
struct IsHandleTrait<T*>
    : std::bool_constant<std::is_class_v<T> && !std::is_const_v<T> && !Complete<T>> {};
/// Whether a type is `ld_table*` or alike.
template <class T>
constexpr bool IsHandle = IsHandleTrait<T>::value;

/// A function of the interface. `Arguments::Next<T>(name)` provides its arguments from left to
/// right, without the last one.
template <class Arguments>
struct Function {
  const char* name;
  std::array<const char*, 16> parameters;
  bool (*call)(const Function&, Arguments&, ld_error**);
  /// Calls `Arguments::Prepare<T>()` for each argument.
  void (*prepare)(Arguments&);
  bool takesHandle;
};

template <auto function>
struct Caller;
template <class... Parameters, bool (*function)(Parameters...)>
struct Caller<function> {
  template <class Arguments>
  static bool Call(const Function<Arguments>& self, Arguments& arguments, ld_error** error) {
    return [&]<std::size_t... i>(std::index_sequence<i...>) {
      // Braces evaluate from left to right.
      const std::tuple<Parameters...> values{Argument<Parameters, i>(self, arguments, error)...};
      return std::apply(function, values);
    }
    (std::index_sequence_for<Parameters...>());
  }
  template <class T, std::size_t i, class Arguments>
  static T Argument(const Function<Arguments>& self, Arguments& arguments, ld_error** error) {
    if constexpr (i + 1 == sizeof...(Parameters))
      return error;
    else
      return arguments.template Next<T>(self.parameters[i]);
  }
  template <class Arguments>
  static void Prepare(Arguments& arguments) {
    if constexpr (requires { arguments.template Prepare<int>(); })
      (arguments.template Prepare<Parameters>(), ...);
  }
  static constexpr bool kTakesHandle = (IsHandle<Parameters> || ...);
};

/// All functions of the headers that can fail.
template <class Arguments>
inline constexpr Function<Arguments> kFunctions[] = {
#define FUNCTION(name, ...)                   \
  {#name,                                     \
   {__VA_ARGS__},                             \
   Caller<name>::template Call<Arguments>,    \
   Caller<name>::template Prepare<Arguments>, \
   Caller<name>::kTakesHandle},
#include "Calls.inc"
#undef FUNCTION
};

}  // namespace c_tests
