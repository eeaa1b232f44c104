#!/bin/sh
# Runs a Windows program under Wine: run-wine.sh PROGRAM.exe [ARGUMENTS...]
# Runs quietly, and with a prefix in the program's own build tree, so that neither the user's Wine nor
# another build is affected.
set -eu

for wine in wine64 /usr/lib/wine/wine64 wine; do
  command -v "$wine" >/dev/null 2>&1 && break
done

program=$(readlink -f "$1")
shift

# The build tree is the nearest folder above the program that CMake configured.
tree=$(dirname "$program")
while [ "$tree" != / ] && [ ! -f "$tree/CMakeCache.txt" ]; do
  tree=$(dirname "$tree")
done
[ "$tree" != / ] || tree=$(pwd)

export LC_ALL=C  # Wine derives its ANSI and OEM code pages from the locale: 1252 and 437
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEPREFIX="${WINEPREFIX:-$tree/wine}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
exec "$wine" "$program" "$@"
