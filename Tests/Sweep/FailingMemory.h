#pragma once

#include <cstdint>

namespace Data::tests {

/// While an object of this class exists, the n-th allocation of the process fails, alone or with
/// all that follow. The program replaces malloc and its family, and operator new. For one thread
/// only.
struct FailingMemory {
  FailingMemory(std::uint64_t n, bool onlyOne);
  ~FailingMemory();

  static bool hasFailed;           ///< during the latest lifetime
  static std::int64_t liveBlocks;  ///< allocated and not freed yet
};

}  // namespace Data::tests
