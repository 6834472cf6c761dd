#!/usr/bin/env bash
# Builds the library against Qt 6 (build/qt6) and runs its main job on the
# bundled example data: morvane-tool loads examples/storelist.xml, checks it,
# lists it, writes it as XML, binary and compressed binary, reads each back,
# and the XML written must be byte for byte the file it read. Then it imports
# the notepad, suppress and NOI files of examples/ into store lists, lists
# them and exports each as a CSV file of its type again; the notepad comes out
# byte for byte the file it was read from.
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
# The CSV files of the example, each with its list type.
EXAMPLE_CSV=(examples/notepad.csv:NotePad examples/suppress.csv:Suppress examples/noi.csv:NOIFrequencies)

run_example() {
    local program=$1 output=$2
    "$program" print "$EXAMPLE_INPUT"
    "$program" convert "$EXAMPLE_INPUT" \
        "$output/storelist.xml" "$output/storelist.bin" "$output/storelist.binz"
    cmp "$EXAMPLE_INPUT" "$output/storelist.xml"
    echo "$output/storelist.xml: byte for byte $EXAMPLE_INPUT"

    local item file type name
    for item in "${EXAMPLE_CSV[@]}"; do
        file=${item%%:*}
        type=${item##*:}
        name=$(basename "$file" .csv)
        "$program" import --type "$type" "$file" "$output/$name.xml"
        "$program" print "$output/$name.xml"
        "$program" export --type "$type" "$output/$name.xml" "$output/$name.csv"
    done
    cmp examples/notepad.csv "$output/notepad.csv"
    echo "$output/notepad.csv: byte for byte examples/notepad.csv"
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
