# Sourced by the commands: installs what is missing and builds presets.

# need PACKAGE...: installs those of the distribution's packages that are not there.
need() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing ${missing[*]}" >&2
  local sudo=()
  [ "$(id -u)" -eq 0 ] || sudo=(sudo)
  "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq >&2
  "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

BUILD_PACKAGES=(g++ cmake ninja-build nlohmann-json3-dev libfmt-dev libcli11-dev)
TEST_PACKAGES=(libgtest-dev libgmock-dev libbenchmark-dev libeigen3-dev libglm-dev gcovr zip unzip
               clang-19 lld-19 llvm-19 libc++-19-dev libclang-rt-19-dev clang-format-19
               clang-tidy-19)

# build FOLDER OPTION...: configures and builds, and shows what was printed only where it failed.
build() {
  local folder=build/$1 printed
  shift
  printed=$(mktemp)
  if ! { cmake -S . -B "$folder" -G Ninja "$@" && cmake --build "$folder"; } >"$printed" 2>&1; then
    cat "$printed" >&2
    rm -f "$printed"
    echo "$folder could not be built" >&2
    return 1
  fi
  rm -f "$printed"
}
