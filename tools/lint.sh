#!/usr/bin/env bash
# clang-format and clang-tidy over the project's sources; says what is not clean and fails then.
# tools/lint.sh [FILE ...]: all tracked C++ files, or the given ones.
set -u
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT" || exit 1
command -v clang-format >/dev/null 2>&1 || die "clang-format is not installed (package clang-format)"
command -v clang-tidy >/dev/null 2>&1 || die "clang-tidy is not installed (package clang-tidy)"

if [ $# -gt 0 ]; then files=("$@"); else mapfile -t files < <(git ls-files '*.cpp' '*.h' '*.c'); fi
bad=0
say "clang-format over ${#files[@]} files ..."
clang-format --dry-run -Werror "${files[@]}" || bad=1

for preset in native win32; do
    # clang reads no other compiler's precompiled header.
    cmake --preset "$preset" -B "build/lint-$preset" -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null ||
        die "configuring $preset failed"
done
# A file is judged with the preset that compiles it; the cross compiler's own folders are told to clang.
gcc_include="$(i686-w64-mingw32-g++-posix -print-file-name=include)"
mingw=(--extra-arg=--target=i686-w64-mingw32 --extra-arg=-Wno-unused-command-line-argument)
while IFS= read -r dir; do mingw+=("--extra-arg=-isystem$dir"); done < <(
    i686-w64-mingw32-g++-posix -x c++ -E -v /dev/null 2>&1 >/dev/null | sed -n 's/^ \(\/.*\)$/\1/p' | grep -v "^$gcc_include$"
)
native=() tests=() windows=()
for file in "${files[@]}"; do
    case "$file" in *.cpp) ;; *) continue ;; esac
    if grep -q "\"$KX_ROOT/$file\"" build/lint-native/compile_commands.json; then
        case "$file" in tests/*) tests+=("$file") ;; *) native+=("$file") ;; esac
    elif grep -q "\"$KX_ROOT/$file\"" build/lint-win32/compile_commands.json; then
        windows+=("$file")
    fi
done
say "clang-tidy over $((${#native[@]} + ${#tests[@]})) portable and ${#windows[@]} Windows files ..."
run_tidy() {
    local preset="$1"
    shift
    printf '%s\0' "$@" | xargs -0 -n 4 -P "$(nproc)" clang-tidy -p "build/lint-$preset" --quiet "${extra[@]}" 2>/dev/null
}
extra=()
[ ${#native[@]} -eq 0 ] || run_tidy native "${native[@]}" || bad=1
# The native tests lean on their compiled header; here it is read as any other.
extra=("--extra-arg=-include$KX_ROOT/tests/precompiled.h")
[ ${#tests[@]} -eq 0 ] || run_tidy native "${tests[@]}" || bad=1
extra=("${mingw[@]}")
[ ${#windows[@]} -eq 0 ] || run_tidy win32 "${windows[@]}" || bad=1
[ "$bad" -eq 0 ] && say "clean"
exit "$bad"
