#pragma once

#include <cstdint>
#include <exception>
#include <functional>

#include "LayerData/Handle.h"
#include "LayerData/ReadReport.h"

namespace layerdata {

/// Called now and then with what is done of a long job and its whole size.
/// @return false to cancel: the job fails with "The operation was cancelled!"
using Progress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

/// The form of values in a text, see layerdata_writing.h.
enum class ValueForm : std::uint32_t {
  Exact = LD_VALUE_FORM_EXACT,     ///< reads back as the same value
  Display = LD_VALUE_FORM_DISPLAY  ///< as the contract of the library displays it
};

namespace detail {

/// Passes a progress function to the C interface. What it throws cancels the job, and is thrown
/// again when the job has ended.
class ProgressCall {
 public:
  explicit ProgressCall(const Progress& progress) noexcept : progress_(progress) {}

  ld_progress Function() const noexcept { return progress_ ? &Report : nullptr; }
  template <class Job>
  void Run(Job&& job) {
    try {
      job();
    } catch (const Error&) {
      if (thrown_) std::rethrow_exception(thrown_);
      throw;
    }
  }
  /// Runs the job `read(&options, &table, &report, &error)`.
  template <class Options, class Read>
  Handle<ld_table> ReadTable(const Options& options, ReadReport* report, Read&& read) {
    ld_table* table = nullptr;
    ld_read_report* found = nullptr;
    Run([&] { Call(read, &options, &table, report ? &found : nullptr); });
    if (report) *report = ReadReport(Handle(found));
    return Handle(table);
  }

 private:
  static bool Report(void* context, std::uint64_t done, std::uint64_t total) noexcept {
    auto& self = *static_cast<ProgressCall*>(context);
    try {
      return self.progress_(done, total);
    } catch (...) {
      self.thrown_ = std::current_exception();
      return false;
    }
  }

  const Progress& progress_;
  std::exception_ptr thrown_;
};

}  // namespace detail
}  // namespace layerdata
