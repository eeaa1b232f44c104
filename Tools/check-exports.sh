#!/bin/sh
# Compares the exports of the built libraries with the declarations in Include/Data/Exports.h and
# Include/LayerData/layerdata*.h, and checks which libraries they load: check-exports.sh LIBRARY...
set -u

root=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# declared PREFIX HEADER...
declared() {
  prefix=$1
  shift
  sed 's,//.*,,' "$@" | grep -o "$prefix[A-Za-z0-9_]*(" | tr -d '(' | LC_ALL=C sort -u
}

exported() {
  case $1 in
    *.dll) x86_64-w64-mingw32-objdump -p "$1" |
      sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^\t\[ *[0-9]*\] \(.*\)/\1/p' ;;
    *) nm -D --defined-only "$1" | awk '$2 != "A" { sub(/@.*/, "", $3); print $3 }' ;;
  esac | LC_ALL=C sort
}

needed() {
  case $1 in
    *.dll) x86_64-w64-mingw32-objdump -p "$1" | awk '/DLL Name:/ { print $3 }' ;;
    *) readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' ;;
  esac
}

# check NAME COMMAND...: a case that passes if the command prints nothing.
check() {
  name=$1
  shift
  wrong=$("$@" 2>&1)
  if [ -z "$wrong" ]; then
    echo "[       OK ] Exports.$name (0 ms)"
  else
    echo "$wrong"
    echo "[  FAILED  ] Exports.$name (0 ms)"
    failures=$((failures + 1))
  fi
}

unexpected_names() {
  exported "$1" >"$work/exported"
  LC_ALL=C comm -23 "$work/declared" "$work/exported" | sed 's/^/  declared, not exported: /'
  LC_ALL=C comm -13 "$work/declared" "$work/exported" | sed 's/^/  exported, not declared: /'
}

# Exceptions reach the callers, so library and callers must share the C++ runtime.
private_runtime() {
  needed "$1" | grep -q 'libstdc++' || echo "  does not load the shared C++ runtime"
}

wrong_soname() {
  readelf -d "$1" | grep -q 'SONAME.*\[liblayerdata\(-c\)\?\.so\.[0-9]*\]' || echo "  has no SONAME of its own"
}

wrong_count() {
  [ "$(wc -l <"$work/declared")" -eq 42 ] || echo "  not 42 functions"
}

declared Data_ "$root"/Include/Data/Exports.h >"$work/declared"
check FortyTwoAreDeclared wrong_count
for library in "$@"; do
  file=$(basename "$library")
  case $file in
    *-c.*) declared ld_ "$root"/Include/LayerData/layerdata*.h >"$work/declared" ;;
    *) declared Data_ "$root"/Include/Data/Exports.h >"$work/declared" ;;
  esac
  check "$file.ExportsWhatIsDeclared" unexpected_names "$library"
  check "$file.LoadsTheSharedRuntime" private_runtime "$library"
  case $file in
    *.so*) check "$file.HasItsSoname" wrong_soname "$library" ;;
  esac
done
[ "$failures" -eq 0 ]
