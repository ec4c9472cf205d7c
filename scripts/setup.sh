#!/usr/bin/env bash
# Installs the packages that a part of the work needs, and nothing that is there already.
# usage: scripts/setup.sh [base] [lint] [docs] [arm]     (default: base)
set -euo pipefail

declare -A packages=(
    # build, demo, test, bench
    [base]="cmake make ninja-build g++ pkg-config binutils ca-certificates
        libasio-dev libcpp-httplib-dev nlohmann-json3-dev libcli11-dev libfmt-dev libcereal-dev rapidjson-dev
        libgtest-dev libgmock-dev libbenchmark-dev curl jq"
    # the second compiler, the sanitizers' run-time for it, formatting and static checks, faults put in on purpose; a
    # cache, since whoever builds all of that builds it often
    [lint]="clang clang-tidy clang-format libclang-rt-14-dev ccache python3 black pyflakes3"
    # the pages of `make docs`
    [docs]="doxygen"
    # 32-bit ARM: cross compiler, emulator, GoogleTest as sources
    [arm]="g++-arm-linux-gnueabihf libc6-dev-armhf-cross qemu-user googletest"
)

missing=()
for part in "${@:-base}"; do
    if [[ -z ${packages[$part]:-} ]]; then
        echo "setup: no part '$part'; there are: ${!packages[*]}" >&2
        exit 2
    fi
    for package in ${packages[$part]}; do
        status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
        [[ $status == installed ]] || missing+=("$package")
    done
done
if ((${#missing[@]} == 0)); then
    exit 0
fi

if ! command -v apt-get >/dev/null; then
    echo "setup: apt-get not found; install by hand what corresponds to: ${missing[*]}" >&2
    exit 1
fi
asRoot=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "setup: packages are missing and this is not root. As root run:" >&2
        echo "    apt-get update && apt-get install -y ${missing[*]}" >&2
        exit 1
    fi
    asRoot=(sudo)
fi

echo "setup: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${asRoot[@]}" apt-get update &&
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1 </dev/null; then
    tail -n 20 "$log" >&2
    echo "setup: apt-get failed (its last lines are above). Check the network and the package sources, then run" >&2
    echo "'make setup' again." >&2
    exit 1
fi
