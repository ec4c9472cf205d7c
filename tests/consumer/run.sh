#!/usr/bin/env bash
# Installs a build, builds the consumer against the installed tree alone, and runs it.
# usage: tests/consumer/run.sh BUILD CXX
set -euo pipefail
build=${1:?} compiler=${2:?}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/installed" >/dev/null
cmake -S "$(dirname "$0")" -B "$work/build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_PREFIX_PATH="$work/installed" >"$work/log" || { cat "$work/log"; exit 1; }
cmake --build "$work/build" >"$work/log" || { cat "$work/log"; exit 1; }
"$work/build/radio" | tee "$work/output"
grep -qx 'registered 113000 VornipcAdapter' "$work/output"
grep -qx 'sent 32 bytes of a message' "$work/output"
