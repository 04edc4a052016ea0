#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Says whether the committed help documents are what docs/help/make-help writes:
#     documents_are_current.sh SOURCE
set -euo pipefail
if ! command -v pandoc >/dev/null; then
    echo "left out: pandoc is not installed"
elif ! pandoc --version | grep -q '^pandoc 2\.17'; then
    echo "left out: the documents are made with pandoc 2.17, and this is $(pandoc --version | head -n 1)"
else
    "$1/docs/help/make-help" --check
    echo "the documents are what their sources give"
fi
