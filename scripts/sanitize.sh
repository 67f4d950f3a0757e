#!/usr/bin/env bash
# Builds the project with sanitizers and runs the tests under them.
#   scripts/sanitize.sh address   AddressSanitizer + UndefinedBehaviorSanitizer, every test
#   scripts/sanitize.sh thread    ThreadSanitizer, the tests that run threads
# The build goes to build-asan or build-tsan; extra arguments go to ctest.
set -euo pipefail
cd "$(dirname "$0")/.."
kind=${1:-address}
shift || true
case "$kind" in
  address)
    build_dir=build-asan
    export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1:strict_string_checks=1}
    export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
    export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$PWD/scripts/lsan.supp}
    filter=()
    ;;
  thread)
    build_dir=build-tsan
    export TSAN_OPTIONS=${TSAN_OPTIONS:-halt_on_error=1:second_deadlock_stack=1:suppressions=$PWD/scripts/tsan.supp}
    # The threaded parts: the theme collection, the web client, the render rows, and the
    # host's thread suite.
    filter=(-R "ThemeCollection|WebClient|Vault|RenderRows|HueloomRows|bundle_instance|bundle_render|bundle_session|thread_suite|theme_server")
    ;;
  *)
    echo "usage: scripts/sanitize.sh address|thread [ctest arguments]" >&2
    exit 2
    ;;
esac
jobs=${HUELOOM_JOBS:-$(nproc)}
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DHUELOOM_SANITIZE="$kind" >/dev/null
cmake --build "$build_dir" -j"$jobs"
ctest --test-dir "$build_dir" --output-on-failure -j"$jobs" --timeout 900 "${filter[@]}" "$@"
