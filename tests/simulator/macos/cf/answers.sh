#!/usr/bin/env bash
# answers.sh SOURCES: writes the answers of Apple's Core Foundation to standard output. SOURCES is a
# copy of swift-corelibs-foundation. Needs clang 19, lld, libicu-dev and libxml2.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
sources=$(cd "$1/Sources/CoreFoundation" && pwd)
build=$(mktemp -d)
trap 'rm -rf "$build"' EXIT
cd "$build"

mkdir include
ln -s "$sources/include" include/CoreFoundation
ln -s /usr/include/unicode include/_foundation_unicode
flags=(-w -O1 -fPIC -fblocks -fexceptions -fcf-runtime-abi=swift -D_GNU_SOURCE
       -DDEPLOYMENT_RUNTIME_SWIFT -DCF_BUILDING_CF -DHAVE_STRUCT_TIMESPEC
       -DSWIFT_CORELIBS_FOUNDATION_HAS_THREADS -Iinclude "-I$here/stubs"
       "-I$sources/BlockRuntime/include")
library=(-fconstant-cfstrings -fdollars-in-identifiers -fno-common
         "-I$sources" "-I$sources/include" "-I$sources/internalInclude"
         -include "$sources/internalInclude/CoreFoundation_Prefix.h")

# The run loop needs the rest of the dispatch library.
for file in "$sources"/*.c "$sources"/BlockRuntime/*.c "$here/stubs/Runtime.c"; do
  [ "$(basename "$file")" = CFRunLoop.c ] || echo "$file"
done > files

# These four convert text as on a Mac, where Mac Roman has a converter of its own. Elsewhere ICU
# converts it: it leaves out characters that are not visible and does not compose accents.
on_a_mac='/^#if TARGET_OS_MAC$/ {
  N
  /__CFFromMacRoman\|kCFStringEncodingMacRoman\|FileSystemRepresentation/ s/TARGET_OS_MAC/1/
}
/^#if TARGET_OS_OSX || TARGET_OS_IPHONE$/ {
  N
  /__CFMacRomanCharToUnichar\|CFStringEncodingConverter \*/ s/TARGET_OS_OSX || TARGET_OS_IPHONE/1/
}'
mkdir mac
for name in CFBuiltinConverters CFString CFStringEncodingConverter CFStringEncodings; do
  sed "$on_a_mac" "$sources/$name.c" > "mac/$name.c"
  sed -i "\|/$name.c\$|d" files
  if cmp -s "$sources/$name.c" "mac/$name.c"; then
    echo "$sources/$name.c: no branch for a Mac was found; answers.sh must be adapted" >&2
    exit 1
  fi
  clang-19 "${flags[@]}" "${library[@]}" -include "$here/stubs/MacConverters.h" \
           -c "mac/$name.c" -o "$name.o"
done

number=0
while read -r file; do
  clang-19 "${flags[@]}" "${library[@]}" -c "$file" -o "$((number += 1)).o"
done < files
clang++-19 "${flags[@]}" -std=c++20 -c "$here/Questions.cpp" "$here/Main.cpp"
clang++-19 -fuse-ld=lld -Wl,--unresolved-symbols=ignore-all ./*.o -o answers \
           -licuuc -licui18n -lxml2 -ldl -lpthread
./answers
