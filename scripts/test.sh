#!/usr/bin/env bash
# Builds everything and runs every test, then the whole suite again under AddressSanitizer
# and UndefinedBehaviorSanitizer (set HUELOOM_SKIP_SANITIZERS=1 to leave that run out).
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BUILD_DIR:-build}
scripts/build.sh "$@"
ctest --test-dir "$build_dir" --output-on-failure -j"$(nproc)" --timeout 600
if [ "${HUELOOM_SKIP_SANITIZERS:-0}" != 1 ]; then
  scripts/sanitize.sh address
fi
