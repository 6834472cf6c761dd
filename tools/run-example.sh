#!/usr/bin/env bash
# Builds the library against Qt 6 (build/qt6) and runs its main job on the
# bundled example data: morvane-tool loads examples/storelist.xml, checks it,
# lists it, writes it as XML, binary and compressed binary, reads each back,
# and the XML written must be byte for byte the file it read.
#
#   bash tools/run-example.sh
#
# Environment: MORVANE_BUILD_ROOT (default: build), MORVANE_JOBS (default: 2).
set -euo pipefail
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

# --- the example: the one place to change when it changes ---------------------
EXAMPLE_TARGET=morvane-tool                  # the CMake target built
EXAMPLE_PROGRAM=tools/morvane-tool           # relative to the build directory
EXAMPLE_INPUT=examples/storelist.xml         # relative to the project root

run_example() {
    local program=$1 output=$2
    "$program" print "$EXAMPLE_INPUT"
    "$program" convert "$EXAMPLE_INPUT" \
        "$output/storelist.xml" "$output/storelist.bin" "$output/storelist.binz"
    cmp "$EXAMPLE_INPUT" "$output/storelist.xml"
    echo "$output/storelist.xml: byte for byte $EXAMPLE_INPUT"
}
# ---------------------------------------------------------------------------------

morvane_ensure_deps

build_dir=$MORVANE_BUILD_ROOT/qt6
morvane_configure "$build_dir" -DMORVANE_QT_MAJOR=6
morvane_build "$build_dir" --target "$EXAMPLE_TARGET"

output_dir=$build_dir/example-output
rm -rf "$output_dir"
mkdir -p "$output_dir"
cd "$MORVANE_ROOT"
echo "== $EXAMPLE_TARGET on $EXAMPLE_INPUT"
run_example "$build_dir/$EXAMPLE_PROGRAM" "$output_dir"
