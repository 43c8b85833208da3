#!/usr/bin/env bash
# The shape of the sources: lines of C and C++ (blank and comment lines left out) by folder, the median and the longest file,
# and how much tests/ weighs against everything outside tests/ and bench/.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

git ls-files '*.cpp' '*.h' '*.c' | while IFS= read -r file; do
    [ -e "$file" ] || continue
    printf '%s %s\n' "$(grep -vcE '^\s*($|//)' "$file")" "$file"
done | sort -n | awk '
    function median(list, n) { return n % 2 ? list[(n + 1) / 2] : (list[n / 2] + list[n / 2 + 1]) / 2 }
    {
        n = split($2, parts, "/")
        top = parts[1]
        folder = n > 2 ? top "/" parts[2] : top
        if (top == "tests" && n > 3) folder = folder "/" parts[3]
        lines[folder] += $1; files[folder]++; longest[folder] = $1
        side = top == "tests" ? "tests" : top == "bench" ? "bench" : "code"
        weight[side] += $1; count[side]++
        if (side != "bench") size[side, count[side]] = $1
        if (side != "bench") name[side, count[side]] = $2
    }
    END {
        printf "%-26s %6s %7s %8s\n", "folder", "files", "lines", "longest"
        sorter = "sort"
        for (folder in lines) printf "%-26s %6d %7d %8d\n", folder, files[folder], lines[folder], longest[folder] | sorter
        close(sorter)
        for (s = 1; s <= 2; s++) {
            side = s == 1 ? "code" : "tests"
            for (i = 1; i <= count[side]; i++) list[i] = size[side, i]
            printf "\n%s: %d lines in %d files, median %g, longest:\n", side, weight[side], count[side], median(list, count[side])
            for (i = count[side]; i > count[side] - 5 && i > 0; i--) printf "  %5d %s\n", size[side, i], name[side, i]
        }
        printf "\ntests / code: %.1f %%\n", 100 * weight["tests"] / weight["code"]
    }'
