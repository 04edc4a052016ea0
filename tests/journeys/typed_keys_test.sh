#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Types keys into real windows that run into a message box or a file dialog of their own, on a display with a
# window manager, the second key so many milliseconds after the first. The program has to live, and to end only
# when it is told to.
#   typed_keys_test.sh LOADED_PROGRAM
set -uo pipefail

. "$(dirname "$0")/own_display.sh"

failures=0

# acts NAME ITEM CONTROL DELAY XDOTOOL_WORDS...: opens the window, acts upon it, and looks whether it survives.
# @ stands for the delay, + for a click on the control, and CLOSE for the window manager's closing of the window.
acts() {
    local name="$1, $4 ms" item=$2 control=$3 delay pid x y window closes=no words=()
    delay=$(printf '0.%03d' "$4")
    shift 4
    "$program" "$item" "$control" >"$work/place" 2>"$work/said" &
    pid=$!
    for _ in $(seq 200); do [ -s "$work/place" ] && break; sleep 0.05; done
    read -r _ x y <"$work/place"
    for word in "$@"; do
        case $word in
            @) words+=(sleep "$delay") ;;
            +) words+=(mousemove "$x" "$y" click 1) ;;
            CLOSE) closes=yes ;;
            *) words+=("$word") ;;
        esac
    done
    window=$(xdotool getactivewindow)
    xdotool "${words[@]}" sleep 0.3
    [ "$closes" = yes ] && wmctrl -i -c "$window"
    # Whatever came up goes, and then the window.
    xdotool key Escape sleep 0.3 key Escape sleep 0.3
    if [ -s "$work/place" ] && kill -0 "$pid" 2>/dev/null; then
        echo "ok        $name"
    else
        echo "FAILED    $name"
        sed 's/^/          /' "$work/said"
        failures=$((failures + 1))
    fi
    kill "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
}

for delay in 0 10 30 60 90 120; do
    acts 'adjustment: Finished, then Compute' mnuAdjust cmdCompute $delay key alt+f @ key Return
    acts 'rows: Cancel, then Enter' mnuData Option3 $delay + key alt+c @ key Return
    acts 'export: Cancel, then a click on Specify' mnuSave Command1 $delay key alt+c @ +
done
acts 'row statistics: a menu, then the window closes' mnuStat Stats 0 + click 3 CLOSE
[ "$failures" -eq 0 ]
