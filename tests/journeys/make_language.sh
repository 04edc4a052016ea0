#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes a language of the C library, in a folder that LOCPATH names afterwards.
#   make_language.sh LANGUAGE FOLDER     (de_DE, ar_EG, ...)
set -euo pipefail
mkdir -p "$2"
[ -f "/usr/share/i18n/locales/$1" ] || {
    echo "there is no description of the language $1 here: install the package locales" >&2
    exit 1
}
localedef -i "$1" -f UTF-8 "$2/$1.UTF-8"
