#pragma once

#include <cstddef>
#include <functional>

namespace Core {

/// How a long job is cut into parts that may run at the same time. This one keeps the job whole and
/// on the calling thread.
class Parts {
 public:
  Parts() = default;
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;
  virtual ~Parts() = default;

  /// Into how many parts a job over a text or table of this size is cut; at least 1.
  virtual std::size_t CountFor(std::size_t bytes) const {
    static_cast<void>(bytes);
    return 1;
  }

  /// Calls `part` once for each index below `count`, perhaps on several threads, and returns when
  /// all are done. If parts throw, the exception of the lowest index is thrown; parts after it may
  /// not have been started.
  virtual void Run(std::size_t count, const std::function<void(std::size_t)>& part) {
    for (std::size_t i = 0; i < count; ++i) part(i);
  }

  /// Tells that so many more bytes or rows of the job are done, from any of its threads. May throw
  /// on the calling thread, to cancel the job. Worth a call for every `kStep` bytes.
  virtual void Advance(std::size_t done) { static_cast<void>(done); }

  static constexpr std::size_t kStep = std::size_t{1} << 18;
};

}  // namespace Core
