#!/usr/bin/env bash
# Configures and builds the library against Qt 6 (build/qt6, default options)
# and Qt 5 (build/qt5, -DMORVANE_QT_MAJOR=5) and runs ctest in each. Exits
# non-zero when any step fails; both builds are tried either way.
#
#   bash tools/run-tests.sh
#
# Environment: MORVANE_BUILD_ROOT (default: build), MORVANE_JOBS (default: 2).
set -uo pipefail
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

morvane_ensure_deps || exit 1

failed=()

# run_build <name> [cmake options...]
run_build() {
    local name=$1
    shift
    local dir=$MORVANE_BUILD_ROOT/$name
    echo "== $name: configure"
    if ! morvane_configure "$dir" "$@"; then
        failed+=("$name: configure")
        return
    fi
    echo "== $name: build"
    if ! morvane_build "$dir"; then
        failed+=("$name: build")
        return
    fi
    echo "== $name: test"
    if ! (cd "$dir" && ctest --output-on-failure -j "$MORVANE_JOBS"); then
        failed+=("$name: test")
    fi
}

run_build qt6 -DMORVANE_QT_MAJOR=6
run_build qt5 -DMORVANE_QT_MAJOR=5

if [ ${#failed[@]} -ne 0 ]; then
    printf '== FAILED: %s\n' "${failed[@]}" >&2
    exit 1
fi
echo "== all builds and tests passed"
