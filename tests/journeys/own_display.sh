# SPDX-License-Identifier: GPL-3.0-or-later
# Sourced by tests that start the real program PROGRAM, their first argument: they go on in a virtual display of
# their own with a window manager, with $program and a folder $work that is the user's home and goes when they end.
if [ -z "${TEST_HAS_OWN_DISPLAY:-}" ]; then
    TEST_HAS_OWN_DISPLAY=1 exec xvfb-run --auto-servernum --server-args='-screen 0 1280x1024x24' "$0" "$@"
fi
program=$(realpath "$1")
work=$(mktemp -d)
export HOME=$work XDG_CONFIG_HOME=$work XDG_RUNTIME_DIR=$work QT_QPA_PLATFORM=xcb
chmod 700 "$work"
openbox >"$work/openbox" 2>&1 &
trap 'kill %1 2>/dev/null; rm -rf "$work"' EXIT
until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 0x; do sleep 0.1; done
