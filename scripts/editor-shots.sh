#!/usr/bin/env bash
# Runs the editor tests in their own X server and leaves their screenshots in
# build/editor-shots/ (or $HUELOOM_BUILD_DIR/editor-shots/): the editor with its theme, the
# open theme menu, a failed import in German, the German editor after an import, the wheel and
# sliders after a drag. Look at them after layout changes: text that fits, nothing overlapping.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BUILD_DIR:-build}
cmake --build "$build_dir" -j"${HUELOOM_JOBS:-$(nproc)}" --target hueloom_editor_tests
rm -rf "$build_dir/editor-shots"
ctest --test-dir "$build_dir" -R 'editor_(panel|window)' --output-on-failure
ls "$build_dir/editor-shots"
