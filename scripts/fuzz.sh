#!/usr/bin/env bash
# Builds the libFuzzer targets with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer in build-fuzz/, writes their seed corpora, and
# runs each target for a while. Exits non-zero on the first finding; the
# crashing input is left as build-fuzz/findings/<target>/crash-*.
#   scripts/fuzz.sh [seconds per target, default 60] [target...]
# Installs clang and its runtime libraries when missing (idempotent, as
# scripts/setup.sh).
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true

bash scripts/setup.sh
fuzz_packages=(clang-14 libclang-rt-14-dev)
missing=()
for p in "${fuzz_packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
if ((${#missing[@]})); then
  sudo_cmd=()
  [[ $(id -u) -ne 0 ]] && sudo_cmd=(sudo)
  echo "fuzz: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

build_dir=build-fuzz
CC=clang-14 CXX=clang++-14 cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DQUVRA_SANITIZE=ON -DQUVRA_BUILD_FUZZ=ON -DQUVRA_BUILD_TESTS=OFF -DQUVRA_BUILD_BENCH=OFF >/dev/null
nice -n 10 cmake --build "$build_dir" --target quvra_fuzz_all

seeds=$build_dir/seeds
rm -rf "$seeds"
"$build_dir/fuzz/quvra_fuzz_seeds" "$seeds"
# The interpreter starts from the programs the host's tests keep.
mkdir -p "$seeds/fuzz_nc_program"
cp tests/data/mill/*.ngc tests/data/mill/*.cls "$seeds/fuzz_nc_program/"

targets=("$@")
if ((${#targets[@]} == 0)); then
  mapfile -t targets < <(find "$build_dir/fuzz" -maxdepth 1 -type f -name 'fuzz_*' -perm -u+x -printf '%f\n' | sort)
fi

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
for target in "${targets[@]}"; do
  corpus=$build_dir/corpus/$target
  findings=$build_dir/findings/$target
  mkdir -p "$corpus" "$findings" "$seeds/$target"
  echo "== $target: ${seconds}s =="
  # The corpus grows across runs; the seeds are read, never written.
  "$build_dir/fuzz/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix="$findings/" "$corpus" "$seeds/$target" 2>&1 | grep -v -e '^#[0-9]' -e 'NEW_FUNC' || {
    echo "fuzz: $target found a defect; the input is in $findings/"
    exit 1
  }
done
