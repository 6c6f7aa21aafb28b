#!/bin/sh
# pkg_config.sh PREFIX SOURCES COMPILER SCRATCH: builds a program of each library with the flags that
# pkg-config prints of the toolkit installed in PREFIX, and runs it.
set -eu
prefix=$1
sources=$2
compiler=$3
scratch=$4

mkdir -p "$scratch"
export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
for library in geometry hostutil codegen; do
  test "$(pkg-config --modversion "mrv-$library")" = 1.0.0
  # shellcheck disable=SC2046  # several flags
  "$compiler" -std=c++17 -Wall -Wextra -Wconversion -Werror "$sources/$library.cpp" \
    $(pkg-config --cflags --libs "mrv-$library") -o "$scratch/$library"
  "$scratch/$library"
done
