#!/bin/bash
# Builds and tests everything on a Debian 12 machine; installs by name what is missing.
#
#   Tools/test.sh         the release build on Linux and as Windows programs under Wine, the
#                         code pages of both, exports, layouts, the package, the sanitizers,
#                         a build with clang++, formatting and lint
#   Tools/test.sh quick   the release build's tests only
#
# Every stage runs even when an earlier one failed. The last line is "N passed, M failed";
# the exit code is 0 only if nothing failed. Full outputs stay in build/logs.
set -u
cd "$(dirname "$0")/.." || exit 1
export LC_ALL=C.UTF-8
. Tools/packages.sh

logs=build/logs
passed=0
failed=0
mkdir -p "$logs"

# cases LOG PATTERN: how many there are; CTest repeats the lines of a program that failed.
cases() { sed -E 's/^[0-9]+: //' "$1" | grep -E "$2" | sort -u | wc -l; }

# stage NAME COMMAND...: runs a command and counts the cases that it names in GoogleTest's form.
stage() {
  local name=$1 start=$SECONDS log=$logs/${1// /-}.log
  shift
  echo "== $name"
  "$@" >"$log" 2>&1
  local status=$?
  local good bad
  good=$(cases "$log" '^\[       OK \] .*')
  bad=$(cases "$log" '^\[  FAILED  \] .*\([0-9]+ ms\)$')
  # A build error, a crash, or a stage without any case is a failure too.
  if [ "$bad" -eq 0 ] && { [ "$status" -ne 0 ] || [ "$good" -eq 0 ]; }; then bad=1; fi
  [ "$bad" -eq 0 ] || { grep -E '^([0-9]+: )?\[  FAILED  \]|error:' "$log" | head -n 40; tail -n 40 "$log"; }
  passed=$((passed + good))
  failed=$((failed + bad))
  echo "   $good passed, $bad failed, $((SECONDS - start)) s"
}

# one NAME COMMAND...: a check that is a single case.
one() {
  local name=$1
  shift
  if "$@"; then echo "[       OK ] $name (0 ms)"; else echo "[  FAILED  ] $name (0 ms)"; return 1; fi
}

build() { cmake --preset "$1" && cmake --build --preset "$1"; }
build_and_test() { build "$1" && ctest --preset "$1" -V; }

sources() {
  find Include Source Tests Examples Benchmarks Tools -name '*.h' -o -name '*.cpp' -o -name '*.c' |
    xargs grep -L '^// Generated'
}

formatting() { sources | one Format.EverySource xargs clang-format --dry-run -Werror; }

lint() {
  one Lint.Library run-clang-tidy -quiet -p build/clang -j "$(nproc)" '/(Source|Examples)/.*\.cpp$'
}

# A project of its own finds the installed package and builds against it.
package() {
  rm -rf build/package build/package-user
  one Package.Installs cmake --install build/release --prefix build/package &&
    one Package.IsFound cmake -S Examples -B build/package-user -G Ninja "-DCMAKE_PREFIX_PATH=$PWD/build/package" &&
    one Package.Links cmake --build build/package-user
}

finish() {
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ]
  exit
}

if [ "${1:-}" = quick ]; then
  install_packages $BUILD_PACKAGES || { failed=1; finish; }
  stage release build_and_test release
  finish
fi

install_packages $BUILD_PACKAGES $WINDOWS_PACKAGES $CHECK_PACKAGES || { failed=1; finish; }
stage formatting formatting
stage release build_and_test release
stage windows build_and_test windows
stage "code pages" Tools/compare-code-pages.sh build/release build/windows
stage exports Tools/check-exports.sh build/release/lib/liblayerdata.so build/windows/bin/layerdata.dll
stage layouts Tools/check-layouts.py
stage package package
stage sanitizers build_and_test asan
stage threads build_and_test tsan
stage clang build_and_test clang
stage lint lint
finish
