#pragma once

#include <stdint.h>

namespace Data::Structures {

/// How an application compares a cell with an allowed value. The library stores it but never
/// evaluates it.
enum class ComparisonOperator : uint32_t {
  None = 0,
  Equal = 1,
  Greater = 2,
  Less = 3,
  GreaterOrEqual = 4,
  LessOrEqual = 5,
  Like = 6,
  NotLike = 7,
  NotEqual = 8
};

}  // namespace Data::Structures
