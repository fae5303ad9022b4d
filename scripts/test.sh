#!/usr/bin/env bash
# Builds the library and runs the whole test suite twice: as released, and with the address and
# undefined-behaviour sanitizers. GUI tests run under Xvfb when there is no display. Exits
# non-zero on any failure, including unformatted code.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
source scripts/common.sh

configure_and_build build -DCMAKE_BUILD_TYPE=RelWithDebInfo
on_display ctest --test-dir build --output-on-failure -j2

configure_and_build build-sanitize -DCMAKE_BUILD_TYPE=Debug -DVARNEL_SANITIZE="address;undefined" \
    -DVARNEL_BUILD_BENCHMARKS=OFF
on_display ctest --test-dir build-sanitize --output-on-failure -j2
