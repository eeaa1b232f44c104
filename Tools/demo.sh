#!/bin/bash
# Shows the library at work: converts a CSV file into a typed table and JSON, and tours the program layerdata.
# Installs missing Debian 12 packages and builds the release.
set -eu
cd "$(dirname "$0")/.."
export LC_ALL=C.UTF-8
. Tools/packages.sh

csv=Examples/Data/seattle-weather.csv
json=build/seattle-weather.json

# shellcheck disable=SC2086  # a list of words
install_packages $BUILD_PACKAGES
mkdir -p build/logs
echo "Building the release (the output goes to build/logs/demo.log) ..."
{ cmake --preset release && cmake --build --preset release --target CsvToJson Program; } >build/logs/demo.log 2>&1 ||
  { tail -n 40 build/logs/demo.log; exit 1; }

echo
echo "$csv as a table:"
build/release/bin/CsvToJson "$csv" --preview 5 --output "$json"

echo
echo "$json ($(wc -c <"$json") bytes) begins:"
head -c 400 "$json"
echo " ..."

layerdata=build/release/bin/layerdata
page=build/seattle-weather.html

# tour COMMAND...: runs layerdata, and shows what was run and the first lines of what it wrote.
tour() {
  echo
  echo "\$ layerdata $*"
  "$layerdata" --quiet "$@" | head -n 12
}

tour show "$csv" --rows 3
tour describe "$csv"
tour describe "$csv" --html "$page"
echo "$page ($(wc -c <"$page") bytes)"
tour sort "$csv" --by temp_max:desc,date --to jsonl
tour schema infer "$csv" --output build/seattle-weather.schema.json
tour check "$csv" --schema build/seattle-weather.schema.json
tour hash "$csv"
