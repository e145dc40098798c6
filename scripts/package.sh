#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes a Debian package of the programs, the module and the headers, in build-package/. With
# --check: has lintian look at it, and makes it once more from nothing to compare the bytes.
#
#   scripts/package.sh [--check]
set -euo pipefail
cd "$(dirname "$0")/.."

# make FOLDER
make() {
    cmake --preset package -B "$1" >/dev/null
    cmake --build "$1"
    (cd "$1" && cpack -G DEB >cpack.log || { cat cpack.log >&2; exit 1; })
}

make build-package
package=$(echo build-package/*.deb)
echo "package: $package"
if [ "${1-}" = --check ]; then
    lintian --fail-on error --allow-root "$package"
    # In another folder, and without results that a compiler cache kept of the first.
    rm -rf build-package-again
    CCACHE_DISABLE=1 make build-package-again
    cmp "$package" "build-package-again/$(basename "$package")"
    echo "package: no errors, and the same bytes again"
fi
