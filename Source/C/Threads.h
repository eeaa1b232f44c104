#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <thread>

#include "Core/Parts.h"
#include "LayerData/layerdata.h"

namespace Data::c {

/// The caller's progress function; none if `call` is null.
struct Progress {
  ld_progress call = nullptr;
  void* context = nullptr;
};

/// Runs the parts of a job on the calling thread and on threads that end before `Run` returns.
///
/// Threads of the standard library serve both systems, need no further library in the package, and
/// leave nothing behind: the jobs are long (4 MB take some 10 ms), so a pool of threads that stays
/// between calls would save little.
class Threads final : public Core::Parts {
 public:
  /// @param count  including the calling thread, at most `kMost`; 0 for as many as the process has
  ///               processors, at most `kMostByDefault`, and only for a job of `kLeastBytes`
  explicit Threads(std::uint32_t count, Progress progress = {});

  static constexpr std::uint32_t kMost = 256, kMostByDefault = 16;
  /// Of text or cells. A smaller job is not worth a thread.
  static constexpr std::size_t kLeastBytes = std::size_t{4} << 20;

  /// Several for each thread, so that one that is slower than the others does not keep them waiting
  /// for long.
  std::size_t CountFor(std::size_t bytes) const override;
  /// A thread that cannot be started is done without: the others take its parts.
  void Run(std::size_t count, const std::function<void(std::size_t)>& part) override;

  /// Begins a job of so many bytes or rows. To be called before the following two.
  void Start(std::uint64_t total);
  void Advance(std::size_t done) override;
  /// The job is done: calls the progress function for the last time.
  /// @throws std::exception "The operation was cancelled!", as `Advance`
  void Finish();

 private:
  std::size_t ThreadCount() const;
  void Report(std::uint64_t done);

  std::uint32_t asked_;  ///< the caller's number of threads; 0 if it is for this class to choose
  Progress progress_;
  std::thread::id caller_ = std::this_thread::get_id();
  std::atomic<std::uint64_t> done_ = 0;
  std::uint64_t total_ = 0;
};

}  // namespace Data::c
