#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for SECONDS (default 30), starting from
# the seed corpus in fuzz/corpus/. New inputs go to build-fuzz/corpus/, never into the tree.
#   scripts/fuzz.sh [SECONDS]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
if ! dpkg-query -W -f='${Status}' clang-14 libclang-rt-14-dev 2>/dev/null | grep -q "install ok installed"; then
    if [ "$(id -u)" -eq 0 ]; then apt-get install -y -qq clang-14 libclang-rt-14-dev >/dev/null;
    else sudo apt-get install -y -qq clang-14 libclang-rt-14-dev >/dev/null; fi
fi
seconds=${1:-30}

CC=clang-14 CXX=clang++-14 cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DVARNEL_BUILD_FUZZERS=ON -DVARNEL_BUILD_TESTS=OFF -DVARNEL_BUILD_GALLERY=OFF \
    -DVARNEL_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build build-fuzz --target fuzz_acv

for target in acv; do
    mkdir -p "build-fuzz/corpus/$target"
    "build-fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -print_final_stats=1 \
        "build-fuzz/corpus/$target" "fuzz/corpus/$target"
done
