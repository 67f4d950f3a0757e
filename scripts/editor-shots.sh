#!/usr/bin/env bash
# Runs the editor tests in their own X server and leaves their screenshots in
# build/editor-shots/ (or $HUELOOM_BUILD_DIR/editor-shots/): wheel and sliders after a drag
# (wheel_and_sliders), themes downloading from a slow server with the bar half way
# (download_de), a failed import's alert (import_failure_de), the German editor after the
# download and an import (editor_de), the open theme menu (theme_menu), the open preset menu
# (preset_menu), the alert of a refused preset (preset_alert) and the editor at a desktop scale of
# 2 on a 3200 x 1800 screen (double_density). Look at them after layout
# changes: text that fits, nothing overlapping, controls in line.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BUILD_DIR:-build}
cmake --build "$build_dir" -j"${HUELOOM_JOBS:-$(nproc)}" --target hueloom_editor_tests
rm -rf "$build_dir/editor-shots"
ctest --test-dir "$build_dir" -R 'editor_(panel|window)' --output-on-failure
ls "$build_dir/editor-shots"
