# The Debian packages that the scripts in this folder need; the scripts source this file.

BUILD_PACKAGES="g++ cmake ninja-build rapidjson-dev librapidxml-dev libssl-dev libcli11-dev googletest pkgconf"
WINDOWS_PACKAGES="g++-mingw-w64-x86-64-posix wine64"
CHECK_PACKAGES="clang clang-format clang-tidy llvm lld tcc libclang-rt-dev libbenchmark-dev python3 abigail-tools gdb"
PACKAGE_PACKAGES="dpkg-dev lintian"
DOCS_PACKAGES="doxygen python3"
DUCKDB_PACKAGES="npm"
FUZZ_PACKAGES="clang libclang-rt-14-dev python3"
BENCHMARK_PACKAGES="libbenchmark-dev python3-pandas python3-matplotlib"

# install_packages NAME...: installs the packages that are missing, as root or with sudo.
install_packages() {
  local package missing=""
  for package in "$@"; do
    dpkg-query -W -f '${Status}\n' "$package" 2>/dev/null | grep -q '^install ok' || missing="$missing $package"
  done
  if [ -z "$missing" ]; then
    echo "All packages are installed."
    return
  fi
  echo "Installing$missing"
  local as_root=""
  if [ "$(id -u)" -ne 0 ]; then
    as_root="sudo"
    command -v sudo >/dev/null || { echo "This needs root, or sudo."; return 1; }
  fi
  # shellcheck disable=SC2086  # lists of words
  $as_root apt-get -q update &&
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get -qy install --no-install-recommends $missing
}
