#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "Core/Parts.h"

namespace Data::c {

/// Runs the parts of a job on the calling thread and on threads that end before `Run` returns.
///
/// Threads of the standard library serve both systems, need no further library in the package, and
/// leave nothing behind: the jobs are long (4 MB take some 10 ms), so a pool of threads that stays
/// between calls would save little.
class Threads final : public Core::Parts {
 public:
  /// @param count  including the calling thread, at most `kMost`; 0 for as many as the process has
  ///               processors, at most `kMostByDefault`
  explicit Threads(std::uint32_t count);

  static constexpr std::uint32_t kMost = 256, kMostByDefault = 16;
  /// Of text or cells. A smaller job is not worth a thread.
  static constexpr std::size_t kLeastBytes = std::size_t{4} << 20;

  std::size_t CountFor(std::size_t bytes) const override {
    return bytes < kLeastBytes ? 1 : threadCount_;
  }
  /// A thread that cannot be started is done without: the others take its parts.
  void Run(std::size_t count, const std::function<void(std::size_t)>& part) override;

 private:
  std::size_t threadCount_;
};

}  // namespace Data::c
