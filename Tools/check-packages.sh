#!/bin/bash
# Installs and packs the libraries of two build trees, and uses them as a stranger's project does:
#   check-packages.sh BUILD WINDOWS_BUILD
# The results stay in build/package.
set -u
cd "$(dirname "$0")/.." || exit 1
root=$PWD
release=$1
windows=$2
work=$root/build/package
version=$(sed -n 's/^  VERSION //p' CMakeLists.txt)
IFS=. read -r major minor _ <<<"$version"
failures=0
rm -rf "$work"
mkdir -p "$work"

# check NAME COMMAND...: a case that passes if the command succeeds.
check() {
  local name=$1
  shift
  if "$@" >"$work/details" 2>&1; then
    echo "[       OK ] Package.$name (0 ms)"
  else
    cat "$work/details"
    echo "[  FAILED  ] Package.$name (0 ms)"
    failures=$((failures + 1))
  fi
}

# fails_with TEXT COMMAND...: the command fails and says this.
fails_with() {
  local text=$1
  shift
  if "$@" >"$work/output" 2>&1; then cat "$work/output"; echo "This should have failed."; return 1; fi
  tr -s ' \n' ' ' <"$work/output" | grep -F "$text" || { cat "$work/output"; return 1; }
}

# files FOLDER: what stands in it.
files() { (cd "$1" && find . ! -type d | sort); }

# consumer NAME FOLDER OPTION...: configures the project of a user, which finds the package in this folder.
consumer() {
  cmake -S Tests/Consumer -B "$work/$1" -G Ninja "${@:3}" &&
    grep "^LayerData_DIR:PATH=$2/" "$work/$1/CMakeCache.txt"
}

# runs NAME EMULATOR...: builds it and runs both of its programs.
runs() {
  cmake --build "$work/$1" || return
  local suffix=""
  [ -f "$work/$1/caller" ] || suffix=.exe
  "${@:2}" "$work/$1/consumer$suffix" | tr -d '\r' | grep -xE 'LayerData [0-9]+, difference 0' &&
    "${@:2}" "$work/$1/caller$suffix" | tr -d '\r' | grep -x '1 row'
}

# -- The installation --

prefix=$work/installed

installs() {
  cmake --install "$release" --prefix "$prefix" || return
  for component in runtime development program documentation; do
    cmake --install "$release" --prefix "$work/components/$component" --component "$component" || return
    files "$work/components/$component"
  done | sed -n '/^\.\//p' | sort >"$work/components.txt"
  # Each file belongs to exactly one component.
  files "$prefix" | diff - "$work/components.txt"
}

# holds COMPONENT PATTERN: it has files of this kind, and no other component has.
holds() {
  grep -E "$2" "$work/components.txt" >"$work/kind" && files "$work/components/$1" | grep -E "$2" | diff - "$work/kind"
}

components() {
  holds runtime '\.so\.1$' && holds runtime '/(LICENSE|THIRD-PARTY-NOTICES\.md)$' &&
    holds development '\.(h|pc|so)$' && holds development '\.cmake$' &&
    holds program '/(bin|man1|completions)/layerdata' && holds documentation '/(CHANGELOG\.md|Guides/|Examples/)' &&
    [ "$(ls "$prefix/include")" = "layerdata-$major" ] && [ "$(ls -m "$prefix/include/layerdata-$major")" = "Core, Data, LayerData" ]
}

versions() {
  for asked in "$major" "$major.$minor" "$version"; do
    consumer version "$prefix" "-DVERSION=$asked" "-DCMAKE_PREFIX_PATH=$prefix" || return
  done
  for asked in "$((major - 1)).9" "$version.1" "$major.$((minor + 1))" "$((major + 1)).0"; do
    fails_with "compatible with requested version \"$asked\"" \
      consumer version "$prefix" "-DVERSION=$asked" "-DCMAKE_PREFIX_PATH=$prefix" || return
  done
}

# As the compilers outside CMake are called.
with_pkg_config() {
  local flags
  flags=$(pkg-config --cflags --libs layerdata-c layerdata) || return
  # shellcheck disable=SC2086  # a list
  g++ -std=c++20 Tests/Consumer/Consumer.cpp $flags -o "$work/program" &&
    LD_LIBRARY_PATH=$1 "$work/program" | grep 'difference 0'
}

# Only files of the library, and only what it has installed, go.
uninstalls() {
  touch "$prefix/lib/other" && cmake --build "$release" --target uninstall && files "$prefix" | diff - <(echo ./lib/other) &&
    [ ! -e "$prefix/include/layerdata-$major" ] && [ ! -e "$prefix/share/doc/LayerData" ]
}

examples() {
  cmake -S "$prefix/share/doc/LayerData/Examples" -B "$work/examples" -G Ninja "-DCMAKE_PREFIX_PATH=$prefix" &&
    cmake --build "$work/examples"
}

# shellcheck disable=SC2016  # no expansions
readme_example() {
  sed -n '/^```cpp$/,/^```$/p' README.md | sed '/^```/d' |
    g++ -std=c++20 -Wall -Wextra -Werror -fsyntax-only "-I$prefix/include/layerdata-$major" -x c++ -
}

check Installs installs
check Components components
check Found consumer by-prefix "$prefix" "-DCMAKE_PREFIX_PATH=$prefix"
check Runs runs by-prefix
check Versions versions
check RefusesUnknownComponents fails_with "LayerData has no component Unknown." \
  consumer component "$prefix" -DCOMPONENTS=Unknown "-DCMAKE_PREFIX_PATH=$prefix"
check RefusesStaticLibraries fails_with "LayerData has only shared libraries" \
  cmake -S . -B "$work/static" -G Ninja -DBUILD_SHARED_LIBS=OFF
check ExamplesBuild examples
check ReadmeExampleCompiles readme_example
PKG_CONFIG_PATH=$prefix/lib/pkgconfig check PkgConfig with_pkg_config "$prefix/lib"
check Uninstalls uninstalls

# -- Debian's packages, unpacked into a folder as into the root of a bare system --

debian=$work/debian
bare=$work/bare

# Only the places of the installation change, so that nothing is compiled again.
packs() {
  local before status
  before=$(sed -n 's/^CMAKE_INSTALL_PREFIX:PATH=//p' "$release/CMakeCache.txt")
  cmake "$release" -DCMAKE_INSTALL_PREFIX=/usr && cpack --config "$release/CPackConfig.cmake" -B "$debian"
  status=$?
  cmake "$release" "-DCMAKE_INSTALL_PREFIX=$before"
  return "$status"
}

unpacks() {
  local package
  for package in liblayerdata1 liblayerdata-dev layerdata; do
    dpkg-deb -x "$debian/${package}_$version"-*.deb "$bare" || return
    dpkg-deb -c "$debian/${package}_$version"-*.deb
  done | sed -n 's/^[^d].* \.\//.\//p' | sed 's/ -> .*//' | sort >"$work/packed.txt"
  # No two packages have the same file.
  files "$bare" | diff "$work/packed.txt" -
}

multiarch=$bare/usr/lib/$(gcc -print-multiarch)
check Debian.Packs packs
check Debian.LintianHasNoWarnings lintian --fail-on error,warning "$debian"/*.deb
check Debian.Unpacks unpacks
check Debian.FoundByPrefix consumer debian-prefix "$bare" "-DCMAKE_PREFIX_PATH=$bare/usr"
check Debian.FoundByRoot consumer debian-root "$bare" "-DCMAKE_FIND_ROOT_PATH=$bare"
check Debian.Runs runs debian-root
PKG_CONFIG_SYSROOT_DIR=$bare PKG_CONFIG_LIBDIR=$multiarch/pkgconfig check Debian.PkgConfig with_pkg_config "$multiarch"
LD_LIBRARY_PATH=$multiarch check Debian.ProgramRuns "$bare/usr/bin/layerdata" describe Examples/Data/shops.csv

# -- The archive for Windows --

zip=$work/layerdata-$version-win64
export WINEPREFIX=$root/$windows/wine

zips() {
  cpack --config "$windows/CPackConfig.cmake" -B "$work/zip" &&
    cmake -E chdir "$work" cmake -E tar xf "zip/layerdata-$version-win64.zip"
}

zip_is_complete() {
  ls -w 0 -m "$zip/bin" "$zip/lib" "$zip/include/layerdata-$major" "$zip/share/doc/LayerData/licenses" >"$work/contents"
  sed "s|$zip/||" "$work/contents" | diff - <(cat <<END
bin:
layerdata-c.dll, layerdata.dll, layerdata.exe, libgcc_s_seh-1.dll, libstdc++-6.dll, libwinpthread-1.dll

include/layerdata-$major:
Core, Data, LayerData

lib:
cmake, layerdata-c.def, layerdata-c.lib, layerdata.def, layerdata.lib, pkgconfig

share/doc/LayerData/licenses:
GPL-3, gcc-mingw-w64-base.txt, mingw-w64-common.txt
END
  ) && [ -f "$zip/share/doc/LayerData/THIRD-PARTY-NOTICES.md" ]
}

binaries_have_no_time() {
  for file in "$zip"/bin/layerdata*; do
    x86_64-w64-mingw32-objdump -p "$file" | grep -E '^Time/Date\s+Thu Jan  1 00:00:00 1970' || return
  done
}

binaries_are_stripped() {
  for file in "$zip"/bin/*; do x86_64-w64-mingw32-objdump -t "$file" | grep -Fx "no symbols" || return; done
}

binaries_say_their_version() {
  for file in "$zip"/bin/layerdata*; do
    x86_64-w64-mingw32-windres -O rc "$file" >"$work/resources" &&
      grep -F "FILEVERSION ${version//./, }, 0" "$work/resources" && grep -F "\"$(basename "$file")\"" "$work/resources" || return
  done
}

# for_windows FILE COMMAND: a tool chain that adds this command to the one of the sources.
for_windows() { printf 'include("%s")\n%s\n' "$root/cmake/MinGW64.cmake" "$2" >"$work/$1"; }

runs_in_wine() {
  cp "$zip"/bin/*.dll "$work/$1" && runs "$1" Tools/run-wine.sh
}

for_windows prefix.cmake 'set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)'
for_windows root.cmake "list(APPEND CMAKE_FIND_ROOT_PATH \"$zip\")"
check Zip.Packs zips
check Zip.IsComplete zip_is_complete
check Zip.BinariesAreStripped binaries_are_stripped
check Zip.BinariesHaveNoBuildTime binaries_have_no_time
check Zip.BinariesSayTheirVersion binaries_say_their_version
check Zip.FoundByPrefix consumer zip-prefix "$zip" "-DCMAKE_PREFIX_PATH=$zip" "-DCMAKE_TOOLCHAIN_FILE=$work/prefix.cmake"
check Zip.FoundByRoot consumer zip-root "$zip" "-DCMAKE_TOOLCHAIN_FILE=$work/root.cmake"
check Zip.RefusesOtherSystems fails_with "This LayerData is for Windows, not for Linux." \
  consumer zip-linux "$zip" "-DCMAKE_PREFIX_PATH=$zip"
check Zip.Runs runs_in_wine zip-root
check Zip.ProgramRuns Tools/run-wine.sh "$zip/bin/layerdata.exe" describe Examples/Data/shops.csv

# -- The sources as part of another project --

# The library itself is built by every other stage; here its headers and targets reach the consumer's files.
fetched() {
  cmake -S Tests/Consumer -B "$work/fetched" -G Ninja "-DLAYERDATA_SOURCES=$root" -DBUILD_SHARED_LIBS=OFF \
    >"$work/output" 2>&1 || { cat "$work/output"; return 1; }
  grep "but LayerData has only shared libraries" "$work/output" &&
    cmake --build "$work/fetched" --target CMakeFiles/consumer.dir/Consumer.cpp.o CMakeFiles/caller.dir/Caller.c.o
}

# Nor are its tests, programs and packages there.
installs_nothing() {
  cmake --install "$work/fetched" --prefix "$work/with-fetched" && files "$work/with-fetched" |
    diff - <(echo ./share/consumer/CMakeLists.txt) && [ ! -e "$work/fetched/CPackConfig.cmake" ] &&
    ! ninja -C "$work/fetched" -t targets all | grep -E '(Program|Tests|uninstall|LongRows):'
}

check Fetched.Compiles fetched
check Fetched.InstallsNothing installs_nothing

# -- Recipes for vcpkg and Conan --

# Neither tool is a package of Debian, so this checks only that they agree with the sources.
recipes() {
  grep -F "\"version\": \"$version\"" Packaging/vcpkg/layerdata/vcpkg.json &&
    python3 -m json.tool Packaging/vcpkg/layerdata/vcpkg.json &&
    python3 -c 'import ast, sys; ast.parse(open(sys.argv[1]).read())' Packaging/conan/conanfile.py || return
  grep -rhoE 'LAYERDATA_[A-Z_]*[A-Z]' Packaging/vcpkg Packaging/conan | sort -u | while read -r option; do
    grep -F "option($option " CMakeLists.txt || return
  done || return
  # The recipe for Conan takes along whatever is installed.
  sed -nE 's/.*install\((FILES|DIRECTORY) ([A-Z][A-Za-z]*)[/ ].*/\2/p' cmake/Install.cmake | sort -u |
    while read -r name; do grep -F "\"$name" Packaging/conan/conanfile.py || return; done
}

check RecipesAgreeWithTheSources recipes

[ "$failures" -eq 0 ]
