#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each one briefly:
# fuzz.sh [SECONDS_EACH]. A crash fails the run and leaves its input in build/fuzz/crashes.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-15}
cmake --preset fuzz > /dev/null
cmake --build --preset fuzz
mkdir -p build/fuzz/crashes
shopt -s nullglob
for src in fuzz/*.cpp; do
  name=$(basename "$src" .cpp)
  corpus=build/fuzz/corpus/$name
  mkdir -p "$corpus"
  echo "fuzzing $name for ${seconds}s"
  ASAN_OPTIONS=detect_leaks=0 "build/fuzz/$name" "$corpus" -max_total_time="$seconds" \
    -artifact_prefix=build/fuzz/crashes/"$name"- -print_final_stats=0 2>build/fuzz/"$name".log \
    || { tail -40 build/fuzz/"$name".log; echo "fuzz: $name crashed"; exit 1; }
done
