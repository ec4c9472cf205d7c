#!/usr/bin/env bash
# A node brings up a radio unit over the real link, through the real module; both sides' messages are shown.
# usage: scripts/demo.sh BIN-FOLDER
set -euo pipefail
bin=${1:?usage: scripts/demo.sh BIN-FOLDER}

work=$(mktemp -d)
unit=
cleanUp() {
    if [[ -n $unit ]]; then
        kill -TERM "$unit" 2>/dev/null || true
        wait "$unit" 2>/dev/null || true
    fi
    rm -rf "$work"
}
trap cleanUp EXIT
trap 'exit 130' INT TERM

bold= faint= plain=
if [[ -t 1 ]]; then
    bold=$'\e[1m' faint=$'\e[2m' plain=$'\e[0m'
fi
title() { printf '\n%s== %s%s\n' "$bold" "$*" "$plain"; }
told() { printf '%s$ %s%s\n' "$faint" "$*" "$plain"; }
fail() {
    echo "demo: $*" >&2
    [[ -s $work/unit.log ]] && { echo "demo: the unit's last lines:" >&2; tail -n 20 "$work/unit.log" >&2; }
    exit 1
}

title "The radio unit starts, on free ports of this machine"
told radiounit --link 127.0.0.1:0 --control 127.0.0.1:0 --ready-file ready.json
"$bin/radiounit" --link 127.0.0.1:0 --control 127.0.0.1:0 --ready-file "$work/ready.json" \
    </dev/null >"$work/unit.log" 2>&1 &
unit=$!

# The ready file appears once the unit serves; a unit that ends before that has said why.
deadline=$((SECONDS + 20))
until [[ -s $work/ready.json ]]; do
    kill -0 "$unit" 2>/dev/null || fail "the unit ended before it was ready."
    ((SECONDS < deadline)) || fail "the unit was not ready within 20 s."
    sleep 0.05
done
jq -c . "$work/ready.json"
link=$(jq -r .link "$work/ready.json")
control=http://$(jq -r .control "$work/ready.json")

ask() { curl --silent --show-error --fail-with-body --max-time 10 "$@"; }
node() {
    told nodectl --unit "$link" "$@"
    "$bin/nodectl" --unit "$link" "$@" || fail "nodectl $1 ended with $?."
}

ask -X PUT -d '{"tag":"*","level":6}' "$control/api/trace/level" >/dev/null || fail "the control interface refused."
start=$(ask "$control/api/trace?since=0" | jq .next)

title "The node brings the unit up: self test, software status, modem unit in service"
node bringup

title "What the module knows now"
told curl "$control/api/module"
ask "$control/api/module" | jq .

title "A few requests"
node send RAUStatusReqIPC --ct 2 --seq 7
node send ADSClosePciReqIPC --ct 1 --seq 8

title "The same conversation as the unit saw it (GET /api/trace, level 6)"
# A message in a line's text is JSON over many lines; here one line is enough.
ask "$control/api/trace?since=$start" | jq -r '
    def oneLine: (index("{") // length) as $at
        | .[:$at] as $lead
        | (.[$at:] | try (fromjson | "\(.name) \(.data | tojson)") catch null) as $message
        | if $message then $lead + $message else . end;
    .lines[] | select(.tag | startswith("KRO.VORNIPC"))
    | "\(.time[11:23]) \(.level) \(.method): \(.text | oneLine)"'
echo "Whole, as the unit composed them, the messages stand in the trace's own JSON; see the README for the request."

title "The unit stops when asked"
told curl -X POST "$control/api/shutdown"
ask -X POST "$control/api/shutdown" >/dev/null || fail "the unit refused to stop."
status=0
wait "$unit" || status=$?
unit=
((status == 0)) || fail "the unit ended with $status instead of 0."
echo "Stopped in order, exit status 0."
