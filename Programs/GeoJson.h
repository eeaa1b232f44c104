#pragma once

#include <LayerData/Table.h>

#include <string>

namespace program {

/// A feature collection: a point for each row, with the other columns as properties. A row without
/// coordinates has no geometry.
/// @param longitude, latitude  names of columns; empty for the usual ones
/// @throws layerdata::Error for a column that is not there, and for a value that is no coordinate
std::string ToGeoJson(const layerdata::Table& table, const std::string& longitude,
                      const std::string& latitude);

}  // namespace program
