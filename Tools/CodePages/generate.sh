#!/bin/sh
# Rebuilds Source/Platform/CodePages/CodePageTables*.cpp from the results of the Windows
# conversion functions in Wine. Needs g++-mingw-w64-x86-64-posix and wine64.
set -eu
cd "$(dirname "$0")/../.."
scratch=$PWD/build/codepages
mkdir -p "$scratch"
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)

x86_64-w64-mingw32-g++-posix -std=c++20 -O1 -static -ISource \
  Tools/CodePages/GenerateTables.cpp -o "$scratch/GenerateTables.exe"
export WINEDEBUG=-all WINEPREFIX="$scratch/wine"
"$wine" "$scratch/GenerateTables.exe" Source/Platform/CodePages
ls -l Source/Platform/CodePages/CodePageTables*.cpp
