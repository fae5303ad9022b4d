#!/usr/bin/env bash
# Installs what building, testing and running the gallery need on Debian bookworm, when it is
# missing. Safe to run again and again: it installs nothing when everything is there.
set -euo pipefail

packages=(
    g++ cmake ninja-build pkg-config git
    libwxgtk3.2-dev libgtk-3-dev libx11-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xauth clang-format doxygen
    colord-data locales fonts-dejavu-core adwaita-icon-theme
    libopenexr-dev libpng-dev libtiff-dev libstb-dev
    weston dbus python3-gi
)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}" >/dev/null
fi

# Tests of decimal separators need a locale whose separator is a comma.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
    as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8
fi
