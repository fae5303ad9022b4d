#!/usr/bin/env bash
# Builds and runs the gallery. With a display it opens the gallery window; without one (or with
# --screenshots DIR) it writes one PNG per page into DIR (default: screenshots/) and exits.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
source scripts/common.sh

shots=""
if [ "${1:-}" = "--screenshots" ]; then
    shots=${2:?"--screenshots needs a folder"}
elif [ -z "${DISPLAY:-}" ]; then
    shots=screenshots
fi

configure_and_build build -DCMAKE_BUILD_TYPE=RelWithDebInfo
if [ -z "$shots" ]; then
    exec build/examples/gallery/varnel-gallery
fi
on_display build/examples/gallery/varnel-gallery --screenshots "$shots"
echo "Gallery screenshots written to $(cd "$shots" && pwd)"
