#!/bin/bash
# Alternately reads the same mixed table of 50 MB with this library and with pandas, one thread
# each, and prints the seconds and their ratio. Installs missing packages.
set -eu
cd "$(dirname "$0")/.."
. Tools/packages.sh
install_packages $BUILD_PACKAGES $BENCHMARK_PACKAGES
cmake --preset benchmarks >/dev/null
cmake --build --preset benchmarks >/dev/null
directory=build/benchmarks/bin
file=build/benchmarks/mixed.csv
"$directory/MakeTable" 50 >"$file"

ours() {
  "$directory/LayerDataBenchmarks" --benchmark_filter='^ReadCsv/mixed/50$' --benchmark_format=csv 2>/dev/null |
    awk -F, '/^"ReadCsv/ { print $3 / 1e9 }'
}
pandas() {
  OMP_NUM_THREADS=1 /usr/bin/python3 - "$file" <<'PYTHON'
import sys, time, pandas
start = time.perf_counter()
table = pandas.read_csv(sys.argv[1], parse_dates=["inspected"])
assert str(table.dtypes["inspected"]).startswith("datetime64")
print(time.perf_counter() - start)
PYTHON
}

echo "seconds: this library, pandas, ratio"
for _ in 1 2 3 4 5; do
  echo "$(ours) $(pandas)" | awk '{ printf "%.3f %.3f %.3f\n", $1, $2, $1 / $2 }'
done
