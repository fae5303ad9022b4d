#!/usr/bin/env bash
# Builds the API reference from the public headers into build/docs/html.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
source scripts/common.sh
cmake -S . -B build -G Ninja >/dev/null
cmake --build build --target docs
echo "API reference: build/docs/html/index.html"
