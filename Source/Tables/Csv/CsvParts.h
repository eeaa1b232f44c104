#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "Core/ObjectPool.h"
#include "Core/Parts.h"

namespace Data::impl {

/// Cuts a text behind line ends that are outside quotes, into parts of about the same size. A line
/// that is longer than a part makes their number smaller.
std::vector<std::string_view> CutAtLineEnds(std::string_view text, Core::Parts& parts);

/// A pool for each part that is being read, passed on from one part to the next: threads do not
/// share one, and its last region is not left half empty after each part.
class PartPools {
 public:
  /// @param textSize  of the part; determines the size of a new pool's first region
  std::unique_ptr<Core::ObjectPool> Take(std::size_t textSize);
  void PutBack(std::unique_ptr<Core::ObjectPool> pool);

 private:
  std::mutex mutex_;
  std::vector<std::unique_ptr<Core::ObjectPool>> idle_;
};

}  // namespace Data::impl
