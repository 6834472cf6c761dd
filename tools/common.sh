# shellcheck shell=bash
# Sourced by the scripts of tools/: run-example.sh, run-tests.sh,
# run-sanitized-tests.sh and run-fuzz.sh.
#
# MORVANE_BUILD_ROOT  where the build directories go (default: build, relative
#                     to the project root): qt6/, qt5/, asan/ and fuzz/ below it
# MORVANE_JOBS        parallel build jobs (default: 2)

MORVANE_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
MORVANE_BUILD_ROOT=${MORVANE_BUILD_ROOT:-build}
case "$MORVANE_BUILD_ROOT" in
    /*) ;;
    *) MORVANE_BUILD_ROOT=$MORVANE_ROOT/$MORVANE_BUILD_ROOT ;;
esac
MORVANE_JOBS=${MORVANE_JOBS:-2}

# The Debian packages the build needs. A machine that has them all does not
# touch apt; otherwise, as root, "apt-get update" runs once and they are
# installed (through sudo when not root and sudo is there).
MORVANE_DEBIAN_PACKAGES=(cmake ninja-build g++ python3 qt6-base-dev qtbase5-dev
    libgtest-dev libbenchmark-dev pkg-config)

# The packages the fuzz targets need on top (tools/run-fuzz.sh): clang, and
# the compiler runtime with libFuzzer and the sanitizers of Debian's default
# clang (libclang-rt-dev pulls in libclang-rt-<version>-dev), and llvm for
# llvm-symbolizer, which turns the addresses of a crash report into source lines.
MORVANE_FUZZ_DEBIAN_PACKAGES=(clang libclang-rt-dev llvm)

# morvane_missing_packages <package...>: those of the packages not installed.
morvane_missing_packages() {
    local pkg status
    for pkg in "$@"; do
        status=$(dpkg-query -W -f='${db:Status-Status}' "$pkg" 2>/dev/null || true)
        [ "$status" = installed ] || printf '%s ' "$pkg"
    done
}

# morvane_ensure_packages <package...>: installs those of the packages that
# are missing.
morvane_ensure_packages() {
    if ! command -v dpkg-query >/dev/null 2>&1; then
        echo "ensure-deps: not a Debian system, not checking packages" >&2
        return 0
    fi
    local missing
    missing=$(morvane_missing_packages "$@")
    [ -z "$missing" ] && return 0

    local sudo=()
    if [ "$(id -u)" -ne 0 ]; then
        if command -v sudo >/dev/null 2>&1; then
            sudo=(sudo)
        else
            echo "ensure-deps: missing packages:" "$missing" >&2
            echo "ensure-deps: run as root: apt-get install $*" >&2
            return 1
        fi
    fi
    echo "ensure-deps: installing" "$missing"
    "${sudo[@]}" apt-get update || return 1
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
        "$@" || return 1
    missing=$(morvane_missing_packages "$@")
    if [ -n "$missing" ]; then
        echo "ensure-deps: still missing:" "$missing" >&2
        return 1
    fi
}

morvane_ensure_deps() {
    morvane_ensure_packages "${MORVANE_DEBIAN_PACKAGES[@]}"
}

morvane_ensure_fuzz_deps() {
    morvane_ensure_packages "${MORVANE_DEBIAN_PACKAGES[@]}" "${MORVANE_FUZZ_DEBIAN_PACKAGES[@]}"
}

# morvane_configure <build dir> [cmake options...]: configures with Ninja; a
# directory configured before keeps its generator.
morvane_configure() {
    local dir=$1
    shift
    local generator=(-G Ninja)
    [ -f "$dir/CMakeCache.txt" ] && generator=()
    cmake -S "$MORVANE_ROOT" -B "$dir" "${generator[@]}" "$@"
}

# morvane_build <build dir> [cmake --build options...]
morvane_build() {
    local dir=$1
    shift
    cmake --build "$dir" -j "$MORVANE_JOBS" "$@"
}
