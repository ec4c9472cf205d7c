#!/usr/bin/env bash
# The module's border: what it shows and what it wants from the process that loads it.
# usage: scripts/check-module.sh exports MODULE
#        scripts/check-module.sh imports MODULE KEPT-LIST [--update]
# NM is the nm to use (cross builds have their own); WORD_BITS is 32 or 64.
set -euo pipefail
export LC_ALL=C
nm=${NM:-nm}

# The only undefined symbols without a version are those of libraries that the module is not linked
# with, that is the platform's; the compilers' own weak hooks are left out by name.
platformSymbols() {
    "$nm" -D -C --undefined-only "$1" | sed -E 's/^ *[Uvw] //' |
        grep -vE '@(GLIBC|GLIBCXX|CXXABI|GCC)_' | grep -vE '^(__cxa_finalize|__gmon_start__|_ITM_)' | sort -u
}

# The list is kept for 64 bits. On 32 bits std::size_t is another type, so that the two unsigned ones
# cannot be told apart.
forThisWordSize() {
    if [[ ${WORD_BITS:-64} == 32 ]]; then sed -E 's/unsigned (int|long)/unsigned/g'; else cat; fi | sort -u
}

case ${1:-} in
    exports)
        exported=$("$nm" -D -C --defined-only "$2" | sed -E 's/^[0-9a-f]+ . //')
        if [[ $exported != createVornipcAdapter ]]; then
            echo "The module must export createVornipcAdapter and nothing else. It exports:" >&2
            echo "$exported" >&2
            exit 1
        fi
        ;;
    imports)
        if [[ ${4:-} == --update ]]; then
            {
                echo "# What the module wants from the process that loads it: the platform's symbols, nothing else."
                echo "# Compared with the built module by a test. After an intended change:"
                echo "#     scripts/check-module.sh imports build/bin/libVornipcAdapter.so $3 --update"
                platformSymbols "$2"
            } >"$3"
        elif ! diff -u --label "kept list" <(grep -vE '^(#|$)' "$3" | forThisWordSize) \
            --label "the module" <(platformSymbols "$2" | forThisWordSize); then
            echo "The module's undefined symbols differ from $3 (+ is new, - is gone)." >&2
            echo "A new one that is not the platform's must go; for an intended change see that file's first lines." >&2
            exit 1
        fi
        ;;
    *)
        sed -n '3,4s/^# //p' "$0" >&2
        exit 2
        ;;
esac
