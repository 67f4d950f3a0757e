#!/usr/bin/env bash
# The main job: shows what a host sees of the freshly built bundle.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BUILD_DIR:-build}
export OFX_PLUGIN_PATH="$PWD/$build_dir/OFX/Plugins"
"$build_dir/tools/hueloom_host/hueloom-host" describe "$OFX_PLUGIN_PATH"
echo
echo "Bundle: $OFX_PLUGIN_PATH/Hueloom.ofx.bundle"
