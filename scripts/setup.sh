# shellcheck shell=bash
# Sourced by the commands: the packages that they need, and how they install and build.

# shellcheck disable=SC2034  # the lists are used where this file is sourced
BUILD_PACKAGES=(g++ cmake ninja-build nlohmann-json3-dev libfmt-dev libcli11-dev
                libpugixml-dev libc++1-19 libsdl2-dev libimgui-dev libpng-dev fonts-inter
                fonts-dejavu-core)
BUNDLE_PACKAGES=(g++ cmake ninja-build zip clang-19 lld-19 llvm-19 libc++-19-dev
                 doxygen)
LIBRARY_PACKAGES=(libgtest-dev libgmock-dev libbenchmark-dev libeigen3-dev libglm-dev)
DESKTOP_PACKAGES=(libgnustep-gui-dev gnustep-back0.29-cairo gobjc xvfb xdotool libx11-dev)
TEST_PACKAGES=("${BUILD_PACKAGES[@]}" "${BUNDLE_PACKAGES[@]}" "${LIBRARY_PACKAGES[@]}"
               "${DESKTOP_PACKAGES[@]}" git gcovr unzip binutils python3 python3-jsonschema
               groff-base zsh dpkg-dev file locales libclang-rt-19-dev clang-format-19 clang-tidy-19
               shellcheck valgrind qemu-user-static pkgconf chromium chromium-driver
               python3-selenium)

# need PACKAGE...: installs the packages of the distribution that are missing.
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

# expect_unmoved PRESET: ends the script if the preset's folder was made for another place.
expect_unmoved() {
  local folder=$PWD/build/$1 place
  [ -f "$folder/CMakeCache.txt" ] || return 0
  place=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt")
  [ "$(realpath -m "$place")" != "$(realpath .)" ] || return 0
  echo "$folder was made when these sources were in $place; remove it and try again:" >&2
  printf '    rm -rf %q\n' "$folder" >&2
  exit 2
}

# configure PRESET [OPTION...]: shows warnings and errors alone.
configure() {
  expect_unmoved "$1"
  cmake --preset "$1" --log-level=WARNING "${@:2}" >/dev/null
}

# build PRESET [OPTION...]: configures and builds. What compilers and linkers print is shown.
build() {
  configure "$@"
  cmake --build --preset "$1" -- --quiet
}

# build_target TARGET PRESET [OPTION...]: the same for one target, or for all; also what the preset
# leaves out.
build_target() {
  configure "${@:2}"
  cmake --build --preset "$2" --target "$1" -- --quiet
}

# build_aloud PRESET [OPTION...]: the same, and says on standard error how far it is.
build_aloud() {
  configure "$@"
  NINJA_STATUS='[%f/%t] ' cmake --build --preset "$1" >&2
}

# folders KIND: the folders of one kind in cmake/folders.txt.
folders() { awk -v kind="$1" '$1 == kind { print $2 }' cmake/folders.txt; }

# The folder that holds Linux for arm64, for its toolchain: cmake/Arm64Linux.cmake.
ARM64_ROOT=build/arm64-root
ARM64_PACKAGES=(libc6-dev libstdc++-12-dev libfmt-dev nlohmann-json3-dev libcli11-dev
                libpugixml-dev libc++1-19 libgtest-dev libgmock-dev)

# need_arm64: unpacks these packages for arm64, and what they depend on, into that folder, once. The
# machine stays as it is: an architecture added to dpkg would stay there, with its lists of packages,
# and could hold up the machine's own updates.
need_arm64() {
  [ "$(cat "$ARM64_ROOT/packages" 2>/dev/null)" = "${ARM64_PACKAGES[*]}" ] && return
  echo "Unpacking ${ARM64_PACKAGES[*]} for arm64" >&2
  local apt=$PWD/$ARM64_ROOT.apt
  local options=(-o APT::Architecture=arm64 -o APT::Architectures=arm64 -o "Dir::State=$apt"
                 -o Dir::State::status=/dev/null -o "Dir::Cache=$apt" -o APT::Sandbox::User=)
  rm -rf "$ARM64_ROOT" "$apt"
  mkdir -p "$ARM64_ROOT" "$apt/archives/partial" "$apt/lists/partial"
  apt-get "${options[@]}" update -qq >&2
  apt-get "${options[@]}" install -y -qq --no-install-recommends --download-only \
    "${ARM64_PACKAGES[@]}" >&2
  local package
  for package in "$apt"/archives/*.deb; do dpkg-deb -x "$package" "$ARM64_ROOT"; done
  # Links to absolute paths must stay in the folder.
  local link
  find "$ARM64_ROOT" -type l -lname '/*' | while read -r link; do
    ln -sfrT "$ARM64_ROOT$(readlink "$link")" "$link"
  done
  rm -rf "$apt"
  echo "${ARM64_PACKAGES[*]}" >"$ARM64_ROOT/packages"
}
