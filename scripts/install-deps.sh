#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the program need, when
# any of them is missing. Safe to run again.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config git clang libclang-rt-14-dev ccache
  qt6-base-dev qt6-svg-dev libgl-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libcurl4-openssl-dev zlib1g-dev nlohmann-json3-dev
  fonts-dejavu-core fonts-liberation
  xvfb xauth
  wine wine64 g++-mingw-w64-x86-64
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
