#!/usr/bin/env bash
# The main job: installs what is missing, builds the library and its hosts,
# and runs the demo host on the sample part.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUVRA_WERROR=ON >/dev/null
cmake --build build --target quvra-mill
build/examples/quvra-mill/quvra-mill
