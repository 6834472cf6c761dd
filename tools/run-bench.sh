#!/usr/bin/env bash
# Configures and builds the benchmarks (build/bench: Release, Qt 6, without
# tests and examples) and runs each of them, printing its output:
# bench_storelist (reading and copying the example list), bench_scale (every
# read and write path on lists of N and 4N entries, then the memory a loaded
# list holds) and bench_csv (the notepad and memory scan files imported and
# exported, and detection results converted, at N and 4N rows). Exits
# non-zero when a step or a benchmark fails; every benchmark runs either way.
#
#   bash tools/run-bench.sh [benchmark options...]
#
# The options (e.g. --benchmark_filter=Binary) go to every benchmark.
#
# Environment: MORVANE_BUILD_ROOT (default: build), MORVANE_JOBS (default: 2),
# and for bench_scale MORVANE_BENCH_N (default: 25000; the large list has 4N
# entries), MORVANE_BENCH_ITERATIONS (default: 1 for the reads and writes,
# picked by Google Benchmark for the in-memory paths), MORVANE_BENCH_MEMORY (0
# skips the memory measurement). For a quick run:
#
#   MORVANE_BENCH_N=1000 bash tools/run-bench.sh
set -uo pipefail
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

BENCHMARKS=(bench_storelist bench_scale bench_csv)

morvane_ensure_deps || exit 1

build_dir=$MORVANE_BUILD_ROOT/bench
echo "== bench: configure"
# Timings of an instrumented build would say nothing: no sanitizers here.
morvane_configure "$build_dir" -DCMAKE_BUILD_TYPE=Release -DMORVANE_QT_MAJOR=6 -DMORVANE_SANITIZE=OFF \
    -DMORVANE_BUILD_BENCHMARKS=ON -DMORVANE_BUILD_TESTS=OFF -DMORVANE_BUILD_EXAMPLES=OFF || exit 1
echo "== bench: build"
morvane_build "$build_dir" || exit 1

failed=()
for benchmark in "${BENCHMARKS[@]}"; do
    echo "== $benchmark"
    if ! "$build_dir/bench/$benchmark" "$@"; then
        failed+=("$benchmark")
    fi
done

if [ ${#failed[@]} -ne 0 ]; then
    printf '== FAILED: %s\n' "${failed[@]}" >&2
    exit 1
fi
echo "== all benchmarks ran"
