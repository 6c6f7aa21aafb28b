#!/bin/sh
# reproducible.sh ROOT SCRATCH BUILD: packs the bundle of ROOT, which was built in BUILD, and the bundle
# of a copy of ROOT in another folder, and compares the archives and the maps of the binaries.
set -eu
unset MACOS_SDK

root=$1
scratch=$2
build=$3
rm -rf "$scratch"
mkdir -p "$scratch/another place"
system=$(awk '$1 == "system" { print $2 }' "$root/cmake/folders.txt")
for folder in CMakeLists.txt cmake platform $system packaging scripts docs; do
  cp -R "$root/$folder" "$scratch/another place/"
done

"$root/packaging/bundle" "$build" "$scratch/dist-one" >/dev/null
(umask 077 && TZ=Pacific/Auckland \
  "$scratch/another place/packaging/bundle" "$scratch/two" "$scratch/dist-two" >/dev/null)
diff -r "$scratch/dist-one" "$scratch/dist-two"
unzip -q "$scratch"/dist-one/*.zip -d "$scratch/unpacked"
test "$(grep '^# UUID: [0-9A-F-]*$' "$scratch"/dist-one/*.map | sort -u | wc -l)" = 2
test "$(sed -n 's/^# Arch: //p' "$scratch"/dist-one/*.map | tr '\n' ' ')" = 'x86_64 arm64 '
grep -q ' MrvDeviceEvents::messageHandlerProc(' "$scratch"/dist-one/*.map
cd "$scratch"/unpacked/*
sha256sum -c --quiet SHA256SUMS
test "$(find . -type f | wc -l)" = "$(($(wc -l <SHA256SUMS) + 1))"
grep -q 'Reads the item under' api/DescriptorUtilities_8h.html
test -x MrvPhotoshop.plugin/Contents/MacOS/MrvPhotoshop
