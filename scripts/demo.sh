#!/usr/bin/env bash
# A working day of a node and its radio unit, over the real link and through the real module: a conversation of messages,
# and beside it what the simulated radio does.
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

bold= faint= yellow= plain=
if [[ -t 1 && -z ${NO_COLOR:-} ]]; then
    bold=$'\e[1m' faint=$'\e[2m' yellow=$'\e[33m' plain=$'\e[0m'
fi
title() { printf '\n%s== %s%s\n' "$bold" "$*" "$plain"; }
told() { printf '%s$ %s%s\n' "$faint" "$*" "$plain"; }
fail() {
    echo "demo: $*" >&2
    [[ -s $work/unit.log ]] && { echo "demo: the unit's last lines:" >&2; tail -n 20 "$work/unit.log" >&2; }
    exit 1
}

# --- the two sides -------------------------------------------------------------------------------------------------

ask() { curl --silent --show-error --fail-with-body --max-time 10 "$@"; }
state() { ask "$control/api/state" | jq -c "$1"; }

# node MESSAGE [OPTIONS]: the node sends it and hears the answer
node() { "$bin/nodectl" --unit "$link" send "$@" --brief || fail "nodectl send $1 ended with $?."; }

# onRadio EVENT-JSON MESSAGE: something happens on the radio, and the node hears this message of it
onRadio() {
    "$bin/nodectl" --unit "$link" monitor --brief --until "$2" --wait 10000 &
    local listener=$! deadline=$((SECONDS + 10))
    until [[ $(ask "$control/api/module" | jq .nodes) == 1 ]]; do
        ((SECONDS < deadline)) || fail "the listening node did not connect within 10 s."
        sleep 0.02
    done
    told "POST /api/events $1"
    ask -X POST -d "$1" "$control/api/events" >/dev/null || fail "the event $1 was refused."
    wait "$listener" || fail "the node has not heard $2."
}

# platform WHAT JQ-FILTER: what the module has called on the platform since the last time
echo 0 >"$work/nextCall"
platform() {
    local calls
    calls=$(ask "$control/api/calls?since=$(<"$work/nextCall")")
    jq .next <<<"$calls" >"$work/nextCall"
    jq -r --arg mark "$yellow   radio: " --arg plain "$plain" ".calls[] | select(.interface != \"ripc\") | select($1)
        | \$mark + .interface + \".\" + .operation + \"(\" + ([.args | to_entries[] | .key + \" \" + (.value | tojson)] | join(\", \"))
          + \")\" + \$plain" <<<"$calls"
}
shows() { printf '%s   radio: %s%s\n' "$yellow" "$*" "$plain"; }

# --- the day -------------------------------------------------------------------------------------------------------

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
ask -X PUT -d '{"tag":"*","level":6}' "$control/api/trace/level" >/dev/null || fail "the control interface refused."

title "Bring-up: the node tests the unit and puts it in service; both radios are detected"
told nodectl bringup
"$bin/nodectl" --unit "$link" bringup || fail "nodectl bringup ended with $?."
told curl "$control/api/module"
ask "$control/api/module" | jq -c .
platform false

title "Power: set for channel 1, and read back"
told nodectl send SetRfPowerReqIPC --ct 1 --brief --body "'{\"setRfPower\": ...}'"
node SetRfPowerReqIPC --ct 1 --body '{"setRfPower":{"RfSelectedMinOutputPower":5,"RfSelectedMaxOutputPower":20,
    "RfAtpcTargetInputPowerFE":-45,"RfInputPowerThreshold":-60}}'
platform true
node GetRfPowerReqIPC --ct 1
node SetRfPowerReqIPC --ct 1 --body '{"setRfPower":{"RfInputPowerThreshold":-29}}'
echo "   (refused: a threshold above -30 dBm)"
platform false

title "Frequency: with a frame format set, a new frequency reconfigures the radio once; the same again does not"
ask -X POST -d '{"event":"setFrameFormat","index":0,"frameId":1,"minAcm":2,"maxAcm":29,"sec":4}' \
    "$control/api/events" >/dev/null || fail "the frame format was refused."
frequency='{"tSetXfRFIFParametersExt":{"RFCurrStepNum":440,"RFCurrStepNumRX":440,"RFTxAdminStatus":2,"RFLoopEnable":3}}'
for try in first second; do
    node SetXfRFIfStatusReqIPC --ct 1 --body "$frequency"
    reconfigured=$(platform '.operation == "criSetRadioChannelNearEnd"')
    echo "${reconfigured:-$(shows "nothing to reconfigure")}"
    [[ $try == first && -n $reconfigured || $try == second && -z $reconfigured ]] ||
        fail "the $try request reconfigured the radio otherwise than it should."
done
shows "frequency of channel 1 is now $(state '.channels."1".frequency')"

title "IF loop on and off: the traffic gate follows"
for loop in 2 3; do
    node SetIfLoopStatusReqIPC --ct 1 --body "{\"eLoop\":$loop}"
    platform '.interface == "ITrafHandler" or .operation == "setIfLoop"'
done

title "A radio is lost, and found again"
onRadio '{"event":"radioDown","ct":2}' RAULostIPC
onRadio '{"event":"radioUp","ct":2}' RauDetected1IPC

title "A fault comes and goes"
onRadio '{"event":"fault","signal":8,"ct":1,"active":true}' SetFaultIPC
onRadio '{"event":"fault","signal":8,"ct":1,"active":false}' SetFaultIPC

title "Protection: asked for, answered; then the radio tells of a switch-over"
node SetActiveRadioReqIPC --ct 1 --body '{"eActTxRadio":2}'
onRadio '{"event":"activeRadioSw","channel":1,"value":2}' NotifyActiveRadioSwIPC

title "Continuous wave on and off, through the PS device"
platform false
for enable in 1 0; do
    node HandleContinuousWaveGroupReqIPC --body "{\"PsSignalHeader\":{\"action\":3},\"ct\":1,\"attrib\":1,\"enable\":$enable}"
    platform true
done

title "The node restarts a radio; it comes back by itself"
"$bin/nodectl" --unit "$link" monitor --brief --until RauDetected1IPC --wait 10000 &
listener=$!
until [[ $(ask "$control/api/module" | jq .nodes) == 1 ]]; do sleep 0.02; done
told nodectl send RAURestartReqIPC --ct 1 --body "'{\"eModuleRestartCommand\":1}'"
"$bin/nodectl" --unit "$link" --json send RAURestartReqIPC --ct 1 --body '{"eModuleRestartCommand":1}' >/dev/null ||
    fail "nodectl send RAURestartReqIPC ended with $?."
wait "$listener" || fail "the radio has not come back."
platform '.operation == "restart" or .operation == "notifyRauRestart"'

title "The first power request once more, as the unit saw it (GET /api/trace, level 6)"
# A message in a line's text is JSON over many lines; here one line is enough.
ask "$control/api/trace?since=0" | jq -r '
    def oneLine: (index("{") // length) as $at
        | .[:$at] as $lead
        | (.[$at:] | try (fromjson | "\(.name) \(.data | tojson)") catch null) as $message
        | if $message then $lead + $message else . end;
    [.lines[] | select(.tag == "KRO.VORNIPC.PC")][:10][]
    | "\(.time[11:23]) \(.level) \(.method): \(.text | oneLine)"' | cut -c 1-160

title "The unit stops when asked"
told curl -X POST "$control/api/shutdown"
ask -X POST "$control/api/shutdown" >/dev/null || fail "the unit refused to stop."
status=0
wait "$unit" || status=$?
unit=
((status == 0)) || fail "the unit ended with $status instead of 0."
echo "Stopped in order, exit status 0."
