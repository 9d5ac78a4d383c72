#!/bin/sh
# Commissions the Boxes of a list: all must answer, then each gets the time server, the time and the project, and is
# rebooted. Ends at the first step that fails on a Box, which boxctl names; it may be run again as it stands.
#
#   commission.sh plant.txt riverside.json 10.0.0.1
#
# plant.txt has a Box a line: its address and, if you like, a name behind it.
set -eu

if [ $# -ne 3 ]; then
    echo "usage: $0 LIST PROJECT.json NTP-SERVER" >&2
    exit 2
fi
list=$1 project=$2 server=$3

boxctl check "$project"
boxctl info "@$list"
boxctl set "@$list" ntp "server=$server"
boxctl set "@$list" time now
boxctl push "$project" "@$list"
boxctl reboot --wait "@$list"
echo "all Boxes of $list run $project"
