#!/usr/bin/env bash
# Builds everything (library, tests, tools, fuzz replay) against Qt 6 with
# AddressSanitizer and UndefinedBehaviorSanitizer (build/asan,
# -DMORVANE_SANITIZE=ON) and runs ctest there. A memory error, a leak or
# undefined behaviour fails the test it happens in. Exits non-zero when any
# step fails.
#
#   bash tools/run-sanitized-tests.sh [ctest options...]
#
# The build is a Debug build with GCC: unoptimised, the instrumented test
# sources compile several times faster than optimised ones, and the
# assertions (Q_ASSERT) are on as well. Qt itself is not instrumented.
#
# Environment: MORVANE_BUILD_ROOT (default: build), MORVANE_JOBS (default: 2);
# ASAN_OPTIONS and UBSAN_OPTIONS are added to the ones set here.
set -uo pipefail
# shellcheck source=tools/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

morvane_ensure_deps || exit 1

build_dir=$MORVANE_BUILD_ROOT/asan
echo "== asan: configure"
morvane_configure "$build_dir" -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
    -DMORVANE_QT_MAJOR=6 -DMORVANE_SANITIZE=ON || exit 1
echo "== asan: build"
morvane_build "$build_dir" || exit 1

# Leaks are looked for at the exit of every test program; undefined behaviour
# stops the program with the stack (the build already makes it fatal).
export ASAN_OPTIONS=detect_leaks=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}

# The packaging tests run here too: the sanitized library hands its
# -fsanitize link options on to whatever links it, through the installed
# package and the build tree alike, so the consumer project links the
# sanitizer runtimes it needs.
echo "== asan: test"
if ! (cd "$build_dir" && ctest --output-on-failure -j "$MORVANE_JOBS" "$@"); then
    echo "== FAILED: asan: test" >&2
    exit 1
fi
echo "== asan: all tests passed"
