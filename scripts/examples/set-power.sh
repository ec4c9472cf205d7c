#!/usr/bin/env bash
# Sets the output power of a radio channel and checks that the radio has taken it.
# usage: scripts/examples/set-power.sh [UNIT] [CHANNEL] [MAX-DBM]    (a unit that 'nodectl bringup' has put into service)
set -euo pipefail
unit=${1:-127.0.0.1:23043} ct=${2:-1} dbm=${3:-20}
node() { "${NODECTL:-build/bin/nodectl}" --unit "$unit" --json send "$@" --ct "$ct"; }
settings=$(jq -nc --argjson max "$dbm" '{setRfPower: {RfSelectedMaxOutputPower: $max, RfInputPowerThreshold: -60}}')
refused=$(node SetRfPowerReqIPC --seq 1 --body "$settings" | jq .data.setRes)
((refused == 0)) || { echo "channel $ct refused $dbm dBm" >&2; exit 1; }
power=$(node GetRfPowerReqIPC --seq 2 | jq .data.getRfPower.RfCurrentOutputPower)
((power <= dbm)) && echo "channel $ct transmits $power dBm, $dbm dBm are allowed"
