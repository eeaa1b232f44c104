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

/// Not a runtime_error, to which readers add where in the text it happened.
struct Cancellation final : std::exception {
  const char* what() const noexcept override { return "The operation was cancelled!"; }
};

}  // namespace

Threads::Threads(std::uint32_t count, Progress progress) : asked_(count), progress_(progress) {}

/// Asks the system, so not for a small job.
std::size_t Threads::ThreadCount() const {
  if (asked_ != 0) return std::min(asked_, kMost);
  return std::min(Platform::CountProcessors(), kMostByDefault);
}

std::size_t Threads::CountFor(std::size_t bytes) const {
  constexpr std::size_t kMostPerThread = 8, kLeastPartBytes = std::size_t{1} << 18;
  if (asked_ == 0 && bytes < kLeastBytes) return 1;
  const std::size_t threads = ThreadCount();
  if (threads == 1) return 1;
  return std::clamp(bytes / kLeastPartBytes, threads, kMostPerThread * threads);
}

void Threads::Run(std::size_t count, const std::function<void(std::size_t)>& part) {
  Job job(count, part);
  std::vector<std::jthread> threads;
  const std::size_t wanted = count <= 1 ? count : std::min(ThreadCount(), count);
  try {
    for (std::size_t i = 1; i < wanted; ++i) threads.emplace_back([&job] { job.Work(); });
  } catch (const std::system_error&) {  // no more threads
  } catch (const std::bad_alloc&) {     // no memory for one
  }
  job.Work();
  threads.clear();
  job.ThrowFailure();
}

void Threads::Start(std::uint64_t total) {
  done_ = 0;
  total_ = total;
}

void Threads::Advance(std::size_t done) {
  const std::uint64_t all = done_ += done;
  if (all < total_ && std::this_thread::get_id() == caller_) Report(all);
}

void Threads::Finish() { Report(total_); }

void Threads::Report(std::uint64_t done) {
  if (progress_.call && !progress_.call(progress_.context, done, total_)) throw Cancellation();
}

}  // namespace Data::c
