#!/usr/bin/env bash
# Installs the built library into a scratch prefix, then builds and runs the
# 15-line host against it twice: through find_package(quvra) and through
# pkg-config.
# usage: install_consumer.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1 src=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null
export LD_LIBRARY_PATH=$work/prefix/lib
sample=$src/examples/data/step_block.stl
expected="20 facets, box (0 0 0) - (60 40 20)"

cmake -S "$src/tests/exports/consumer" -B "$work/consumer" -G Ninja \
  -DCMAKE_PREFIX_PATH="$work/prefix" -DSTL_BOX_SOURCE="$src/examples/stl_box.cpp" >/dev/null
cmake --build "$work/consumer" >/dev/null
by_package=$("$work/consumer/consumer" "$sample")

export PKG_CONFIG_PATH=$work/prefix/lib/pkgconfig
# shellcheck disable=SC2046
c++ -std=c++20 "$src/examples/stl_box.cpp" $(pkg-config --cflags --libs quvra) -o "$work/by_pc"
by_pkg_config=$("$work/by_pc" "$sample")

for got in "$by_package" "$by_pkg_config"; do
  if [[ $got != "$expected" ]]; then
    echo "expected '$expected', got '$got'"
    exit 1
  fi
done
echo "installed library found by find_package and pkg-config"
