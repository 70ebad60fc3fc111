#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the whole test suite.
#   scripts/test.sh             optimised build in build/
#   scripts/test.sh --sanitize  AddressSanitizer + UndefinedBehaviorSanitizer
#                               build in build-asan/
#   scripts/test.sh --thread    the concurrency tests under ThreadSanitizer,
#                               build in build-tsan/
#   scripts/test.sh --release   the release configuration a user builds,
#                               build in build-release/
# Warnings are errors in all of them.
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=build
options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
targets=()
tests=()
if [[ ${1:-} == --sanitize ]]; then
  build_dir=build-asan
  options=(-DCMAKE_BUILD_TYPE=Debug -DQUVRA_SANITIZE=ON -DQUVRA_BUILD_BENCH=OFF)
  export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=0}
  export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
elif [[ ${1:-} == --thread ]]; then
  build_dir=build-tsan
  options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUVRA_TSAN=ON -DQUVRA_BUILD_BENCH=OFF -DQUVRA_BUILD_EXAMPLES=OFF)
  targets=(--target quvra_concurrency_tests)
  tests=(-R '^Concurrent')
elif [[ ${1:-} == --release ]]; then
  build_dir=build-release
  options=(-DCMAKE_BUILD_TYPE=Release)
fi

bash scripts/setup.sh
cmake -S . -B "$build_dir" -G Ninja "${options[@]}" -DQUVRA_WERROR=ON >/dev/null
cmake --build "$build_dir" "${targets[@]}"
ctest --test-dir "$build_dir" --output-on-failure -j "$(nproc)" "${tests[@]}"
