#!/bin/bash
# Builds parts of the library again and compares them byte by byte:
#   check-reproducible.sh TREE LIBRARY SUFFIX [CMAKE-OPTION...]
# These parts are the objects of Source/Exports, built from a copy of the sources in another folder, and
# the library itself, linked again from the objects of TREE.
set -eu
cd "$(dirname "$0")/.."
tree=$1 library=$2 suffix=$3
shift 3

copy=build/reproducible
rm -rf "$copy"
mkdir -p "$copy"
cp -r CMakeLists.txt Include Source cmake LICENSE THIRD-PARTY-NOTICES.md "$copy"
cmake -S "$copy" -B "$copy/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DLAYERDATA_BUILD_TESTS=OFF \
  -DLAYERDATA_BUILD_PROGRAMS=OFF -DLAYERDATA_BUILD_EXAMPLES=OFF "$@"
objects=()
for source in Source/Exports/*.cpp; do
  objects+=("Source/CMakeFiles/LayerDataObjects.dir/Exports/$(basename "$source")$suffix")
done
cmake --build "$copy/build" --target "${objects[@]}"
for object in "${objects[@]}"; do cmp "$tree/$object" "$copy/build/$object"; done

cp "$tree/$library" "$copy/before"
rm "$(readlink -f "$tree/$library")"
sleep 1 # so that a time stored in the file would differ
cmake --build "$tree" --target LayerData
cmp "$tree/$library" "$copy/before"
