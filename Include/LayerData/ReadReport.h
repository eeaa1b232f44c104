#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "LayerData/Handle.h"

namespace layerdata {

/// What reading a text found, and what the text lost.
class ReadReport {
 public:
  /// Of nothing: to be passed to a reading.
  ReadReport() noexcept = default;
  explicit ReadReport(detail::Handle<ld_read_report> report) noexcept
      : report_(std::move(report)) {}

  /// The separator of the values.
  std::string Separator() const {
    return detail::Ask<const char*>(ld_read_report_get_separator, Get());
  }
  /// Whether a line names the columns.
  bool HasHeader() const { return detail::Ask<bool>(ld_read_report_has_header, Get()); }
  /// The code page that was used: 65001 for UTF-8, 1200 and 1201 for UTF-16.
  std::uint32_t CodePage() const {
    return detail::Ask<std::uint32_t>(ld_read_report_get_code_page, Get());
  }
  /// The number of lines that were read, without empty ones.
  std::uint64_t LineCount() const {
    return detail::Ask<std::uint64_t>(ld_read_report_get_line_count, Get());
  }
  /// Everything that was dropped or would not be written as it was read, in words.
  std::vector<std::string> Problems() const {
    const auto count = detail::Ask<std::uint64_t>(ld_read_report_get_problem_count, Get());
    std::vector<std::string> problems;
    for (std::uint64_t i = 0; i < count; ++i)
      problems.emplace_back(
          ld_error_message(detail::Receive<ld_error>(ld_read_report_get_problem, Get(), i).Get()));
    return problems;
  }
  friend std::ostream& operator<<(std::ostream& out, const ReadReport& report) {
    for (const std::string& problem : report.Problems()) out << problem << '\n';
    return out;
  }

  /// For the numbers of single lines and columns.
  ld_read_report* Get() const noexcept { return report_.Get(); }

 private:
  detail::Handle<ld_read_report> report_;
};

}  // namespace layerdata
