#pragma once

#include <chrono>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <ostream>
#include <ratio>
#include <string>

#include "LayerData/Handle.h"

namespace layerdata {

/// A point in time in UTC, in steps of 100 nanoseconds: what a date-time of the library holds, as a
/// value that is compared, hashed and printed like a number.
class DateTime {
 public:
  /// 100 nanoseconds.
  using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
  /// The time point of std::chrono.
  using Time = std::chrono::sys_time<Ticks>;

  /// 1970-01-01T00:00:00Z
  constexpr DateTime() noexcept = default;
  /// @param time  of steps that are whole numbers of ticks, such as seconds or days
  template <class Duration>
  requires std::convertible_to<Duration, Ticks>
  constexpr DateTime(std::chrono::sys_time<Duration> time) noexcept : time_(time) {}
  /// Midnight at the start of a day.
  constexpr DateTime(std::chrono::year_month_day date) noexcept
      : time_(std::chrono::sys_days(date)) {}

  /// Reads ISO 8601, such as "2024-11-14T10:20:30.5Z". A date without a time is noon. An offset is
  /// read but not applied.
  /// @throws Error with the reader's message
  static DateTime Parse(const std::string& text) {
    const auto parsed =
        detail::Receive<ld_date_time>(ld_create_date_time_from_iso8601, text.c_str());
    return FromObject(parsed.Get());
  }
  /// The current time.
  static DateTime Now() {
    return FromObject(detail::Receive<ld_date_time>(ld_create_current_date_time).Get());
  }

  /// The same point in time for std::chrono.
  constexpr Time ToSysTime() const noexcept { return time_; }
  /// As `ToSysTime`.
  constexpr operator Time() const noexcept { return time_; }
  /// The calendar day.
  constexpr std::chrono::year_month_day Date() const noexcept {
    return std::chrono::floor<std::chrono::days>(time_);
  }
  /// The time since midnight.
  constexpr std::chrono::hh_mm_ss<Ticks> TimeOfDay() const noexcept {
    return std::chrono::hh_mm_ss(time_ - std::chrono::floor<std::chrono::days>(time_));
  }

  /// Moves it by a duration.
  constexpr DateTime& operator+=(Ticks ticks) noexcept {
    time_ += ticks;
    return *this;
  }
  /// Moves it back by a duration.
  constexpr DateTime& operator-=(Ticks ticks) noexcept { return *this += -ticks; }
  /// A later time.
  friend constexpr DateTime operator+(DateTime time, Ticks ticks) noexcept { return time += ticks; }
  /// An earlier time.
  friend constexpr DateTime operator-(DateTime time, Ticks ticks) noexcept { return time -= ticks; }
  /// The duration between two times.
  friend constexpr Ticks operator-(DateTime left, DateTime right) noexcept {
    return left.time_ - right.time_;
  }
  friend constexpr auto operator<=>(const DateTime&, const DateTime&) = default;

  /// 2024-11-14T10:20:30.5Z: as many decimals as there are, and none for whole seconds.
  std::string ToText() const;
  friend std::ostream& operator<<(std::ostream& out, const DateTime& time) {
    return out << time.ToText();
  }

  /// A new date-time of the C interface.
  detail::Handle<ld_date_time> ToObject() const {
    auto object =
        detail::Receive<ld_date_time>(ld_create_date_time_from_file_time, std::uint64_t{0});
    detail::Call(ld_date_time_add_ticks, object.Get(), (time_ - k1601).count());
    return object;
  }
  /// The value of a date-time of the C interface.
  static DateTime FromObject(ld_date_time* object) {
    const auto ticks = detail::Ask<std::uint64_t>(ld_date_time_get_file_time, object);
    return DateTime(k1601 + Ticks(static_cast<std::int64_t>(ticks)));
  }

 private:
  static constexpr Time k1601 = std::chrono::sys_days(std::chrono::year(1601) / 1 / 1);

  Time time_{};
};

inline std::string DateTime::ToText() const {
  const std::chrono::year_month_day date = Date();
  const std::chrono::hh_mm_ss<Ticks> time = TimeOfDay();
  char text[64];
  int size = std::snprintf(
      text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%07d", static_cast<int>(date.year()),
      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
      static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
      static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
  while (text[size - 1] == '0') --size;
  if (text[size - 1] == '.') --size;
  return std::string(text, static_cast<std::size_t>(size)) + "Z";
}

}  // namespace layerdata
