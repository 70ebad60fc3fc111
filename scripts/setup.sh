#!/usr/bin/env bash
# Installs every Debian package the project needs to build, test and benchmark.
# Idempotent: packages already present are left alone, and apt is not touched
# at all when nothing is missing. Run as root (or through sudo).
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config ccache git
  libboost-dev libgmp-dev
  libfreetype-dev fonts-dejavu-core
  libegl-dev libgl-dev libegl-mesa0 libgl1-mesa-dri libx11-dev xvfb
  python3 python3-glad
  libgtest-dev libbenchmark-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if ((${#missing[@]} == 0)); then
  exit 0
fi

sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then
  sudo_cmd=(sudo)
fi

echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
