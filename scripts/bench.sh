#!/usr/bin/env bash
# Builds an optimised tree and runs the benchmarks (on a virtual display when there is none).
# Arguments go to Google Benchmark, for example --benchmark_filter=Stack.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
source scripts/common.sh

configure_and_build build-release -DCMAKE_BUILD_TYPE=Release -DVARNEL_BUILD_TESTS=OFF
on_display build-release/bench/varnel-bench "$@"
