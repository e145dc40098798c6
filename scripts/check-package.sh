#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the program, the module and the headers into an empty folder, builds the examples there
# as the author of a module or of a host does, and runs them: the smallest module in the smallest
# host, the smallest module in dastrel, our module in the smallest host.
#
#   scripts/check-package.sh [BUILD]     a build of the project; default: build, which is built first
set -euo pipefail
cd "$(dirname "$0")/.."

if [ $# -eq 0 ]; then
    scripts/build.sh
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "package: $1" >&2
    exit 1
}

# expect WHAT STATUS EXPECTED-OUTPUT COMMAND...
expect() {
    local what=$1 status=$2 expected=$3 said=0 output
    shift 3
    output=$("$@" 2>&1) || said=$?
    if [ "$said" -ne "$status" ] || [ "$output" != "$expected" ]; then
        printf '%s\n' "--- expected, with status $status" "$expected" "--- came, with status $said" "$output" >&2
        fail "$what"
    fi
    echo "package: $what"
}

cmake --install "${1-build}" --prefix "$work/built" >/dev/null
# What was installed works from any place.
mv "$work/built" "$work/prefix"
prefix=$work/prefix
examples=$prefix/share/dastrel/examples
dastrel=$prefix/bin/dastrel
our_module=$(find "$prefix" -name dastrel.p)

warnings="-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror"
for example in smallest_module smallest_host; do
    lines=$(cat "$examples/$example"/*.c* | wc -l)
    [ "$lines" -lt 100 ] || fail "$example has $lines lines; it is to be the smallest"
    CFLAGS=$warnings CXXFLAGS=$warnings \
        cmake -S "$examples/$example" -B "$work/$example" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
    cmake --build "$work/$example" >/dev/null || fail "$example cannot be built with the package"
done
module=$work/smallest_module/smallest.p
host=$work/smallest_host/smallest_host

quad="point 0 0 0
point 0 0 1
point 1 0 1
point 1 0 0"
expect "the smallest module in the smallest host" 0 "$quad
point 0 0 0
point 0 0 1
point 1 0 0
polygon of 4 points from 0
polygon of 3 points from 4" "$host" "$module"
expect "our module in the smallest host, which has no background" 0 \
    "Need some geometry in the background layer(s) to clone
$quad
polygon of 4 points from 0" "$host" "$our_module"
expect "the smallest module in dastrel" 0 \
    "terrain.lwo + Smallest -> out.lwo (3 points and 1 polygon added)" \
    "$dastrel" apply "$examples/terrain.lwo" -o "$work/out.lwo" --module "$module"
"$dastrel" dump "$work/out.lwo" | grep -q Smallest || fail "the triangle's surface is not in out.lwo"
expect "our module in dastrel" 0 "" \
    "$dastrel" scatter "$examples/terrain.lwo" "$examples/tree.lwo" -o "$work/forest.lwo" --quiet
expect "the module exports its descriptor alone" 0 _mod_descrip \
    sh -c "nm -D --defined-only '$module' | sed 's/.* //'"

for page in man/man1/dastrel.1.gz bash-completion/completions/dastrel \
    zsh/vendor-completions/_dastrel fish/vendor_completions.d/dastrel.fish; do
    zcat -f "$prefix/share/$page" | grep 'clone.*num' >/dev/null || fail "$page tells of no options"
done

# Without CMake.
flags=$(PKG_CONFIG_PATH=$prefix/share/pkgconfig pkg-config --cflags dastrel)
# shellcheck disable=SC2086 # several words
cc -shared -fPIC -fvisibility=hidden $warnings $flags "$examples/smallest_module/smallest.c" -o "$work/plain.p"
expect "a module built with pkg-config" 0 \
    "terrain.lwo + Smallest -> plain.lwo (3 points and 1 polygon added)" \
    "$dastrel" apply "$examples/terrain.lwo" -o "$work/plain.lwo" --module "$work/plain.p"
cmp "$work/out.lwo" "$work/plain.lwo"
echo "package: good"
