#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts the real program on machines that are unlike a developer's. Each time it has to stay up until it is
# ended, without a word of complaint.
#   odd_starts_test.sh PROGRAM HELP_FOLDER LANGUAGES_FOLDER     (LANGUAGES_FOLDER has de_DE.UTF-8 and ar_EG.UTF-8)
set -uo pipefail
umask 022

program=$(realpath "$1")
help=$(realpath "$2")
work=$(mktemp -d)
trap 'chmod -R u+rwX "$work"; rm -rf "$work"' EXIT
chmod 755 "$work"
cp -r "$3" "$work/languages"

mkdir -m 700 "$work/run"
as=()
if [ "$(id -u)" -eq 0 ]; then
    chown 65534:65534 "$work/run"
    as=(setpriv --reuid=65534 --regid=65534 --clear-groups)
fi

# machine NAME: a folder with the program and its help documents, and a home.
machine() {
    mkdir "$work/$1" "$work/$1/program" "$work/$1/home"
    cp "$program" "$work/$1/program/varn-tessel"
    cp -r "$help" "$work/$1/program/helpdocs"
    chmod 777 "$work/$1/home"
}

# start NAME [VARIABLE=VALUE...]: begins to run the program of this machine as a user who may not write there.
names=()
start() {
    local name=$1
    shift
    names+=("$name")
    chmod a-w "$work/$name/program"
    (cd / && "${as[@]}" env -u DISPLAY -u WAYLAND_DISPLAY -u LC_ALL -u LANG -u LANGUAGE HOME="$work/$name/home" \
        XDG_RUNTIME_DIR="$work/run" QT_QPA_PLATFORM=offscreen "$@" \
        timeout 4 "$work/$name/program/varn-tessel" >"$work/$name/said" 2>&1
    echo $? >"$work/$name/status") &
}

machine ordinary && start ordinary
machine german && start german LOCPATH="$work/languages" LC_ALL=de_DE.UTF-8 LANGUAGE=de
machine egyptian && start egyptian LOCPATH="$work/languages" LC_ALL=ar_EG.UTF-8 LANGUAGE=ar
machine unknown_language && start unknown_language LC_ALL=xx_XX.UTF-8
machine without_home && start without_home env -u HOME
machine with_a_home_that_is_gone && rmdir "$work/with_a_home_that_is_gone/home" && start with_a_home_that_is_gone
machine scaled_by_one_and_a_half && start scaled_by_one_and_a_half QT_SCALE_FACTOR=1.5
machine scaled_by_three && start scaled_by_three QT_SCALE_FACTOR=3
machine without_help && rm -r "$work/without_help/program/helpdocs" && start without_help
machine with_settings_that_nobody_may_read
echo '1,/usr/bin/gedit,a,b,c,2' >"$work/with_settings_that_nobody_may_read/program/VARN_te_fio_info.dat"
chmod 0 "$work/with_settings_that_nobody_may_read/program/VARN_te_fio_info.dat"
start with_settings_that_nobody_may_read
machine with_a_pipe_for_settings
mkfifo "$work/with_a_pipe_for_settings/program/VARN_te_fio_info.dat"
start with_a_pipe_for_settings
machine with_a_folder_for_settings
mkdir "$work/with_a_folder_for_settings/program/VARN_te_fio_info.dat"
start with_a_folder_for_settings
machine with_settings_of_a_gigabyte
truncate -s 1G "$work/with_settings_of_a_gigabyte/program/VARN_te_fio_info.dat"
start with_settings_of_a_gigabyte

# What is not Unicode in its folder's name: an installed program makes its user's folder when it starts.
foreign=$(printf 'gel\344nde')
mkdir -p "$work/$foreign/program" "$work/$foreign/home"
cp "$program" "$work/$foreign/program/varn-tessel"
mkdir "$work/$foreign/share" && cp -r "$help" "$work/$foreign/share/varn-tessel"
chmod 777 "$work/$foreign/home"
start "$foreign"
wait

failures=0
if [ ! -d "$work/$foreign/home/.local/share/varn-tessel" ]; then
    echo "FAILED    in a folder whose name is not Unicode the installed program made no folder for its user"
    failures=1
fi
for name in "${names[@]}"; do
    status=$(cat "$work/$name/status")
    complaints=$(grep -iE 'error|warning|cannot|could not|failed' "$work/$name/said")
    if [ "$status" -eq 124 ] && [ -z "$complaints" ]; then
        echo "ok        $name"
    else
        echo "FAILED    $name: ended with $status (124 is: ended by this test) and said:"
        sed 's/^/          /' "$work/$name/said"
        failures=$((failures + 1))
    fi
done
[ "$failures" -eq 0 ]
