#!/usr/bin/env bash
# Formatting and static checks over our own sources.
# usage: scripts/lint.sh format              complain about files that clang-format would change
#        scripts/lint.sh rewrite             change them
#        scripts/lint.sh tidy BUILD [JOBS]   clang-tidy, with the compile commands of BUILD; pyflakes
set -euo pipefail
cd "$(dirname "$0")/.."

sources() { # sources EXTENSION...
    local extension
    for extension in "$@"; do
        find src platform tools tests bench -type f -name "*.$extension"
    done | sort
}

python=(scripts/mutate)
layOutPython=(black --quiet --line-length 120)

case ${1:-} in
    format)
        if ! sources h cpp | xargs -r clang-format --dry-run --Werror --ferror-limit=1 ||
            ! "${layOutPython[@]}" --diff --check "${python[@]}"; then
            echo "lint: files above are not laid out as .clang-format says; 'make format' does it." >&2
            exit 1
        fi
        ;;
    rewrite)
        sources h cpp | xargs -r clang-format -i
        "${layOutPython[@]}" "${python[@]}"
        ;;
    tidy)
        pyflakes3 "${python[@]}"
        build=${2:?the build folder whose compile commands are to be used}
        export build
        checkOne() {
            local report
            if ! report=$(clang-tidy -p "$build" --quiet "$1" 2>/dev/null); then
                printf '%s\n' "$report"
                return 1
            fi
        }
        export -f checkOne
        # Only files that this build compiles: a source without a compile command cannot be judged.
        if ! sources cpp | while read -r file; do
            grep -qF "\"file\": \"$PWD/$file\"" "$build/compile_commands.json" && echo "$file"
        done | xargs -r -P "${3:-2}" -I{} bash -c 'checkOne {}'; then
            echo "lint: clang-tidy has findings (above). Mend them, or silence one with a reason:" >&2
            echo "      // NOLINTNEXTLINE(check-name): why it is right here" >&2
            exit 1
        fi
        ;;
    *)
        sed -n '2,5s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
esac
