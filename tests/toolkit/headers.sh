#!/bin/sh
# headers.sh PREFIX MODE SCRATCH: compiles the headers of the toolkit installed in PREFIX with both
# compilers, without a warning.
#   together   all of them in one source, in the oldest language that they support and in a newer one
#   alone      each in a source of its own
set -eu
include=$1/include/mrv
mode=$2
scratch=$3

# compile STANDARD SOURCE: checks the source.
compile() {
  for compiler in g++ clang++-19; do
    "$compiler" -std="$1" -fsyntax-only -Wall -Wextra -Wconversion -Werror -I"$include" \
      -I"$include/platform/host" -I"$include/platform/moravin" \
      -isystem "$include/platform/macos" "$2"
  done
}

mkdir -p "$scratch"
cd "$include"
headers=$(find . -name '*.h' ! -path './platform/macos/*' | sed 's|^\./||' | LC_ALL=C sort)
test "$(echo "$headers" | grep -c '^hostutil/')" -gt 5
if [ "$mode" = together ]; then
  echo "$headers" | sed 's/.*/#include "&"/' >"$scratch/together.cpp"
  for standard in c++17 c++2b; do compile "$standard" "$scratch/together.cpp"; done
  exit
fi
for header in $headers; do
  echo "#include \"$header\"" >"$scratch/alone.cpp"
  compile c++17 "$scratch/alone.cpp"
done
