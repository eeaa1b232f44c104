// Values of every type: conversions give a value or throw std::runtime_error, and comparison is
// antisymmetric.

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
  Succeeds([&] { Core::ToText(value); });
  Succeeds([&] { Core::ToInt64(value); });
  Succeeds([&] { Core::ToDouble(value); });
  Succeeds([&] { Core::ToBool(value); });
  Succeeds([&] { Core::ToStringObject(value); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Input input(data, size);
  const Variant left = AnyValue(input), right = AnyValue(input);
  Convert(left);
  int forth = 0, back = 0;
  const bool isOrdered = Succeeds([&] { forth = Core::Compare(left, right); });
  const bool isOrderedBack = Succeeds([&] { back = Core::Compare(right, left); });
  const Core::ValueKind kind = Core::KindOf(left.Type());
  // NaN has no order, and documents are equal by value but ordered by their texts.
  if (left.Type() != right.Type() || kind == Core::ValueKind::Real) return 0;
  Require(isOrdered == isOrderedBack);
  if (kind != Core::ValueKind::Document) Require(forth == -back);
  return 0;
}
