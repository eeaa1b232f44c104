#!/bin/bash
# Times reading and writing beside DuckDB, polars and pandas. Installs missing packages, and the first two from npm
# into build/peers. The options are those of compare.py.
set -eu
cd "$(dirname "$0")/.."
. Tools/packages.sh
# Other packages of node.js than Debian's bring npm along, and exclude Debian's.
command -v npm >/dev/null || BENCHMARK_PACKAGES="$BENCHMARK_PACKAGES npm"
# shellcheck disable=SC2086  # lists
install_packages $BUILD_PACKAGES $BENCHMARK_PACKAGES
cmake --preset benchmarks >/dev/null
cmake --build --preset benchmarks >/dev/null
[ -d build/peers/node_modules ] || npm install --prefix build/peers --no-save --no-audit --no-fund \
  @duckdb/node-api@1.5.6-r.1 nodejs-polars@0.26.1 nodejs-polars-linux-x64-gnu@0.26.1
exec Benchmarks/compare.py "$@"
