#include "GeoJson.h"

#include <charconv>
#include <cmath>
#include <initializer_list>

#include "Commands.h"
#include "Names.h"

namespace program {

namespace {

using layerdata::Column;
using layerdata::Error;
using layerdata::Table;

bool EqualsIgnoringCase(std::string_view text, std::string_view lower) {
  return std::ranges::equal(text, lower, [](char c, char l) {
    return (c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) == l;
  });
}

std::string FindColumn(const Table& table, const std::string& given,
                       std::initializer_list<const char*> usual, const char* option) {
  if (!given.empty()) {
    RequireColumns(table, {given}, "The table");
    return given;
  }
  for (const char* name : usual)
    for (const Column column : table.Columns())
      if (EqualsIgnoringCase(column.Name(), name)) return column.Name();
  throw UsageError(std::string("Which column holds the coordinates? Name it with ") + option);
}

/// The text of a coordinate; empty for Null.
std::string CoordinateAt(const Column& column, std::int64_t row, double most) {
  const layerdata::Cell cell = column[row];
  if (cell.IsNull()) return {};
  // In messages rows count from 1, as users count them.
  const auto fail = [&](const char* problem) -> std::string {
    throw Error::OfValue(cell.ToText(), problem).InCell(column.Name(), row + 1);
  };
  if (!cell.IsNumber()) return fail("is not a number");
  const double degrees =
      layerdata::detail::NumberOf(cell.Record()).kind == layerdata::detail::Number::Kind::Real
          ? cell.As<double>()
          : static_cast<double>(cell.As<std::int64_t>());
  if (!(std::abs(degrees) <= most))
    return fail(most > 90 ? "is no longitude: it is not between -180 and 180"
                          : "is no latitude: it is not between -90 and 90");
  char digits[32];
  return {digits, std::to_chars(digits, std::end(digits), degrees).ptr};
}

std::string Geometry(const Column& longitudes, const Column& latitudes, std::int64_t row) {
  const std::string longitude = CoordinateAt(longitudes, row, 180);
  const std::string latitude = CoordinateAt(latitudes, row, 90);
  if (longitude.empty() || latitude.empty()) return "null";
  return R"({"type":"Point","coordinates":[)" + longitude + "," + latitude + "]}";
}

/// The other columns of all rows, a JSON object on each line.
layerdata::Text Properties(const Table& table, const std::string& longitude,
                           const std::string& latitude) {
  std::vector<std::string> names;
  for (const Column column : table.Columns())
    if (column.Name() != longitude && column.Name() != latitude) names.push_back(column.Name());
  if (names.empty()) return {};
  layerdata::JsonWriteOptions lines;
  lines.lines = true;
  return table.Select(names).ToJson(lines);
}

}  // namespace

std::string ToGeoJson(const Table& table, const std::string& longitude,
                      const std::string& latitude) {
  const std::string x =
      FindColumn(table, longitude, {"longitude", "lon", "lng", "x"}, "--longitude");
  const std::string y = FindColumn(table, latitude, {"latitude", "lat", "y"}, "--latitude");
  const layerdata::Text properties = Properties(table, x, y);
  std::string_view rest = properties;
  const Column longitudes = table[x], latitudes = table[y];
  std::string json = "{\"type\":\"FeatureCollection\",\"features\":[";
  const char* separator = "\n";
  for (std::int64_t row = 0; row < table.RowCount(); ++row) {
    const std::string_view object = rest.empty() ? "{}" : rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(object.size() + 1, rest.size()));
    json += std::exchange(separator, ",\n");
    json += R"({"type":"Feature","geometry":)";
    json += Geometry(longitudes, latitudes, row);
    json += R"(,"properties":)";
    json.append(object) += '}';
  }
  return json += "\n]}\n";
}

}  // namespace program
