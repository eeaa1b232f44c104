#pragma once

#include <LayerData/Table.h>

#include <functional>
#include <string>
#include <string_view>

namespace program {

/// Tells what reading has lost, with the lines as editors number them.
/// @param text    what was read
/// @param forget  called now and then while the lines are counted: those need not stay in memory
void WarnOfLosses(const layerdata::Table& table, const layerdata::ReadReport& report,
                  std::string_view text, const std::string& source, std::function<void()> forget);

/// The failure of a line with too many values.
/// @param line  as the report numbers it
layerdata::Error LongLineError(std::string_view text, const std::string& source,
                               const layerdata::Table& table, std::uint64_t line,
                               std::uint64_t valueCount);

}  // namespace program
