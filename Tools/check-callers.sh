#!/bin/bash
# Builds the C example with several compilers against the installed packages, runs each program, and expects
# the same rows from all: check-callers.sh BUILD WINDOWS_BUILD
#
# The compiler for the Microsoft target has no Windows SDK here. It takes its own freestanding headers and
# those in Tests/Callers/microsoft, and links with the import library of layerdata-c.dll.
set -u

root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd)
windows=$(cd "$2" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
example=$root/Examples/LongRows.c
arguments="$root/Examples/Data/airports.csv latitude 71"
strict="-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror"
failures=0

# check NAME COMMAND...: a case that passes if the command succeeds.
check() {
  local name=$1
  shift
  if "$@" >"$work/details" 2>&1; then
    echo "[       OK ] Callers.$name (0 ms)"
  else
    cat "$work/details"
    echo "[  FAILED  ] Callers.$name (0 ms)"
    failures=$((failures + 1))
  fi
}

# -- For Linux --

# shellcheck disable=SC2046,SC2086  # lists of words
on_linux() {
  "$@" $(PKG_CONFIG_PATH=$work/linux/lib/pkgconfig pkg-config --cflags --libs layerdata-c) \
    -o "$work/program" || return
  LD_LIBRARY_PATH=$work/linux/lib "$work/program" $arguments >"$work/rows" && are_expected
}

are_expected() {
  tr -d '\r' <"$work/rows" >"$work/lines"
  [ -f "$work/first" ] || cp "$work/lines" "$work/first"
  grep -q '^"BRW",.*,71.285448,-156.766002' "$work/lines" || return
  ! grep -q '"AWI"' "$work/lines" && cmp "$work/first" "$work/lines"
}

# -- For Windows, with the Microsoft ABI --

# shellcheck disable=SC2086
for_microsoft() {
  clang --target=x86_64-pc-windows-msvc -ffreestanding -mno-stack-arg-probe -nostdinc \
    -isystem "$(clang -print-resource-dir)/include" -isystem "$root/Tests/Callers/microsoft" \
    -I "$work/windows/include/layerdata-1" $strict "$@"
}

# microsoft LIBRARY: the example as a program that uses this import library.
# shellcheck disable=SC2086
microsoft() {
  cd "$work" &&
    for_microsoft -std=c99 -c "$example" -o LongRows.obj &&
    for_microsoft -std=c99 -c "$root/Tests/Callers/microsoft/Start.c" -o Start.obj &&
    llvm-dlltool -m i386:x86-64 -d "$root/Tests/Callers/microsoft/msvcrt.def" -l msvcrt.lib &&
    lld-link /nodefaultlib /entry:start /subsystem:console "/out:windows/bin/LongRows.exe" LongRows.obj Start.obj \
      msvcrt.lib "$1" &&
    WINEPREFIX=$windows/wine "$root/Tools/run-wine.sh" windows/bin/LongRows.exe $arguments >rows && are_expected
}

# As a user of another tool chain does who has the list of exports only.
from_exports() {
  llvm-dlltool -m i386:x86-64 -d "$work/windows/lib/layerdata-c.def" -l "$work/own.lib" &&
    microsoft "$work/own.lib"
}

# -- Every header alone --

header_cases() {
  local header name
  for header in "$root"/Include/LayerData/layerdata*.h; do
    name=$(basename "$header" .h)
    echo "#include <LayerData/$name.h>" >"$work/$name.c"
    cp "$work/$name.c" "$work/$name.cpp"
    # shellcheck disable=SC2086
    {
      check "$name.C99" gcc -std=c99 $strict -fsyntax-only -I "$work/linux/include/layerdata-1" "$work/$name.c"
      check "$name.Cpp" g++ -std=c++11 $strict -fsyntax-only -I "$work/linux/include/layerdata-1" "$work/$name.cpp"
      check "$name.Microsoft" for_microsoft -std=c++14 -fsyntax-only "$work/$name.cpp"
    }
  done
}

cmake --install "$build" --prefix "$work/linux" >/dev/null || exit
cmake --install "$windows" --prefix "$work/windows" >/dev/null || exit
check C99 on_linux gcc -std=c99 $strict "$example"
check Tcc on_linux tcc -Wall -Werror "$example"
check Cpp on_linux g++ -std=c++11 $strict -x c++ "$example" -x none
check Microsoft microsoft "$work/windows/lib/layerdata-c.lib"
check MicrosoftFromTheListOfExports from_exports
header_cases
[ "$failures" -eq 0 ]
