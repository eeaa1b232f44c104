#pragma once

#include <cstdint>

namespace Data::tests {

/// While it lives, the n-th allocation of the process fails, alone or with all that follow.
/// Replaces malloc and its family, and operator new; for one thread only.
struct FailingMemory {
  FailingMemory(std::uint64_t n, bool onlyOne);
  ~FailingMemory();

  static bool hasFailed;           ///< in the latest lifetime
  static std::int64_t liveBlocks;  ///< allocated and not freed yet
};

}  // namespace Data::tests
