#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the program into a folder and as a Debian package, and checks what a user would get.
#   install_test.sh BUILD_FOLDER SOURCE_FOLDER     (a Release build)
# A check whose tool is missing is left out, and the output says so.
set -uo pipefail
export LC_ALL=C
umask 022

build=$(realpath "$1")
source=$(realpath "$2")
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
chmod 755 "$work"
failures=0

ok() { echo "ok        $*"; }

wrong() {
    echo "FAILED    $*"
    failures=$((failures + 1))
}

# check WHAT COMMAND...: the command has to succeed; what it says is shown when it does not.
check() {
    local what=$1 output
    shift
    if output=$("$@" 2>&1); then
        ok "$what"
    else
        wrong "$what"
        sed 's/^/          /' <<<"$output"
    fi
}

has() {
    command -v "$1" >/dev/null && return 0
    echo "left out  $2: there is no $1 here"
    return 1
}

closing() {
    [ "$failures" -eq 0 ] && exit 0
    echo "$failures of the checks failed"
    exit 1
}

same_lines() { diff <(sort <<<"$1") <(sort <<<"$2"); }

# What both kinds of installation hold, seen from the prefix.
common_files() {
    local number size
    echo bin/varn-tessel
    for number in {101..122}; do echo "share/varn-tessel/helpdocs/hdoc$number.rtf"; done
    (cd "$source" && ls samples/*.dat samples/*.csv samples/*.txt samples/README.md) | sed 's|^|share/doc/varn-tessel/|'
    echo share/applications/varn-tessel.desktop
    echo share/metainfo/io.varn.tessel.metainfo.xml
    echo share/icons/hicolor/scalable/apps/varn-tessel.svg
    for size in 16 24 32 48 64 128 256 512; do
        echo "share/icons/hicolor/${size}x$size/apps/varn-tessel.png"
    done
    echo share/man/man1/varn-tessel.1.gz
}

files_below() { (cd "$1" && find . ! -type d -printf '%P\n'); }

# PNG width and height stand at byte 16, four bytes each, the highest first.
check_icon_sizes() {
    local size found
    for size in 16 24 32 48 64 128 256 512; do
        found=$(od -An -tu1 -j16 -N8 "$1/share/icons/hicolor/${size}x$size/apps/varn-tessel.png" |
            awk '{ print $3 * 256 + $4 "x" $7 * 256 + $8 }')
        [ "$found" = "${size}x$size" ] || { echo "the icon of ${size}x$size is $found"; return 1; }
    done
}

# Everybody may read everything, only the owner may write, and the program alone is executable.
check_permissions() {
    local bad
    bad=$(cd "$1" && find . -mindepth 1 -printf '%y %m %P\n' |
        grep -vE '^d 755 |^f 644 |^f 755 (usr/)?bin/varn-tessel$')
    [ -z "$bad" ] || { echo "$bad"; return 1; }
}

check_same_content() {
    local folder
    for folder in varn-tessel/helpdocs doc/varn-tessel/samples; do
        (cd "$1/share/$folder" && find . -type f -exec cmp {} "$source/${folder##*/}/{}" \;) 2>&1 | grep . && return 1
    done
    return 0
}

check_manual_page() {
    local said
    said=$(man --warnings -E UTF-8 -l -Tutf8 -Z "$1" 2>&1 >/dev/null)
    [ -z "$said" ] || { echo "$said"; return 1; }
}

check_hardening() {
    local elf
    elf=$(readelf -W -h -l -d --dyn-syms "$1")
    grep -q 'Type: *DYN' <<<"$elf" || { echo "not position-independent"; return 1; }
    grep -q 'GNU_RELRO' <<<"$elf" || { echo "no read-only relocations"; return 1; }
    grep -q 'BIND_NOW\|Flags: NOW' <<<"$elf" || { echo "not bound at the start"; return 1; }
    grep -q '__stack_chk_fail' <<<"$elf" || { echo "no stack guard"; return 1; }
    grep -qE '__[a-z]+_chk@' <<<"$elf" || { echo "no call of the C library that is checked"; return 1; }
    grep -q '__glibcxx_assert_fail' <<<"$elf" || { echo "no checks of the C++ library"; return 1; }
    [ "$(uname -m)" != x86_64 ] || [ "$(objdump -d "$1" | grep -c endbr64)" -gt 1000 ] ||
        { echo "branches are not tracked"; return 1; }
}

check_no_build_paths() { ! grep -aqF "$source" "$1" || { echo "the program names $source"; return 1; }; }

# The program runs as somebody who may not write where it is installed, with a home of its own, until it is ended.
check_start() {
    local root=$1 home=$2 status=0 as=()
    mkdir "$home"
    chmod -R a-w "$root"
    if [ "$(id -u)" -eq 0 ]; then
        chown 65534:65534 "$home"
        as=(setpriv --reuid=65534 --regid=65534 --clear-groups)
    fi
    (cd "$home" && exec env -i PATH=/usr/bin:/bin HOME="$home" XDG_RUNTIME_DIR="$home" QT_QPA_PLATFORM=offscreen \
        LD_DEBUG=libs LD_DEBUG_OUTPUT="$home/libraries" "${as[@]}" timeout 3 "$root/bin/varn-tessel") >"$work/said" 2>&1 || status=$?
    cat "$work/said"
    [ "$status" -eq 124 ] || { echo "it ended by itself with $status"; return 1; }
    grep -iE 'error|warning|cannot|could not|failed' "$work/said" && return 1
    [ -d "$home/.local/share/varn-tessel" ] || { echo "it has made no folder to write in"; return 1; }
}

# PROJ brings more than thirty libraries: a start waits for none of them.
check_libraries() {
    grep -qF libQt6Widgets "$1"/libraries.* || { echo "which libraries were looked for is not known"; return 1; }
    ! grep -F libproj "$1"/libraries.*
}

echo "building what is installed"
cmake --build "$build" --target varn-tessel packaging_files >"$work/build.log" 2>&1 || {
    tail -40 "$work/build.log"
    wrong "the build"
    closing
}

prefix=$work/plain
check "installs into a folder" cmake --install "$build" --prefix "$prefix"
check "holds exactly what it should" same_lines "$(files_below "$prefix")" "$(common_files
    printf 'share/doc/varn-tessel/%s\n' LICENSE THIRD-PARTY.md)"
check "has the help documents and samples unchanged" check_same_content "$prefix"
check "has icons of the sizes that their folders say" check_icon_sizes "$prefix"
check "has sensible permissions" check_permissions "$prefix"
check "has no path of this machine in the program" check_no_build_paths "$prefix/bin/varn-tessel"
if has desktop-file-validate "the desktop entry"; then
    check "has a valid desktop entry" desktop-file-validate "$prefix/share/applications/varn-tessel.desktop"
fi
if has appstreamcli "the AppStream description"; then
    check "has a valid AppStream description" appstreamcli validate --no-net \
        "$prefix/share/metainfo/io.varn.tessel.metainfo.xml"
fi
if has man "the manual page"; then
    check "has a manual page without faults" check_manual_page "$prefix/share/man/man1/varn-tessel.1.gz"
fi
check "starts from the folder, which it may not write" check_start "$prefix" "$work/home1"
check "starts without the library of coordinate systems" check_libraries "$work/home1"

has dpkg-shlibdeps "the Debian package" && has dpkg-deb "the Debian package" && has file "the Debian package" || closing
# The same sources make the same bytes, whenever and wherever the package is made.
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l "$source/packaging/debian/changelog" -S Timestamp)
export SOURCE_DATE_EPOCH
check "makes a Debian package" cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/cpack"
sleep 2 # beyond the grain of a file's time
check "makes it again elsewhere" cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/elsewhere/cpack"
check "makes the same bytes twice" cmp "$work"/cpack/*.deb "$work"/elsewhere/cpack/*.deb
deb=$(find "$work/cpack" -maxdepth 1 -name 'varn-tessel_*.deb')
[ -n "$deb" ] || closing
root=$work/root
check "unpacks" dpkg-deb -x "$deb" "$root"
chmod 755 "$root"
check "holds exactly what it should as a package" same_lines "$(files_below "$root")" "$( (common_files
    printf 'share/doc/varn-tessel/%s\n' THIRD-PARTY.md changelog.Debian.gz changelog.gz copyright
    echo share/lintian/overrides/varn-tessel) | sed 's|^|usr/|')"
check "has sensible permissions as a package" check_permissions "$root"
check "belongs to the system alone" test -z "$(dpkg-deb -c "$deb" | grep -v ' root/root ')"
check "depends on the libraries that it uses" test 3 = "$(dpkg-deb -f "$deb" Depends | tr ',' '\n' |
    grep -cE '^ *((libqt6widgets6|libc6) \(>= .*|libproj[0-9]+)$')"
if has readelf "the compiler's guards"; then
    check "has the compiler's guards on" check_hardening "$root/usr/bin/varn-tessel"
    check "has no symbols that only a debugger reads" test -z "$(readelf -W -S "$root/usr/bin/varn-tessel" | grep -F .symtab)"
fi
if has lintian "lintian"; then
    check "passes lintian without error, warning or remark" lintian --allow-root --fail-on error,warning,info \
        --display-info "$deb"
fi
check "starts from where the package was unpacked" check_start "$root/usr" "$work/home2"
closing
