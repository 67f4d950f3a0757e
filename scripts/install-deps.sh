#!/usr/bin/env bash
# Installs every Debian 12 package Hueloom needs to build, test, benchmark and fuzz.
# Idempotent: packages already present are skipped, and apt-get update runs at most once.
set -euo pipefail

packages=(
  build-essential cmake pkg-config git
  libcurl4-openssl-dev rapidjson-dev libfmt-dev libsodium-dev libtbb-dev libfpzip-dev libzstd-dev
  libfltk1.3-dev libxcursor-dev libxinerama-dev libcairo2-dev liblcms2-dev
  fonts-dejavu-core
  libopenimageio-dev openimageio-tools
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  libcpp-httplib-dev
  libopencolorio-dev opencolorio-tools
  xvfb xauth xdotool x11-utils openbox imagemagick
  clang libclang-rt-14-dev valgrind
  locales
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: all packages present"
else
  echo "install-deps: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update -qq
  $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# A German locale, so the tests can prove that numbers in LUT and preset files don't follow
# the process locale (hosts do run with LC_NUMERIC=de_DE).
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  echo "install-deps: generating the de_DE.UTF-8 locale"
  $SUDO localedef -i de_DE -f UTF-8 de_DE.UTF-8
fi
