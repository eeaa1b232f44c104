// Values of every type: conversions return a value or throw std::runtime_error, and comparison is
// antisymmetric.

#include <cmath>
#include <stdexcept>

#include "Core/VariantComparison.h"
#include "Fuzz.h"

using namespace Data::fuzz;

namespace {

template <class Operation>
bool Succeeds(Operation&& operation) {
  try {
    operation();
    return true;
  } catch (const std::runtime_error&) {
    return false;
  }
}

void Convert(const Variant& value) {
  std::string text;
  Succeeds([&] { text = Core::ToText(value); });
  Succeeds([&] { Core::ToInt64(value); });
  Succeeds([&] { Core::ToDouble(value); });
  Succeeds([&] { Core::ToBool(value); });
  Succeeds([&] { Core::ToStringObject(value); });
  const Variant copy = value;
  Require(copy.type == value.type && copy.value[0] == value.value[0]);
}

bool IsReal(const Variant& value) { return Core::KindOf(value.Type()) == Core::ValueKind::Real; }

void CompareBoth(const Variant& left, const Variant& right) {
  int forth = 0, back = 0;
  const bool isOrdered = Succeeds([&] { forth = Core::Compare(left, right); });
  const bool isOrderedBack = Succeeds([&] { back = Core::Compare(right, left); });
  if (left.Type() != right.Type() || IsReal(left)) return;
  Require(isOrdered == isOrderedBack);
  if (Core::KindOf(left.Type()) != Core::ValueKind::Document) Require(forth == -back);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, size);
  const Variant left = AnyValue(input), right = AnyValue(input);
  Convert(left);
  Convert(right);
  CompareBoth(left, right);
  return 0;
}
