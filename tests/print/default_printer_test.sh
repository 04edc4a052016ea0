#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Prints through a real print system: starts a CUPS of its own with a PDF printer as the default printer, prints
# three windows at 300, 600 and 1200 dpi, and compares what arrives.
#     default_printer_test.sh PRINT_PAGES SAMPLES
set -euo pipefail
print_pages=$1 samples=$2

leave_out() {
    echo "left out: $*"
    exit 0
}
fail() {
    echo "failed: $*"
    [ -f "$work/log/error_log" ] && tail -n 30 "$work/log/error_log"
    exit 1
}

PATH=$PATH:/usr/sbin:/sbin
ppd=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd
for tool in cupsd lpadmin lpstat gs pdfinfo; do
    command -v "$tool" >/dev/null || leave_out "$tool is not installed"
done
[ -x /usr/lib/cups/backend/cups-pdf ] && [ -f "$ppd" ] || leave_out "printer-driver-cups-pdf is not installed"
[ "$(id -u)" = 0 ] && [ -w /etc/cups ] || leave_out "a print system of one's own needs root"

work=$(mktemp -d -t tessel-print.XXXXXX)
cups=
# The printer's own settings are looked for here, wherever the print system has its own.
settings=/etc/cups/cups-pdf-$(basename "$work").conf
cleanup() {
    if [ -n "$cups" ]; then
        kill "$cups" 2>/dev/null || true
        wait "$cups" 2>/dev/null || true
    fi
    rm -rf "$work" "$settings"
}
trap cleanup EXIT

start_cups() {
    mkdir -p "$work"/{user,root/ppd,spool/tmp,cache,run/certs,log,pages,pdf-spool}
    chmod 755 "$work"
    chmod 700 "$work/user"
    chmod 777 "$work/pages"
    cat >"$work/root/cups-files.conf" <<EOF
SystemGroup root
ServerRoot $work/root
RequestRoot $work/spool
TempDir $work/spool/tmp
CacheDir $work/cache
StateDir $work/run
ErrorLog $work/log/error_log
AccessLog $work/log/access_log
PageLog $work/log/page_log
Printcap $work/run/printcap
EOF
    cat >"$work/root/cupsd.conf" <<EOF
Listen $work/run/cups.sock
LogLevel info
Browsing Off
DefaultAuthType None
WebInterface No
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
<Limit All>
Order allow,deny
Allow all
</Limit>
</Policy>
EOF
    cat >"$settings" <<EOF
Out $work/pages
AnonDirName $work/pages
Spool $work/pdf-spool
Log $work/log
Label 2
TitlePref 1
Grp root
UserUMask 0000
EOF
    cupsd -f -c "$work/root/cupsd.conf" -s "$work/root/cups-files.conf" >"$work/log/cupsd" 2>&1 &
    cups=$!
    export CUPS_SERVER=$work/run/cups.sock HOME=$work
    for _ in $(seq 100); do
        if lpstat -r 2>/dev/null | grep -q 'scheduler is running'; then return 0; fi
        sleep 0.1
    done
    fail "cupsd does not start: $(cat "$work/log/cupsd")"
}

start_cups
lpadmin -p Paper -E -v "cups-pdf:/$(basename "$work")" -P "$ppd" 2>/dev/null || fail "the PDF printer cannot be set up"
lpadmin -d Paper
QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$work/user "$print_pages" "$samples" 2>"$work/log/program" ||
    fail "$(tail -n 1 "$work/log/program")"

shopt -s nullglob
for _ in $(seq 300); do
    pages=("$work"/pages/*.pdf)
    [ ${#pages[@]} -ge 9 ] && [ -z "$(lpstat -W not-completed 2>/dev/null)" ] && break
    sleep 0.2
done
[ ${#pages[@]} = 9 ] || fail "${#pages[@]} pages have arrived and not 9"

# Left and lower edge, width and height of what is printed, in whole points.
place() {
    gs -q -dNOPAUSE -dBATCH -sDEVICE=bbox "$1" 2>&1 |
        awk '/HiRes/ { printf "%.0f %.0f %.0f %.0f", $2, $3, $4 - $2, $5 - $3 }'
}
# same A B: whether numbers differ by at most two points.
same() { awk -v a="$1" -v b="$2" 'BEGIN {
    n = split(a, x); split(b, y)
    for (i = 1; i <= n; ++i) if (x[i] - y[i] > 2 || y[i] - x[i] > 2) exit 1
    exit n == 0 }'; }

# The three pages of a kind, which were printed at 300, 600 and 1200 dpi. The correlation's corner lies 200
# device units from the page's at every resolution: only its size is the same.
compare() {
    local name=$1 columns=$2 first= page this
    local found=("$work"/pages/*"$name"*.pdf)
    [ ${#found[@]} = 3 ] || fail "${#found[@]} pages of $name and not 3"
    for page in "${found[@]}"; do
        [ "$(pdfinfo "$page" | awk '/^Pages:/ { print $2 }')" = 1 ] || fail "$page is not one page"
        this="$(pdfinfo "$page" | awk '/^Page size:/ { print $3, $5 }') $(place "$page")"
        echo "$name: paper $this"
        first=${first:-$this}
        same "$(cut -d' ' -f"$columns" <<<"$first")" "$(cut -d' ' -f"$columns" <<<"$this")" ||
            fail "$name has not the same size and place at every resolution"
        awk -v a="$this" 'BEGIN { split(a, x); exit !(x[5] > 200 && x[6] > 200) }' || fail "$page is empty"
    done
}
compare Row_Plot 1-6
compare Histogram 1-6
compare Correlation 1,2,5,6
