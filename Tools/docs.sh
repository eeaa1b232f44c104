#!/bin/bash
# Builds the documentation site: build/docs/html/index.html. A warning of Doxygen is a failure.
set -eu
cd "$(dirname "$0")/.."
. Tools/packages.sh
# shellcheck disable=SC2086  # a list
install_packages $DOCS_PACKAGES
rm -rf build/docs/input build/docs/html
mkdir -p build/docs
Tools/docs-site.py input
doxygen Docs/Doxyfile || { cat build/docs/warnings.txt; exit 1; }
Tools/docs-site.py finish
echo "The documentation is in build/docs/html/index.html."
