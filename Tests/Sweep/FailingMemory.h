#pragma once

#include <atomic>
#include <cstdint>

namespace Data::tests {

/// While an object of this class exists, the n-th allocation of the process fails, alone or with
/// all that follow, whichever thread asks. The program replaces malloc and its family, and operator
/// new.
struct FailingMemory {
  FailingMemory(std::uint64_t n, bool onlyOne);
  ~FailingMemory();

  static std::atomic<bool> hasFailed;           ///< during the latest lifetime
  static std::atomic<std::int64_t> liveBlocks;  ///< allocated and not freed yet
};

}  // namespace Data::tests
