#include "C/Threads.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "Platform/Processors.h"

namespace Data::c {

namespace {

/// The parts of one job, which the threads take in order.
class Job {
 public:
  Job(std::size_t count, const std::function<void(std::size_t)>& part)
      : count_(count), failed_(count), part_(part) {}

  /// Runs parts until none is left or one has failed.
  void Work() noexcept {
    for (std::size_t i = next_++; i < count_ && i < failed_; i = next_++) {
      try {
        part_(i);
      } catch (...) {
        NoteFailure(i);
      }
    }
  }

  void ThrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  void NoteFailure(std::size_t index) noexcept {
    const std::scoped_lock lock(mutex_);
    if (index > failed_) return;
    failed_ = index;
    failure_ = std::current_exception();
  }

  std::size_t count_;
  std::atomic<std::size_t> next_ = 0;
  /// The lowest part that has failed. Parts before it still run: they may fail as well.
  std::atomic<std::size_t> failed_;
  std::exception_ptr failure_;
  std::mutex mutex_;
  const std::function<void(std::size_t)>& part_;
};

}  // namespace

Threads::Threads(std::uint32_t count)
    : threadCount_(count != 0 ? std::min(count, kMost)
                              : std::min(Platform::CountProcessors(), kMostByDefault)) {}

void Threads::Run(std::size_t count, const std::function<void(std::size_t)>& part) {
  Job job(count, part);
  std::vector<std::jthread> threads;
  const std::size_t wanted = std::min(threadCount_, count);
  try {
    for (std::size_t i = 1; i < wanted; ++i) threads.emplace_back([&job] { job.Work(); });
  } catch (const std::system_error&) {  // no more threads
  } catch (const std::bad_alloc&) {     // no memory for one
  }
  job.Work();
  threads.clear();
  job.ThrowFailure();
}

}  // namespace Data::c
