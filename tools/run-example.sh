#!/usr/bin/env bash
# Builds the library against Qt 6 (build/qt6) and runs its main job on the
# bundled example data: morvane-tool loads examples/storelist.xml, checks it,
# lists it, writes it as XML, binary and compressed binary, reads each back,
# and the XML written must be byte for byte the file it read. Then it imports
# the CSV file of each list type in examples/ into a store list, lists it and
# exports it as a CSV file of its type again (the notepad comes out byte for
# byte the file it was read from), exports the example store list in every
# list type, and converts the detection result list of examples/ into the
# detection result CSV file and into a store list.
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
EXAMPLE_CSV=(examples/notepad.csv:NotePad examples/suppress.csv:Suppress examples/noi.csv:NOIFrequencies
             examples/targetlist.csv:TargetList examples/dataresults.csv:DataResults
             examples/conventional.csv:DetectionConventional examples/memoryscan.csv:MemoryScan)
# Every list type with a CSV form of a store list.
EXAMPLE_TYPES=(NotePad Suppress TargetList DataResults NOIFrequencies DetectionConventional MemoryScan)
EXAMPLE_DETECTIONS=examples/detectionresults.xml

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

    for type in "${EXAMPLE_TYPES[@]}"; do
        "$program" export --type "$type" "$EXAMPLE_INPUT" "$output/storelist-$type.csv"
    done
    "$program" convert-detections "$EXAMPLE_DETECTIONS" "$output/detectionresults.csv"
    "$program" convert-detections "$EXAMPLE_DETECTIONS" "$output/detectionresults-converted.xml"
    "$program" print "$output/detectionresults-converted.xml"
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
