#!/usr/bin/env bash
# scripts/fuzz.sh [SECONDS] [TARGET...]
#
# Builds the libFuzzer targets with clang into build-fuzz/ (or $HUELOOM_FUZZ_BUILD_DIR), the
# whole tree instrumented with address and undefined-behaviour sanitizers, and runs each
# target (all of them without a list) for SECONDS (default 60), one after the other: the
# machine's cores are shared. New crashers, hangs and out-of-memory inputs are copied into
# fuzz/regressions/<target>/, where the regression test (tests/fuzz/) runs them from then on.
# Ends with a table of total runs and executions per second per target; exits 1 if any
# target left a crasher.
#
# Each target reads its working corpus in build-fuzz/fuzz-corpus/<target>/ (kept between
# runs, so later runs start where earlier ones stopped), fuzz/corpus/<target>/, its kept
# crashers, the made seeds and the test data named in fuzz/seed_dirs.txt; it uses
# fuzz/dict/<target>.dict if present.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
if ! [[ $seconds =~ ^[0-9]+$ ]] || [ "$seconds" -lt 1 ]; then
  echo "usage: scripts/fuzz.sh [SECONDS] [TARGET...]" >&2
  exit 2
fi
shift || true

build_dir=${HUELOOM_FUZZ_BUILD_DIR:-build-fuzz}
jobs=${HUELOOM_JOBS:-2}
all_targets=(theme_file theme_state effect_state state_text lut_cube lut_3dl theme_folder manifest preset)
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=("${all_targets[@]}")

# fmt is used header-only here: its shared library is built by GCC, whose mangling of some
# of fmt's internal templates differs from clang's. Undefined behaviour stops the run, except
# that pointer-overflow stays recoverable so fuzz/ubsan.supp can silence RapidJSON's own.
sanitize="-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined"
sanitize+=" -fsanitize-recover=pointer-overflow -DFMT_HEADER_ONLY=1"
CC=clang CXX=clang++ cmake -S . -B "$build_dir" \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DHUELOOM_BUILD_FUZZ=ON -DHUELOOM_BUILD_TESTS=OFF -DHUELOOM_BUILD_BENCH=OFF \
  -DCMAKE_C_FLAGS="$sanitize" -DCMAKE_CXX_FLAGS="$sanitize" \
  -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" >/dev/null
cmake --build "$build_dir" -j"$jobs" --target hueloom_fuzz_all >/dev/null

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1:suppressions=$PWD/fuzz/ubsan.supp}

bin_dir="$build_dir/fuzz"
seed_dir="$build_dir/fuzz-seeds"
rm -rf "$seed_dir"
"$bin_dir/hueloom-fuzz-seeds" "$seed_dir"


# The value of libFuzzer's final statistic NAME in LOG, or "?".
stat_of() {
  local value
  value=$(sed -n "s/^stat::$1: *\([0-9]*\).*/\1/p" "$2" | tail -n 1)
  echo "${value:-?}"
}

summary=()
found_any=0
for target in "${targets[@]}"; do
  binary="$bin_dir/fuzz_$target"
  if [ ! -x "$binary" ]; then
    echo "fuzz: no target named '$target'" >&2
    exit 2
  fi
  work="$build_dir/fuzz-corpus/$target"
  artifacts="$build_dir/fuzz-artifacts/$target"
  log="$build_dir/fuzz-logs/$target.log"
  mkdir -p "$work" "$artifacts" "$(dirname "$log")"

  corpora=("$work")
  [ -d "fuzz/corpus/$target" ] && corpora+=("fuzz/corpus/$target")
  [ -d "fuzz/regressions/$target" ] && corpora+=("fuzz/regressions/$target")
  [ -d "$seed_dir/$target" ] && corpora+=("$seed_dir/$target")
  while read -r name dir; do
    [ "$name" = "$target" ] && [ -d "$dir" ] && corpora+=("$dir")
  done < <(grep -v '^#' fuzz/seed_dirs.txt)
  options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1
           -artifact_prefix="$artifacts/")
  [ -f "fuzz/dict/$target.dict" ] && options+=(-dict="fuzz/dict/$target.dict")
  case "$target" in
    # Their bodies read short inputs as the head of a whole record; whole records of 4 MB
    # (seeds, regression test) would only slow every mutation down.
    theme_state | effect_state) options+=(-max_len=16384) ;;
  esac

  echo "fuzz: $target for ${seconds}s ..."
  before=$(ls "$artifacts" | wc -l)
  started=$(date +%s)
  status=0
  "$binary" "${options[@]}" "${corpora[@]}" </dev/null >"$log" 2>&1 || status=$?
  elapsed=$(( $(date +%s) - started ))

  runs=$(stat_of number_of_executed_units "$log")
  rate=$(stat_of average_exec_per_sec "$log")
  added=$(stat_of new_units_added "$log")
  result="ok"
  mkdir -p "fuzz/regressions/$target"
  kept=0
  for artifact in "$artifacts"/crash-* "$artifacts"/timeout-* "$artifacts"/oom-* "$artifacts"/leak-*; do
    [ -e "$artifact" ] || continue
    if [ ! -e "fuzz/regressions/$target/$(basename "$artifact")" ]; then
      cp "$artifact" "fuzz/regressions/$target/"
      kept=$((kept + 1))
    fi
  done
  if [ "$status" -ne 0 ] || [ "$(ls "$artifacts" | wc -l)" -gt "$before" ]; then
    result="FOUND (exit $status, $kept new input(s) in fuzz/regressions/$target/, log $log)"
    found_any=1
    grep -m 3 -E '^==[0-9]+==ERROR|==hueloom-fuzz==|runtime error|SUMMARY' "$log" | sed 's/^/    /' || true
  fi
  summary+=("$(printf '%-13s %6ss %12s runs %9s exec/s %6s new units  %s' \
    "$target" "$elapsed" "$runs" "$rate" "$added" "$result")")
done

echo
echo "fuzz summary (${seconds}s per target):"
printf '  %s\n' "${summary[@]}"
exit "$found_any"
