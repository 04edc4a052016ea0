#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts the real program with a file on its command line, as a desktop does that opens one: its import has to
# come up, and of a file that is not there a message.
#   given_file_test.sh PROGRAM GEOPACKAGE
set -uo pipefail

. "$(dirname "$0")/own_display.sh"
cp "$2" "$work/given file.gpkg"

failures=0

# comes_up WINDOW ARGUMENT...: a window of this name comes up when the program is started so.
comes_up() {
    local window=$1
    shift
    (cd "$work" && exec "$program" "$@") >"$work/said" 2>&1 &
    local pid=$!
    if timeout 30 xdotool search --sync --onlyvisible --name "^$window$" >/dev/null; then
        echo "ok        $*"
    else
        echo "FAILED    $*: no window $window"
        sed 's/^/          /' "$work/said"
        failures=$((failures + 1))
    fi
    kill "$pid"
    wait "$pid"
}

comes_up 'Import a table' 'given file.gpkg'
comes_up 'Import a table' "file://$work/given%20file.gpkg"
comes_up 'VARN-Tessel' 'no such file.gpkg'
comes_up 'VARN-Tessel .*Version.*' -unknown-option
[ "$failures" -eq 0 ]
