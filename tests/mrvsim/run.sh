#!/usr/bin/env bash
# run.sh ROOT SCRATCH: ./run with a build and a runner that only say what they were asked for.
set -euo pipefail
root=$1
scratch=$2
tree=$scratch/tree
tools=$scratch/tools

# The tree is new, and nothing in it is built.
start_over() {
  rm -rf "$scratch"
  mkdir -p "$tree/scripts" "$tools"
  cp "$root/run" "$tree/"
  cp "$root/scripts/setup.sh" "$tree/scripts/"
  cat >"$tools/dpkg-query" <<'TOOL'
#!/bin/sh
echo installed
TOOL
  cat >"$tools/cmake" <<'TOOL'
#!/bin/bash
if [ "$1" = --build ]; then
  touch built
  [[ " $* " = *" --quiet "* ]] || echo "${NINJA_STATUS/\%f\/\%t/7/9}Building"
  mkdir -p build/run/bin
  printf '#!/bin/sh\necho "in $(basename "$PWD"): $*"\n' >build/run/bin/mrvsim
  chmod +x build/run/bin/mrvsim
else
  mkdir -p build/run
  echo "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" >build/run/CMakeCache.txt
fi
TOOL
  chmod +x "$tools"/*
  export PATH=$tools:$PATH
}

# expect STATUS OUTPUT ERRORS ARGUMENT...: runs ./run in the tree; the errors are a pattern.
expect() {
  local status=0 output errors
  output=$(cd "$tree" && ./run "${@:4}" 2>"$scratch/errors") || status=$?
  errors=$(cat "$scratch/errors")
  # shellcheck disable=SC2053  # the right side is a pattern
  if [ "$status" != "$1" ] || [ "$output" != "$2" ] || [[ $errors != $3 ]]; then
    printf './run %s: status %s\n%s\n%s\n' "${*:4}" "$status" "$output" "$errors"
    exit 1
  fi
}

start_over
# The first build says how long it takes and how far it is; a later one is silent.
expect 0 'in tree: play tests/scenarios/flight.json --summary' \
  $'run: the first build takes about * min; *\n\\[7/9\\] Building'
expect 0 'in tree: play tests/scenarios/flight.json --summary' ''
expect 0 'in tree: play a.json b.json --summary' '' a.json b.json
expect 0 'in tree: live a.json --record b.json' '' live a.json --record b.json

# Scenarios are the caller's, who stands elsewhere.
mkdir "$scratch/elsewhere"
output=$(cd "$scratch/elsewhere" && "$tree/run" a.json)
[ "$output" = 'in elsewhere: play a.json --summary' ] || { echo "elsewhere: $output"; exit 1; }

# A second one waits until the first has built.
rm "$tree/built"
mkfifo "$scratch/says"
exec {lock}>"$tree/build/run.lock"
flock "$lock"
(cd "$tree" && exec {lock}>&- && ./run >"$scratch/output" 2>"$scratch/says") &
waiting=$!
read -r line <"$scratch/says"
[ "$line" = 'run: another ./run is building; waiting for it' ] || { echo "waiting: $line"; exit 1; }
[ ! -e "$tree/built" ] || { echo "two built at the same time"; exit 1; }
exec {lock}>&-
wait "$waiting"
[ -e "$tree/built" ] || { echo "the second did not build"; exit 1; }

# Sources that were moved: what to do, and nothing else.
mv "$tree" "$scratch/moved"
tree=$scratch/moved
rm "$tree/built"
expect 2 '' "$tree/build/run was made when these sources were in $scratch/tree;*rm -rf $tree/build/run"
[ ! -e "$tree/built" ] || { echo "built in a folder of another place"; exit 1; }
rm -rf "$tree/build/run"
expect 0 'in moved: play tests/scenarios/flight.json --summary' '*first build*'

expect 2 '' 'run: unknown option --fast; *' --fast
