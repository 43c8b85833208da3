#!/usr/bin/env bash
# build/kxdialogs.tar.gz: what an integrator needs. bin/ runs as it is (kxhost.exe is the example host), include/ and
# lib/ are for building a host, docs/ and README.md for reading.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

bash tools/build.sh win32
bin=build/win32/bin
stage=build/package/kxdialogs
rm -rf build/package
mkdir -p "$stage/bin" "$stage/include" "$stage/lib" "$stage/docs"

for name in kxdialogs.dll kxsys.dll kxdb.dll kxrender.dll kxanalyze.dll kxinterp.dll kxhost.exe; do
    [ -e "$bin/$name" ] || die "$bin/$name was not built"
    i686-w64-mingw32-strip -o "$stage/bin/$name" "$bin/$name"
done
# The statement files and scripts that the library reads beside its module.
find "$bin" -maxdepth 1 -type f \( -name '*.htm' -o -name '*.scr' -o -name '*.csv' -o -name '*.chm' \) -exec cp {} "$stage/bin/" \;

cp include/kxdialogs.h "$stage/include/"
cp dialogs/kxdialogs.def "$stage/lib/"
# The import library for hosts that link the DLL instead of loading it.
i686-w64-mingw32-dlltool --kill-at -d dialogs/kxdialogs.def -D kxdialogs.dll -l "$stage/lib/libkxdialogs.a"
if [ -d docs ]; then cp -R docs/. "$stage/docs/"; fi
[ ! -e README.md ] || cp README.md "$stage/"
for file in LICENSE*; do [ ! -e "$file" ] || cp "$file" "$stage/"; done

# The same inputs give the same archive, whoever packs them and when.
time="$(git log -1 --format=%ct 2>/dev/null || echo 0)"
tar --sort=name --mtime="@$time" --owner=0 --group=0 --numeric-owner -C build/package -cf - kxdialogs | gzip -9n >build/kxdialogs.tar.gz
say "build/kxdialogs.tar.gz ($(du -k build/kxdialogs.tar.gz | cut -f1) KiB, $(tar -tzf build/kxdialogs.tar.gz | wc -l) entries)"
