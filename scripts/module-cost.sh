#!/usr/bin/env bash
# What the module costs a radio: size of its stripped library, and what of it lies in memory once it has served a node.
# usage: scripts/module-cost.sh [BIN-FOLDER] [STRIP] [SIZE]     default: the optimised build of this machine, made if need be
set -euo pipefail
cd "$(dirname "$0")/.."
bin=${1:-build/release/bin} strip=${2:-strip} size=${3:-size}
if (($# == 0)); then
    cmake --preset release >/dev/null
    cmake --build --preset release -- --quiet >&2
elif [[ ! -e $bin/libVornipcAdapter.so ]]; then
    echo "module-cost: there is no $bin/libVornipcAdapter.so; name the folder 'bin' of a build" >&2
    exit 2
fi
work=$(mktemp -d)
unit=
trap '[[ -z $unit ]] || kill "$unit" 2>/dev/null; rm -rf "$work"' EXIT
"$strip" -o "$work/module.so" "$bin/libVornipcAdapter.so"
echo "stripped library: $(stat -c %s "$work/module.so") bytes"
"$size" "$work/module.so" | awk 'NR == 2 { printf "code and constants %d, initialised data %d, zeroed data %d bytes\n", $1, $2, $3 }'
[[ -x $bin/radiounit && -x $bin/nodectl ]] && "$bin/nodectl" --help >/dev/null 2>&1 || exit 0 # built for another machine

"$bin/radiounit" --link 127.0.0.1:0 --control none --ready-file "$work/ready" 2>/dev/null &
unit=$!
until [[ -s $work/ready ]]; do kill -0 "$unit"; sleep 0.05; done
"$bin/nodectl" --unit "$(jq -r .link "$work/ready")" --json bringup >/dev/null
awk '/^[0-9a-f]+-/ { ours = /libVornipcAdapter.so/ }
     ours && /^Rss:/ { resident += $2 }
     ours && /^Anonymous:/ { own += $2 }
     END { printf "in memory after a bring-up: %d kB of the library, of which %d kB written to\n", resident, own }' \
    "/proc/$unit/smaps"
