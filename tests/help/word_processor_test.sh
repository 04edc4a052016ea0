#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Opens every help document in LibreOffice and looks for every word of its source in what that shows:
#     word_processor_test.sh SOURCE
set -euo pipefail
export LC_ALL=C
source=$1
if ! command -v soffice >/dev/null; then
    echo "left out: LibreOffice is not installed"
    exit 0
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

timeout 240 soffice "-env:UserInstallation=file://$work/profile" --headless --convert-to 'txt:Text (encoded):UTF8' \
    --outdir "$work" "$source"/helpdocs/hdoc*.rtf >"$work/log" 2>&1 ||
    { cat "$work/log"; exit 1; }

# The words of a source as a reader sees them, one a line; marks of lists are left out on both sides.
words_of_source() {
    sed -E '/^```/,/^```/!{/^\|[-:|]+\|$/d; s/^(#+|-|[0-9]+\.) //; /^\|/s/\|/ /g; s/\*\*//g; s/`//g}; /^```/d' "$1"
}
# LibreOffice writes blanks in a row as narrow ones.
one_a_line() { sed -E 's/\xc2\xa0|\xe2\x80\x86/ /g' | tr -s ' \t\r\n' '\n' | grep -vE '^(-|•|[0-9]+\.)?$'; }

missing=0
for document in "$source"/helpdocs/hdoc*.rtf; do
    name=$(basename "$document" .rtf)
    if [ ! -s "$work/$name.txt" ]; then
        echo "$name: LibreOffice does not open it"
        missing=1
    elif ! diff <(words_of_source "$source/docs/help/$name.md" | one_a_line | sort) \
                <(sed 's/^\xef\xbb\xbf//' "$work/$name.txt" | one_a_line | sort) >"$work/diff"; then
        echo "$name: other words in LibreOffice (>) than in the source (<)"
        head -n 20 "$work/diff"
        missing=1
    fi
done
[ "$missing" = 0 ] && echo "16 documents looked at"
exit "$missing"
