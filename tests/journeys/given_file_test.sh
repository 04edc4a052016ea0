#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts the real program with a file on its command line, as a desktop does that opens one: its import has to
# come up, and of a file that is not there a message.
#   given_file_test.sh PROGRAM GEOPACKAGE
set -uo pipefail

if [ -z "${GIVEN_FILE_DISPLAY:-}" ]; then
    GIVEN_FILE_DISPLAY=1 exec xvfb-run --auto-servernum --server-args='-screen 0 1280x1024x24' "$0" "$@"
fi
program=$(realpath "$1")
work=$(mktemp -d)
cp "$2" "$work/given file.gpkg"
export HOME=$work XDG_CONFIG_HOME=$work XDG_RUNTIME_DIR=$work QT_QPA_PLATFORM=xcb
chmod 700 "$work"
openbox >"$work/openbox" 2>&1 &
trap 'kill %1 2>/dev/null; rm -rf "$work"' EXIT
until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 0x; do sleep 0.1; done

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
