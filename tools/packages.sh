# SPDX-License-Identifier: GPL-3.0-or-later
# Sourced by run and test: installs the Debian packages that are missing, and only those.

# The tests are configured with the program, so that what they are built with is needed for either.
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-base-private-dev libgtest-dev libproj-dev libsqlite3-dev libgl-dev
    fonts-dejavu-core)
display_packages=(xvfb xauth)
test_packages=(libbenchmark-dev clang-format clang-tidy poppler-utils
    xvfb xauth openbox xdotool wmctrl x11-utils
    appstream desktop-file-utils dpkg-dev file lintian locales man-db pandoc proj-bin python3-yaml
    gdal-bin sqlite3
    cups-daemon cups-client cups-filters printer-driver-cups-pdf ghostscript)
fuzz_packages=(clang libclang-rt-14-dev)

say() { printf '== %s\n' "$*"; }

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

is_installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'; }

install_missing() {
    command -v dpkg-query >/dev/null 2>&1 || {
        say "not a Debian system: please see to these packages yourself: $*"
        return 0
    }
    local missing=() package
    for package in "$@"; do is_installed "$package" || missing+=("$package"); done
    [ ${#missing[@]} -eq 0 ] && return 0
    local sudo=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null 2>&1 || fail "missing packages, and neither root nor sudo: as root, run
    apt-get install ${missing[*]}"
        sudo=(sudo)
    fi
    say "installing ${missing[*]}"
    "${sudo[@]}" apt-get update -q || fail "the package lists could not be read; check the network and /etc/apt"
    DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -q -y --no-install-recommends "${missing[@]}" ||
        fail "could not install ${missing[*]}; see apt's message above"
}

# build PRESET TARGET...: configures when needed, then builds what has changed.
build() {
    local preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || {
        say "configuring ($preset)"
        cmake --preset "$preset" >"build-$preset.log" 2>&1 || {
            cat "build-$preset.log" >&2
            fail "cmake could not configure the build; its message stands above"
        }
        rm -f "build-$preset.log"
    }
    say "building ($preset): $*"
    ninja -C "build/$preset" "$@" || fail "the build failed; the compiler's message stands above"
}
