#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Every package that the scripts install and every library that the build looks for is in THIRD-PARTY.md.
#   third_party_test.sh SOURCE_FOLDER
set -uo pipefail
cd "$1"
. tools/packages.sh

failures=0
expect() {  # TEXT WHAT
    grep -qF "$1" THIRD-PARTY.md && return
    echo "THIRD-PARTY.md does not name $2"
    failures=$((failures + 1))
}

for package in "${build_packages[@]}" "${display_packages[@]}" "${test_packages[@]}" "${fuzz_packages[@]}"; do
    expect "\`$package\`" "the package $package"
done
declare -A work=([Qt6]='[Qt 6]' [GTest]='[GoogleTest]' [benchmark]='[Google Benchmark]' [SQLite3]='[SQLite]' [Threads]='[GNU C Library]')
while read -r library; do
    expect "${work[$library]:-$library}" "the library $library"
done < <(find src tests bench packaging -name CMakeLists.txt -exec sed -n 's/^ *find_package(\([^ )]*\).*/\1/p' {} + | sort -u)
exit $((failures > 0))
