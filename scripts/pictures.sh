#!/bin/bash
# Makes the README's pictures anew: each screen of the product, by script, on made-up calls that end now.
set -eu -o pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
programs=${1:-build/release/bin}
pictures=$PWD/docs/pictures
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT

# pictureOf NAME COMMAND...: what the screen shows after the commands.
pictureOf() {
    local name=$1
    shift
    printf '%s\n' "$@" "picture $pictures/$name.png" |
        "$programs/phone" --data "$data" --scale 1 --script -
}

"$programs/quorvelctl" --data "$data" generate --calls 2000 --seed 7 >/dev/null
pictureOf recents
pictureOf search 'search "so"'
pictureOf delete 'tap right' 'tap left'
pictureOf contact 'tap detail 0'
pictureOf history 'tap detail 0' 'tap "Call History"'
pictureOf calling 'set isCallOnTap_Call on' 'notify QuorvelAlertSettingsChanged' 'tap row 0'
"$programs/quorvelctl" --data "$data" set isCallOnTap_Call off >/dev/null
"$programs/quorvelctl" --data "$data" set isGroupByDate on >/dev/null
pictureOf days
pictureOf day 'tap row 0'
"$programs/quorvelctl" --data "$data" set isGroupByDate off >/dev/null
printf 'date,address,kind,duration\n%s,+493055510006,missed,0\n' "$(date +%s)" >"$data/unknown.csv"
"$programs/quorvelctl" --data "$data" import "$data/unknown.csv" >/dev/null
pictureOf unknown 'tap detail 0'
