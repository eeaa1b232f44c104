#pragma once

#include <LayerData/Value.h>

#include <sstream>
#include <string>

/// What the tests of the C++ layer share.
namespace layerdata::tests {

/// The message of the error that a function throws.
template <class Function>
std::string Message(Function&& function) {
  try {
    function();
  } catch (const Error& error) {
    return error.what();
  }
  return "does not fail";
}

template <class T>
std::string Print(const T& value) {
  std::ostringstream text;
  text << value;
  return text.str();
}

/// A value as a C++ type, printed; or why it is none.
template <class T>
std::string Shown(const Value& value) {
  std::string shown;
  const std::string message = Message([&] {
    if constexpr (sizeof(T) == 1 && std::integral<T>)
      shown = std::to_string(value.As<T>());
    else
      shown = Print(value.As<T>());
  });
  return shown.empty() && message != "does not fail" ? message : shown;
}

}  // namespace layerdata::tests
