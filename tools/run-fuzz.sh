#!/usr/bin/env bash
# Builds the libFuzzer targets with clang over a library instrumented for
# coverage, AddressSanitizer and UndefinedBehaviorSanitizer (build/fuzz,
# -DMORVANE_BUILD_FUZZERS=ON), and runs each target for SECONDS (default 60)
# on a scratch copy of its corpus folder fuzz/corpus/<name>/. Reports the
# executions per second of each and exits non-zero when one of them found a
# crash, a leak or a hang.
#
#   bash tools/run-fuzz.sh [--merge] [SECONDS]
#
#   --merge   afterwards add the new inputs that reach new code (new edges)
#             to the committed corpus folder (libFuzzer -merge=1); without it
#             the committed corpus is only read
#
# Written below build/fuzz:
#   corpus/<target>/     the scratch corpus: the committed one and every new
#                        input of this run (made afresh at each run)
#   artifacts/<target>/  the input that crashed a target (crash-<sha1>,
#                        leak-..., timeout-..., oom-...); replay it with
#                        build/fuzz/fuzz/<target> FILE. Once understood, copy
#                        it into fuzz/corpus/<name>/, where ctest replays it
#   logs/<target>.log    libFuzzer's whole output
#
# Environment: MORVANE_BUILD_ROOT (default: build), MORVANE_JOBS (default: 2),
# MORVANE_FUZZ_OPTIONS (more libFuzzer flags, e.g. "-max_len=65536").
set -uo pipefail
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

usage() {
    echo "usage: bash tools/run-fuzz.sh [--merge] [SECONDS]" >&2
    exit 2
}

seconds=60
merge=0
for arg in "$@"; do
    case "$arg" in
        --merge) merge=1 ;;
        -h|--help) usage ;;
        *[!0-9]*|'') usage ;;
        *) seconds=$arg ;;
    esac
done
[ "$seconds" -gt 0 ] || usage

morvane_ensure_fuzz_deps || exit 1

build_dir=$MORVANE_BUILD_ROOT/fuzz
echo "== fuzz: configure"
morvane_configure "$build_dir" -DCMAKE_CXX_COMPILER=clang++ -DMORVANE_QT_MAJOR=6 \
    -DMORVANE_BUILD_FUZZERS=ON -DMORVANE_BUILD_TESTS=OFF -DMORVANE_BUILD_EXAMPLES=OFF || exit 1
echo "== fuzz: build"
morvane_build "$build_dir" --target fuzzers || exit 1

list=$build_dir/fuzzers.txt
if [ ! -s "$list" ]; then
    echo "== no fuzz targets listed in $list" >&2
    exit 1
fi

# A report on the first error, with the stack; undefined behaviour stops the
# target like a crash does.
export ASAN_OPTIONS=detect_leaks=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}

# stat <log> <name>: a number from libFuzzer's closing statistics.
stat() {
    sed -n "s/^stat::$2: *//p" "$1" | tail -n 1
}

failed=()
summary=()
while IFS=$'\t' read -r name program corpus; do
    [ -n "$name" ] || continue
    scratch=$build_dir/corpus/$name
    artifacts=$build_dir/artifacts/$name
    log=$build_dir/logs/$name.log
    rm -rf "$scratch"
    mkdir -p "$scratch" "$artifacts" "$(dirname "$log")"
    if [ -d "$corpus" ]; then
        cp -pR "$corpus"/. "$scratch"/
    else
        echo "== $name: no corpus folder $corpus, starting from nothing"
    fi
    stamp=$build_dir/logs/$name.start
    touch "$stamp"

    echo "== $name: fuzzing for $seconds s over $(find "$scratch" -type f | wc -l) inputs (log: $log)"
    # shellcheck disable=SC2086 # MORVANE_FUZZ_OPTIONS is a list of flags
    (cd "$build_dir" && "$program" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
        -artifact_prefix="$artifacts/" ${MORVANE_FUZZ_OPTIONS:-} "$scratch") </dev/null >"$log" 2>&1
    status=$?

    runs=$(stat "$log" number_of_executed_units)
    speed=$(stat "$log" average_exec_per_sec)
    added=$(stat "$log" new_units_added)
    coverage=$(grep -Eo 'cov: [0-9]+' "$log" | tail -n 1)
    line="$name: ${runs:-?} runs, ${speed:-?} exec/s, ${coverage:-cov: ?}, ${added:-?} new inputs"
    if [ "$status" -ne 0 ]; then
        # The sanitizer's or libFuzzer's report, from where it starts.
        echo "== $name: FAILED (exit $status); the report:"
        awk '/^==[0-9]+==|^SUMMARY|runtime error|^fuzz_[a-z_]+: |ALARM/ { on = 1 } on' "$log" | head -n 150
        kept=$(find "$artifacts" -type f -newer "$stamp" | sort)
        if [ -n "$kept" ]; then
            echo "== $name: the input is kept in:"
            while IFS= read -r file; do echo "   $file"; done <<<"$kept"
        else
            echo "== $name: no input was kept; see $log"
        fi
        failed+=("$name")
        summary+=("$line, FAILED")
        continue
    fi
    summary+=("$line")
    echo "== $line"

    if [ "$merge" -eq 1 ]; then
        mkdir -p "$corpus"
        count=$(find "$corpus" -type f | wc -l)
        # Edges only, not how often each is taken (-use_counters=0): that
        # keeps far fewer inputs, and the committed corpus small.
        if (cd "$build_dir" && "$program" -merge=1 -use_counters=0 -timeout=10 "$corpus" "$scratch") \
            </dev/null >>"$log" 2>&1; then
            echo "== $name: $(( $(find "$corpus" -type f | wc -l) - count )) new inputs merged into $corpus"
        else
            echo "== $name: merge FAILED, see $log" >&2
            failed+=("$name: merge")
        fi
    fi
done <"$list"

echo "== fuzzing summary ($seconds s a target)"
printf '   %s\n' "${summary[@]}"
if [ ${#failed[@]} -ne 0 ]; then
    printf '== FAILED: %s\n' "${failed[@]}" >&2
    exit 1
fi
echo "== no crash found"
