#!/usr/bin/env bash
# Builds hueloom-bench as a Release build into build-bench/ (or $HUELOOM_BENCH_DIR) and runs
# it. Arguments go to the benchmark: Google Benchmark's flags, e.g.
#   scripts/bench.sh --benchmark_filter=render
# It names the row kernel it measured (HUELOOM_ROW_KERNEL=scalar|sse2|avx2|avx512 forces one the
# CPU has) and ends with the line
#   "summary: render_vs_ocio_1t=R render_vs_memory_all=F rebuild_us=T tiles_vs_frame=X
#   state_text_mb=S state_text_ms=W preview_full_ms=P preview_proxy_ms=Q preview_images_ms=B
#   preview_8bit_ms=C preview_8bit_fit_ms=D".
# Figures are only worth comparing from an otherwise idle machine.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${HUELOOM_BENCH_DIR:-build-bench}
jobs=${HUELOOM_JOBS:-$(nproc)}
cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=Release -DHUELOOM_BUILD_BENCH=ON
cmake --build "$build_dir" -j"$jobs" --target hueloom-bench
exec "$build_dir/bench/hueloom-bench" "$@"
