#pragma once

#include <cstdint>

namespace Data::tests {

/// While it lives, the n-th allocation of the process fails, alone or with all that follow.
/// Replaces malloc and its family, and operator new; one thread only.
class FailingMemory {
 public:
  enum class Mode { OnlyOne, AllFromThere };

  FailingMemory(std::uint64_t n, Mode mode);
  ~FailingMemory();

  /// How many failed in the latest lifetime of such an object.
  static std::uint64_t FailedCount();
  /// How many blocks are allocated and not freed yet.
  static std::int64_t LiveBlocks();
};

}  // namespace Data::tests
