#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# whole_numbers_test.sh COMPILER CACHE SOURCES INCLUDE...: no source turns a Double into a whole number but by the
# functions of base/whole_numbers.h. The compiler says what is a Double: in a copy of the sources every cast to
# a whole number is one that refuses them. The folder CACHE holds an empty file for each source that has passed
# with these headers, named by the digest.
set -euo pipefail
compiler=$1
cache=$2
sources=$3
shift 3
mkdir -p "$cache"
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cp -r "$sources" "$copy/src"

whole='(unsigned )?(int|long|short|char)|unsigned|std::(u?int(8|16|32|64)_t|size_t|ptrdiff_t)|q(size|ptrdiff)type|qu?int(8|16|32|64)|SiteIndex'

# Conversions of Qt and of the C library, and casts in the manner of functions.
conversions='\b(qRound|qRound64|qFloor|qCeil|l?lround|l?lrint)\(|\.to(Point|Rect|AlignedRect|Size|Line|Polygon)\(\)'
functional='(^|[^<>:A-Za-z_])(int|long|unsigned|qint64|qsizetype)\('
if grep -rnE --include='*.cpp' --include='*.h' "$conversions|$functional" "$copy/src" |
    grep -vE '(^|/)whole_numbers\.h:|^[^:]*:[0-9]*: *//'; then
    echo "use the functions of base/whole_numbers.h and drawing/Pixels.h instead"
    exit 1
fi

cat >"$copy/checked.h" <<'END'
#pragma once
#include <type_traits>
template <typename To, typename From>
constexpr To checkedCast(From from) {
    static_assert(!std::is_floating_point_v<From>, "a Double becomes a whole number: see base/whole_numbers.h");
    return static_cast<To>(from);
}
END
compile() { "$compiler" -std=c++20 -fsyntax-only -w -include "$copy/checked.h" "$@"; }

# A check that lets everything pass is none.
echo 'int cut(double value) { return checkedCast<int>(value); }' >"$copy/wrong.cpp"
if compile "$copy/wrong.cpp" 2>/dev/null; then
    echo "the check itself does not work"
    exit 1
fi

find "$copy/src" \( -name '*.cpp' -o -name '*.h' \) ! -name whole_numbers.h -print0 |
    xargs -0 sed -i -E "s/\bstatic_cast<($whole)>/checkedCast<\1>/g"
includes=(-I "$copy/src")
for folder in "$@"; do
    # (The compiler has its own place for /usr/include, and loses its headers when it is given another one.)
    [ "$folder" = "$sources" ] || [ "$folder" = /usr/include ] || includes+=(-isystem "$folder")
done
common=$({ "$compiler" --version; dpkg-query -W qt6-base-dev 2>/dev/null || true; cat "$0"; find "$copy/src" -name '*.h' | LC_ALL=C sort | xargs cat; } | sha256sum)
failed=0
checked=0
while read -r file; do
    checked=$((checked + 1))
    digest=$({ echo "$common"; cat "$file"; } | sha256sum)
    passed=$cache/${digest%% *}
    [ -e "$passed" ] || { compile "${includes[@]}" "$file" && : >"$passed"; } || failed=1
done < <(grep -rlE --include='*.cpp' 'checkedCast<' "$copy/src")
[ "$checked" -gt 20 ] || { echo "only $checked files were looked at"; failed=1; }
exit "$failed"
