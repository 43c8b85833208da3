#!/usr/bin/env bash
# The archive for integrators holds what it promises: hosts built from it alone, by every way that it names, open a pane; its
# header suits old and new compilers; its help, links, sums and bytes are in order.
set -u
. "$(dirname "${BASH_SOURCE[0]}")/../../tools/common.sh"
cd "$KX_ROOT" || exit 1
faults=0
fault() { echo "package: $*" && faults=$((faults + 1)); }
must() { local what="$1"; shift; "$@" >"$work/output" 2>&1 || { fault "$what"; head -n 5 "$work/output"; }; }

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
bash tools/package.sh >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
first="$(cat build/package/SHA256SUMS)"
bash tools/package.sh >/dev/null 2>&1
[ "$first" = "$(cat build/package/SHA256SUMS)" ] || fault "packing twice gives other bytes"
(cd "$work" && unzip -q "$KX_ROOT"/build/package/kxdialogs-*-win32.zip)
root="$(echo "$work"/kxdialogs-*)"
must "a sum is wrong" sh -c "cd '$root' && sha256sum --quiet -c SHA256SUMS"

# Linked by name, from C, and ended at once: what the loader must resolve.
cat >"$work/linked.c" <<'C'
#include <windows.h>
#include "kxdialogs.h"
int main(void) {
    static KxTestRecord record;
    KxHostWindow host = {NULL, NULL};
    uint32_t pane;
    LIBSTART();
    host.handle = CreateWindowA("Static", "host", WS_POPUP, 0, 0, 10, 10, NULL, NULL, NULL, NULL);
    pane = TABLEDIALOG(&host, &record) + HYPERTROPHYDIALOG(NULL, &record);
    DestroyWindow(host.handle);
    LIBSTOP();
    return pane != 0 ? 42 : 1;
}
C
run() { # NAME: runs NAME.exe beside the archive's modules, expects 42
    cp "$work/$1.exe" "$root/bin/" && tools/wine.sh "$root/bin/$1.exe" >/dev/null 2>&1
    [ $? -eq 42 ] || fault "$1 does not open a pane"
}
gcc="i686-w64-mingw32-gcc"
clang="clang --target=i686-w64-mingw32 -L$(dirname "$($gcc -print-libgcc-file-name)")"
for way in "gcc:$gcc:libkxdialogs.a" "gcc_lib:$gcc:kxdialogs.lib" "clang:$clang:libkxdialogs.a"; do
    IFS=: read -r name compiler library <<<"$way"
    must "$name cannot link $library" $compiler -Wall -Werror -I"$root/include" "$work/linked.c" "$root/lib/$library" -o "$work/$name.exe"
    run "$name"
done
must "the example does not build as it lies there" cmake -S "$root/examples" -B "$work/example" -G Ninja \
    -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_C_COMPILER=$gcc
must "the example does not build as it lies there" cmake --build "$work/example"

echo '#include "kxdialogs.h"' >"$work/header.c"
cp "$work/header.c" "$work/header.cpp"
must "the header is not C89" $gcc -std=c89 -pedantic -Wall -Werror -fsyntax-only -I"$root/include" "$work/header.c"
for standard in c++98 c++20; do
    must "the header is not $standard" i686-w64-mingw32-g++-posix -std=$standard -pedantic -Wno-long-long -Wall -Werror -fsyntax-only \
        -I"$root/include" "$work/header.cpp"
done

# Every template's number is a context of the help, and every link of help and documents leads somewhere.
(cd "$work" && chmls extractall "$root/bin/DLGHELP.CHM" help) >/dev/null 2>&1
# The table of contexts: its size, then pairs of a number and where its page's name is.
od -An -tu4 -w8 -j4 "$work/help/#IVB" | awk '{print $1}' >"$work/ids"
grep -hoE '^#define IDD_\w+ [0-9]+' dialogs/resources/*_ids.h | while read -r _ name number; do
    grep -qx "$number" "$work/ids" || echo "$name $number"
done >"$work/missing"
[ ! -s "$work/missing" ] || fault "dialogs without help: $(cat "$work/missing")"
links() { # FILE PATTERN: the targets that are not there
    grep -oE "$2" "$1" | sed -E 's/^(href="|src="|.*\]\()//; s/["#)].*$//' | grep -vE '^(https?:|mailto:|$)' | while read -r target; do
        [ -e "$(dirname "$1")/$target" ] || echo "$(basename "$1"): $target"
    done
}
{
    for page in "$work"/help/*.html; do links "$page" '(href|src)="[^"]*"'; done
    find "$root" -name '*.md' | while read -r page; do links "$page" '\]\([^)]+\)'; done
} >"$work/dead"
[ ! -s "$work/dead" ] || fault "links that lead nowhere: $(cat "$work/dead")"

# What a workstation loads; it has grown by a sixth unnoticed before (dialogs/standard_faults.cpp).
size="$(stat -c %s "$root/bin/kxdialogs.dll")"
[ "$size" -le 700000 ] || fault "kxdialogs.dll has $size bytes, more than 700 KB"

# No path of the building machine, and what the linker can do against attacks.
for binary in "$root"/bin/*.dll "$root"/bin/*.exe; do
    case "$binary" in */gcc*.exe | */clang.exe) continue ;; esac
    grep -qaF -e "$KX_ROOT" -e "$HOME/" "$binary" && fault "$(basename "$binary") names a folder of this machine"
    for guard in DYNAMIC_BASE NX_COMPAT NO_SEH; do
        i686-w64-mingw32-objdump -p "$binary" | grep -q "$guard" || fault "$(basename "$binary") is without $guard"
    done
done
[ "$faults" -eq 0 ]
