#!/bin/bash
# Reports the lines and branches of the library that the tests reach, per file, and checks both.
#
#   Tools/coverage.sh        builds and runs the tests of the clang preset, then reports
#   Tools/coverage.sh seen   reports on the tests that ran there last
#
# Branches are the two outcomes of each condition in the source; those that the compiler adds for exceptions
# do not count, and neither do the generated calls of the C interface. Tools/Coverage.txt lists the lines that no test reaches, and why.
set -eu
cd "$(dirname "$0")/.."
. Tools/packages.sh

build=build/clang
profiles=$build/profiles

if [ "${1:-}" != seen ]; then
  install_packages $BUILD_PACKAGES $CHECK_PACKAGES
  cmake --preset clang
  cmake --build --preset clang
  rm -rf "$profiles"
  ctest --preset clang
fi

llvm-profdata merge -sparse "$profiles"/*.profraw -o $build/coverage.profdata
llvm-cov export -format=lcov -instr-profile=$build/coverage.profdata $build/lib/liblayerdata.so \
  -object $build/lib/liblayerdata-c.so -object $build/bin/LayerDataTests -object $build/bin/SweepTests \
  -ignore-filename-regex=Generated.inc Source Include >$build/coverage.info
Tools/check-coverage.py $build/coverage.info Tools/Coverage.txt
