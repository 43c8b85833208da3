#!/usr/bin/env bash
# build/package/kxdialogs-VERSION-win32.zip: what an integrator needs, and the symbols of its binaries in a second archive.
# The same inputs give the same bytes, whoever packs them, where and when; but the compiled help is different each time, as its
# compiler makes it, and with it the sums and the archive. kx package of two checkouts is compared by the binaries.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

version="$(sed -n 's/^#define KX_VERSION_TEXT "\(.*\)"/\1/p' include/kxdialogs.h)"
name="kxdialogs-$version-win32"
out=build/package
stage="$out/$name"
symbols="$out/$name-symbols"
bin=build/win32/bin
binaries=(kxdialogs.dll kxsys.dll kxdb.dll kxrender.dll kxanalyze.dll kxinterp.dll kxhost.exe)

# The time of the last commit, which the tools take for that of the build.
SOURCE_DATE_EPOCH="$(git log -1 --format=%ct 2>/dev/null || echo 315532800)"
export SOURCE_DATE_EPOCH

mkdir -p build
# Its banner has the time of the build, which a build before this one took from the clock.
touch dialogs/service_session.cpp
say "building ..."
cmake --preset win32 >build/win32-configure.log 2>&1 || die "configuring failed: $(tail -n 1 build/win32-configure.log)"
cmake --build --preset win32 --target "${binaries[@]%.*}" kxstatement_files kxhelp >build/win32-build.log 2>&1 ||
    die "building failed: $(grep -m 1 'error' build/win32-build.log)"

say "staging $name ..."
rm -rf "$out"
mkdir -p "$stage"/{bin,include,lib,docs,examples} "$symbols"
for binary in "${binaries[@]}"; do
    i686-w64-mingw32-objcopy --only-keep-debug "$bin/$binary" "$symbols/$binary.debug"
    i686-w64-mingw32-strip -o "$stage/bin/$binary" "$bin/$binary"
done
say "kxdialogs.dll: $(stat -c %s "$stage/bin/kxdialogs.dll") bytes"
# What the library and its siblings read beside themselves, and the help.
find "$bin" -maxdepth 1 -type f \( -name '*.htm' -o -name '*.scr' -o -name '*.csv' -o -name '*.CHM' \) -exec cp {} "$stage/bin/" \;
cp -R "$bin/help" "$stage/bin/"
cp include/kxdialogs.h "$stage/include/"
cp docs/examples/minimal_host.c docs/examples/CMakeLists.txt "$stage/examples/"
# Documents for those who have the archive alone; the pictures that they show.
cp docs/host-integration.md docs/suite-modules.md docs/statement-files.md docs/workstation.md CHANGELOG.md "$stage/docs/"
cp docs/examples/README.md "$stage/README.md"
python3 tools/keep_links.py "$stage"

say "import libraries and declarations ..."
python3 tools/make_declarations.py include/kxdialogs.h "$out/declarations"
i686-w64-mingw32-gcc-posix -Iinclude -fsyntax-only "$out/declarations/layout_check.c" ||
    die "the declarations for other languages do not match the header"
cp "$out/declarations"/{kxdialogs.def,KxDialogs.cs,KxDialogs.pas} "$stage/lib/"
i686-w64-mingw32-dlltool --kill-at -d "$stage/lib/kxdialogs.def" -D kxdialogs.dll -l "$stage/lib/libkxdialogs.a"
llvm-dlltool -m i386 -k -d "$stage/lib/kxdialogs.def" -D kxdialogs.dll -l "$stage/lib/kxdialogs.lib"

say "bill of materials and sums ..."
python3 tools/make_bill_of_materials.py "$version" "$stage" "$KX_SOURCES"
(cd "$stage" && find . -type f ! -name SHA256SUMS | LC_ALL=C sort | sed 's|^\./||' | xargs sha256sum >SHA256SUMS)

pack() {
    find "$out/$1" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
    (cd "$out" && find "$1" -type f | LC_ALL=C sort | TZ=UTC zip -X -q -9 -@ "$1.zip")
    say "$out/$1.zip ($(du -k "$out/$1.zip" | cut -f1) KiB)"
}
pack "$name"
pack "$name-symbols"
(cd "$out" && sha256sum -- *.zip | tee SHA256SUMS)
