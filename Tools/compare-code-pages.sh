#!/bin/sh
# Compares the conversions of every code page between Linux and Windows, in both directions. On Windows the
# library uses the system's functions, on Linux its own tables.
#   compare-code-pages.sh [LINUX-BUILD-TREE WINDOWS-BUILD-TREE]
# To see the texts of a page that differs, run CodePageDigest --full PAGE on both.
set -u

cd "$(dirname "$0")/.." || exit 1
linux=${1:-build/release}
windows=${2:-build/windows}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# Wine derives its ANSI and OEM code pages from the locale: with C they are 1252 and 437.
export LC_ALL=C
"$linux/bin/CodePageDigest" >"$work/linux" || exit 1
Tools/run-wine.sh "$windows/bin/CodePageDigest.exe" | tr -d '\r' >"$work/windows"

for page in $(awk '!seen[$1]++ { print $1 }' "$work/linux" "$work/windows"); do
  for system in linux windows; do
    awk -v page="$page" '$1 == page' "$work/$system" >"$work/$system-page"
  done
  if diff "$work/linux-page" "$work/windows-page"; then
    echo "[       OK ] CodePages.$page (0 ms)"
  else
    echo "[  FAILED  ] CodePages.$page (0 ms)"
    failures=$((failures + 1))
  fi
done
[ -s "$work/linux" ] && [ "$failures" -eq 0 ]
