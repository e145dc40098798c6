#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Checks formatting (clang-format 14) and the chosen clang-tidy list over the sources. Changes
# nothing. `scripts/check-style.sh --fix` formats in place instead.
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t sources < <(git ls-files '*.h' '*.cpp' '*.c')
if [ "${1-}" = --fix ]; then
    clang-format-14 -i "${sources[@]}"
    exit 0
fi

echo "style: formatting of ${#sources[@]} files"
clang-format-14 --dry-run --Werror "${sources[@]}"

echo "style: licence lines"
missing=$(git ls-files '*.h' '*.cpp' '*.c' '*.sh' '*.py' '*CMakeLists.txt' '*.cmake' |
    while read -r file; do head -n 2 "$file" | grep -q 'SPDX-License-Identifier: MIT' || echo "$file"; done)
if [ -n "$missing" ]; then
    echo "style: no SPDX line in the first two lines of:" >&2
    echo "$missing" >&2
    exit 1
fi

echo "style: clang-tidy"
cmake --preset tidy >/dev/null
git ls-files 'mesh/*.cpp' 'modeler/*.cpp' 'plugin/*.cpp' 'formats/*.cpp' 'settings/*.cpp' 'picture/*.cpp' 'cli/*.cpp' 'desktop/*.cpp' |
    xargs -P "$(nproc)" -n 1 clang-tidy-14 --quiet -p build-tidy 2>&1 |
    { grep -v ' warnings generated\.$' || true; } | tee build-tidy/findings.txt
if grep -qE ' (warning|error): ' build-tidy/findings.txt; then
    echo "style: clang-tidy found something" >&2
    exit 1
fi
echo "style: clean"
