#!/usr/bin/env bash
# Builds everything and runs every test. Editor tests start their own X server (Xvfb).
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BUILD_DIR:-build}
scripts/build.sh "$@"
ctest --test-dir "$build_dir" --output-on-failure -j"$(nproc)" --timeout 600
