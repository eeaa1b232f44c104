#!/bin/bash
# Runs the tests that exchange tables with DuckDB, and the example that hands it one:
#
#   check-duckdb.sh BUILD
#
# DuckDB is the library inside an npm package of its makers, which is unpacked into build/duckdb.
set -u

cd "$(dirname "$0")/.." || exit 1
build=$1
version=1.5.6-r.1
package=@duckdb/node-bindings-linux-x64
checksum=3f4962cdd266eab2b479a5b5a4a6d063d279b2954ae814ed00385d553b747633
libraries=build/duckdb/node_modules/$package
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

is_installed() { echo "$checksum  $libraries/libduckdb.so" | sha256sum --check --status; }
install() {
  is_installed && return
  mkdir -p build/duckdb &&
    npm install --prefix build/duckdb --no-save --no-audit --no-fund --ignore-scripts "$package@$version" &&
    is_installed
}

# compile OUTPUT COMMAND...: builds a program that finds both libraries.
compile() {
  local output=$1
  shift
  "$@" -IInclude -ITests/C/DuckDb -o "$output" "-L$build/lib" -llayerdata-c "-L$libraries" -lduckdb \
    "-Wl,-rpath,$PWD/$build/lib:$PWD/$libraries"
}

tests() {
  compile "$work/tests" g++ -std=c++20 -O1 -Wall -Wextra -Werror -isystem /usr/src/googletest/googletest/include \
    Tests/C/DuckDbTests.cpp "$build/lib/libgtest.a" "$build/lib/libgtest_main.a" && "$work/tests"
}

# The example, whose table begins like this.
example() {
  compile "$work/example" gcc -std=c99 -Wall -Wextra -Wpedantic -Werror Examples/TableToDuckDb.c || return
  "$work/example" Examples/Data/shops.csv >"$work/out" 2>&1
  local status=$?
  cat "$work/out"
  [ "$status" -eq 0 ] && diff "$work/out" Examples/Data/Expected/shops.txt
}

# one NAME COMMAND...: a check that is a single case.
one() {
  local name=$1
  shift
  if "$@"; then echo "[       OK ] $name (0 ms)"; else echo "[  FAILED  ] $name (0 ms)"; return 1; fi
}

install || { echo "[  FAILED  ] DuckDb.IsInstalled (0 ms)"; exit 1; }
tests
status=$?
one DuckDb.Example example || status=1
exit "$status"
