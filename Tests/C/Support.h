#pragma once

#include <LayerData/layerdata.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

/// What the tests of the C interface share.
namespace c_tests {

struct Releaser {
  void operator()(void* object) const { ld_release(object); }
};
template <class Handle>
using Held = std::unique_ptr<Handle, Releaser>;

/// The message and code of a call that must fail.
template <class Call>
std::string Failure(Call&& call) {
  ld_error* error = nullptr;
  if (call(&error)) return "did not fail";
  const Held<ld_error> held(error);
  return std::string(ld_error_message(error)) + " " + std::to_string(ld_error_code(error));
}

/// What a call that must succeed receives.
template <class Handle, class Call>
Held<Handle> Received(Call&& call) {
  Handle* handle = nullptr;
  ld_error* error = nullptr;
  EXPECT_TRUE(call(&handle, &error)) << ld_error_message(error);
  ld_release(error);
  return Held<Handle>(handle);
}

inline Held<ld_table> Table(const char* csv) {
  return Received<ld_table>([&](ld_table** out, ld_error** error) {
    return ld_parse_csv(csv, std::strlen(csv), out, error);
  });
}

inline std::string TextOf(const ld_variant& value) {
  const auto text = Received<ld_string>(
      [&](ld_string** out, ld_error** error) { return ld_variant_to_text(&value, out, error); });
  const char* utf8 = nullptr;
  EXPECT_TRUE(ld_string_get_utf8(text.get(), &utf8, nullptr));
  return utf8;
}

inline std::string Cell(ld_table* table, std::int64_t row, std::int32_t column) {
  ld_variant value{};
  EXPECT_TRUE(ld_table_get_cell(table, row, column, &value, nullptr));
  const std::string text = TextOf(value);
  ld_variant_clear(&value);
  return text;
}

}  // namespace c_tests
