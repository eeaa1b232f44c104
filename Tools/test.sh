#!/bin/bash
# Builds and tests everything on a Debian 12 machine; installs missing packages first.
#
#   Tools/test.sh              every stage
#   Tools/test.sh quick        the release build and its tests
#   Tools/test.sh STAGE...     these stages alone; each builds what it needs
#
# A failed stage does not stop the next ones. The last line is "N passed, M failed"; the exit code is
# 0 only if nothing failed. The whole output of each stage is kept in build/logs.
set -u
cd "$(dirname "$0")/.." || exit 1
export LC_ALL=C.UTF-8
. Tools/packages.sh

STAGES="formatting contract release windows code-pages exports hardening package callers duckdb docs asan tsan clang coverage abi lint"
LIBRARIES="build/release/lib/liblayerdata.so build/release/lib/liblayerdata-c.so
  build/windows/bin/layerdata.dll build/windows/bin/layerdata-c.dll"

# -- Stages --

formatting() { sources | one Format.EverySource xargs clang-format --dry-run -Werror; }

# Compares the public headers with the description of this version, and checks that a change would be noticed.
contract() {
  Tools/check-contract.py && Tools/check-contract.py --self-test &&
    one Contract.CInterfaceIsCurrent Tools/generate-c.py --check
}

release() { build_and_test release; }

# Runs the same tests as Windows programs under Wine.
windows() { build_and_test windows; }

code-pages() { build release && build windows && Tools/compare-code-pages.sh build/release build/windows; }

# shellcheck disable=SC2086  # a list
exports() { build release && build windows && Tools/check-exports.sh $LIBRARIES; }

hardening() {
  build release && build windows || return
  # shellcheck disable=SC2086  # a list
  Tools/check-hardening.py $LIBRARIES
  local status=$?
  one Reproducible.Linux Tools/check-reproducible.sh build/release lib/liblayerdata.so .o || status=1
  one Reproducible.Windows Tools/check-reproducible.sh build/windows bin/layerdata.dll .obj \
    --toolchain "$PWD/cmake/MinGW64.cmake" || status=1
  return "$status"
}

# Other projects use what is installed and packed.
package() { build release && build windows && Tools/check-packages.sh build/release build/windows; }

# The C example from several compilers, also one for the Microsoft ABI.
callers() { build release && build windows && Tools/check-callers.sh build/release build/windows; }

# Exchanges tables with DuckDB, which npm installs.
duckdb() { build release && Tools/check-duckdb.sh build/release; }

# The documentation site has no warnings; the code of the guides and of the README prints what they say.
docs() {
  local status=0
  one Docs.SiteHasNoWarnings Tools/docs.sh || status=1
  build release && Tools/check-docs.py && return "$status"
}

asan() { build_and_test asan; }

tsan() {
  one Threads.AreStartedInTwoFolders all_thread_tests_are_built && build_and_test tsan
}
all_thread_tests_are_built() {
  ! grep -rlE 'std::jthread|vector<std::thread>|OnThreads' Tests --include='*.cpp' --exclude-dir=Threads --exclude-dir=C
}

# Builds and tests everything with clang. The run leaves its coverage in build/clang/profiles.
clang() {
  rm -rf build/clang/profiles
  build_and_test clang
}

# Checks which lines and branches the stage `clang` has reached.
coverage() {
  [ -d build/clang/profiles ] || clang
  Tools/coverage.sh seen
}

# Compares the built library with the description of this version.
abi() { build clang && Tools/check-contract.py --library build/clang/lib/liblayerdata.so; }

lint() {
  build clang &&
    one Lint.Library run-clang-tidy -quiet -p build/clang -j "$(nproc)" '/(Source|Examples)/.*\.cpp$'
}

# -- How a stage runs --

declare -A built
build() {
  [ -z "${built[$1]:-}" ] || return 0
  cmake --preset "$1" -DCMAKE_COMPILE_WARNING_AS_ERROR=ON && cmake --build --preset "$1" && built[$1]=yes
}
build_and_test() { build "$1" && ctest --preset "$1" -V; }

# one NAME COMMAND...: a check that is a single case.
one() {
  local name=$1
  shift
  if "$@"; then echo "[       OK ] $name (0 ms)"; else echo "[  FAILED  ] $name (0 ms)"; return 1; fi
}

sources() {
  find Include Source Tests Examples Benchmarks Tools -name '*.h' -o -name '*.cpp' -o -name '*.c' |
    xargs grep -L '^// Generated'
}

# cases LOG PATTERN: counts the cases, each once: CTest repeats the lines of a program that failed.
cases() { sed -E 's/^[0-9]+: //' "$1" | grep -E "$2" | sort -u | wc -l; }

# stage NAME: runs the function of that name and counts the cases that it prints in GoogleTest's form.
stage() {
  local start=$SECONDS log=$logs/$1.log good bad status
  echo "== $1"
  "$1" >"$log" 2>&1
  status=$?
  good=$(cases "$log" '^\[       OK \] .*')
  bad=$(cases "$log" '^\[  FAILED  \] .*\([0-9]+ ms\)$')
  # A build error, a crash, or a stage without any case is a failure too.
  if [ "$bad" -eq 0 ] && { [ "$status" -ne 0 ] || [ "$good" -eq 0 ]; }; then bad=1; fi
  [ "$bad" -eq 0 ] || { grep -E '^([0-9]+: )?\[  FAILED  \]|error:' "$log" | head -n 40; tail -n 40 "$log"; }
  passed=$((passed + good))
  failed=$((failed + bad))
  echo "   $good passed, $bad failed, $((SECONDS - start)) s"
}

logs=build/logs
passed=0
failed=0
mkdir -p "$logs"
packages="$BUILD_PACKAGES $WINDOWS_PACKAGES $CHECK_PACKAGES $PACKAGE_PACKAGES $DOCS_PACKAGES"
# Other packages of node.js than Debian's bring npm along, and exclude Debian's.
command -v npm >/dev/null || packages="$packages $DUCKDB_PACKAGES"
case ${1:-} in
  "") set -- $STAGES ;;
  quick) set -- release; packages=$BUILD_PACKAGES ;;
esac
for name in "$@"; do
  case " $STAGES " in *" $name "*) ;; *) echo "No stage $name. There are: quick $STAGES"; exit 2 ;; esac
done
if install_packages $packages; then
  for name in "$@"; do stage "$name"; done
else
  failed=1
fi
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
