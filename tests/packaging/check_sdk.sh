#!/usr/bin/env bash
# check_sdk.sh ROOT SCRATCH BINARY: scripts/check-sdk on the project's own stubs, whole and broken.
set -euo pipefail
root=$1
scratch=$2
binary=$3
carbon=$scratch/sdk/System/Library/Frameworks/Carbon.framework/Carbon.tbd

start_over() {
  rm -rf "$scratch"
  mkdir -p "$scratch"
  cp -R "$root/packaging/macos/sysroot" "$scratch/sdk"
}

# expect STATUS [TEXT...]: the exit status, and texts that the output must contain.
expect() {
  local status=0
  output=$("$root/scripts/check-sdk" --imports "$scratch/sdk" "$binary" 2>&1) || status=$?
  if [ "$status" != "$1" ]; then
    echo "exit status $status instead of $1: $output"
    exit 1
  fi
  shift
  for text in "$@"; do
    grep -qF -- "$text" <<<"$output" || { echo "missing '$text' in: $output"; exit 1; }
  done
}

start_over
expect 0 '(x86_64): ' '(arm64): ' ' 0 not exported' '0 problems'

# A symbol that is not exported any more.
sed -i '/_PostEventToQueue/d' "$carbon"
for processor in x86_64 arm64; do
  expect 1 "($processor): _PostEventToQueue is not exported by /System/Library/Frameworks/Carbon" '2 problems'
done

# A symbol that is exported for one processor alone.
start_over
sed -i 's/^      - _PostEventToQueue$/  - targets: [ x86_64-macos ]\n    symbols: [ _PostEventToQueue ]\n  - targets: [ x86_64-macos, arm64-macos ]\n    symbols:/' "$carbon"
expect 1 "(arm64): _PostEventToQueue is not exported by /System/Library/Frameworks/Carbon" '1 problems'

# A library that is missing.
start_over
rm "$scratch/sdk/usr/lib/libobjc.tbd"
expect 1 '_objc_msgSend is expected from /usr/lib/libobjc.A.dylib, which the SDK lacks'

# A stub that is none.
start_over
echo 'no stub' >"$carbon"
expect 2 "$carbon: cannot be read"

# The symbols are in a part that the umbrella does not list: restored, and said.
start_over
sed -e "/^\.\.\./d" "$carbon" >"$scratch/part.tbd"
sed -e '/^exports/,$d' "$carbon" >"$scratch/umbrella.tbd"
sed -i -e "s|install-name: .*|install-name: '/System/Library/Frameworks/Carbon.framework/Versions/A/Frameworks/HIToolbox.framework/Versions/A/HIToolbox'|" \
  -e 's|^exports:|parent-umbrella:\n  - targets: [ x86_64-macos, arm64-macos ]\n    umbrella: Carbon\nexports:|' "$scratch/part.tbd"
(cat "$scratch/umbrella.tbd" "$scratch/part.tbd"; echo ...) >"$carbon"
expect 0 "note: $carbon does not list" 'taken from its parts: HIToolbox' 'To restore the lists' '0 problems'
[ "$("$root/packaging/macos/restore-reexports" "$scratch/sdk" "$scratch/restored")" = Carbon ]
grep -q reexported_libraries "$scratch/restored/Carbon.framework/Carbon.tbd"

# With the list in place there is nothing to restore or to say.
cp "$scratch/restored/Carbon.framework/Carbon.tbd" "$carbon"
expect 0 '0 problems'
[[ $output != *note:* ]]
[ -z "$("$root/packaging/macos/restore-reexports" "$scratch/sdk" "$scratch/again")" ]
