#!/usr/bin/env bash
# Builds and runs the image viewer on IMAGE (or on its rendered test scene). Without a display
# (or with --screenshot FILE) it writes a picture of its window with the curve dialog open and
# exits.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
source scripts/common.sh

shot=""
image=""
if [ "${1:-}" = "--screenshot" ]; then
    shot=${2:?"--screenshot needs a file"}
elif [ -n "${1:-}" ]; then
    image=$1
fi
if [ -z "$shot" ] && [ -z "${DISPLAY:-}" ]; then
    shot=viewer.png
fi

configure_and_build build -DCMAKE_BUILD_TYPE=RelWithDebInfo
if [ -z "$shot" ]; then
    exec build/examples/viewer/varnel-viewer ${image:+"$image"}
fi
on_display build/examples/viewer/varnel-viewer ${image:+"$image"} --screenshot "$shot"
echo "Viewer screenshot written to $shot"
