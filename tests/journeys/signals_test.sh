#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Ends the real program with signals: at rest, and while its exit question is open. It has to end by itself, with
# status 0 and without a word.
#   signals_test.sh PROGRAM
set -uo pipefail

. "$(dirname "$0")/own_display.sh"

failures=0
for signal in TERM INT HUP; do
    for state in at_rest asking; do
        # A shell's background process ignores SIGINT, and the program would keep to that.
        perl -e '$SIG{INT} = "DEFAULT"; exec @ARGV' "$program" >"$work/said" 2>&1 &
        pid=$!
        xdotool search --sync --onlyvisible --name 'VARN-Tessel .*Version' windowactivate --sync >/dev/null
        if [ "$state" = asking ]; then
            xdotool key ctrl+q
            until [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = VARN-Tessel ]; do sleep 0.1; done
        fi
        kill -s "$signal" "$pid"
        (sleep 20 && kill -KILL "$pid") 2>/dev/null &
        alarm=$!
        wait "$pid"
        status=$?
        kill "$alarm" 2>/dev/null
        if [ "$status" -eq 0 ] && [ ! -s "$work/said" ]; then
            echo "ok        SIG$signal $state"
        else
            echo "FAILED    SIG$signal $state: ended with $status"
            sed 's/^/          /' "$work/said"
            failures=$((failures + 1))
        fi
    done
done
[ "$failures" -eq 0 ]
