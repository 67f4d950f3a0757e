#!/usr/bin/env bash
# Configures and builds Hueloom into build/ (or $HUELOOM_BUILD_DIR). The bundle is laid out
# in build/OFX/Plugins/Hueloom.ofx.bundle as part of the build.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BUILD_DIR:-build}
jobs=${HUELOOM_JOBS:-$(nproc)}
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=${HUELOOM_BUILD_TYPE:-RelWithDebInfo} "$@"
cmake --build "$build_dir" -j"$jobs"
