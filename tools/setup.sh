#!/usr/bin/env bash
# Installs what building and testing need, on a Debian-like machine, unattended. A second run finds everything and does nothing.
# With the name of a verb of ./kx also what that verb alone needs.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

export DEBIAN_FRONTEND=noninteractive
updated=""

apt_update() {
    [ -n "$updated" ] && return 0
    say "reading the package lists ..."
    as_root apt-get update -qq >/dev/null 2>&1 || say "some package lists could not be read, going on with what there is"
    updated=yes
}

# need WHAT TEST PACKAGE...: installs the packages when the test command fails.
need() {
    local what="$1" check="$2"
    shift 2
    if ! eval "$check" >/dev/null 2>&1; then
        command -v apt-get >/dev/null 2>&1 || die "cannot install $what: this set-up knows apt-get only (packages: $*)"
        apt_update
        say "installing $what ..."
        as_root apt-get install -y -qq --no-install-recommends "$@" >"$log" 2>&1 ||
            die "could not install $what (packages: $*): $(tail -n 1 "$log")"
        eval "$check" >/dev/null 2>&1 || die "$what is installed but does not answer: $check"
    fi
}

# The list of the distribution's source packages: as the machine's own list has its packages, of every suite it follows.
source_list() {
    local id="" keyring="" origin uri suite component
    id="$(. /etc/os-release && printf '%s' "${ID:-debian}")"
    keyring="/usr/share/keyrings/$id-archive-keyring.gpg"
    apt-get indextargets --format '$(ORIGIN) $(REPO_URI) $(CODENAME) $(COMPONENT)' "Created-By: Packages" 2>/dev/null |
        sort -u | while read -r origin uri suite component; do
        [ "${origin,,}" = "$id" ] || continue
        [ -e "$keyring" ] && uri="[signed-by=$keyring] $uri"
        echo "deb-src $uri $suite $component"
    done
}

# source_package NAME: the source package NAME of the distribution, unpacked and patched, in $KX_SOURCES/NAME. What is
# there stays as it is and is not asked for again; the machine's own lists of packages are only read. The folder appears
# when it is whole, so that a run that was cut off begins anew.
source_package() {
    local name="$1" work="$KX_SOURCES/.$1.part" unpacked
    [ -d "$KX_SOURCES/$name" ] && return 0
    need "the tools for source packages" "command -v dpkg-source" dpkg-dev
    say "fetching the source of $name ..."
    rm -rf "$work"
    mkdir -p "$work/lists/partial" "$work/cache/archives/partial" "$work/source"
    source_list >"$work/sources.list"
    if [ ! -s "$work/sources.list" ]; then
        apt_update
        source_list >"$work/sources.list"
    fi
    [ -s "$work/sources.list" ] || die "apt knows no list of packages of this distribution, so no source of $name"
    local apt=(apt-get -q -o "Dir::Etc::sourcelist=$work/sources.list" -o Dir::Etc::sourceparts=/dev/null
        -o "Dir::State::Lists=$work/lists" -o "Dir::Cache=$work/cache")
    # The cache need not be readable for the user that apt downloads as.
    [ "$(id -u)" -eq 0 ] && apt+=(-o APT::Sandbox::User=root)
    ("${apt[@]}" update && cd "$work/source" && "${apt[@]}" source --only-source "$name") >"$log" 2>&1 ||
        die "could not fetch the source of $name: $(tail -n 1 "$log")"
    unpacked="$(find "$work/source" -mindepth 1 -maxdepth 1 -type d)"
    [ -d "$unpacked" ] || die "the source of $name did not unpack into one folder"
    mv "$unpacked" "$KX_SOURCES/$name"
    rm -rf "$work"
}

mkdir -p "$KX_CACHE"
log="$KX_CACHE/setup.log"
exec 8>"$KX_CACHE/setup.lock"
flock 8

need "the build tools" "command -v cmake && command -v ninja && command -v g++ && command -v git" cmake ninja-build g++ git
need "the compiler cache" "command -v ccache" ccache
need "the 32-bit native compiler" "echo 'int main(){}' | g++ -m32 -fsanitize=address,undefined -x c++ - -o /dev/null" g++-multilib
need "the cross compiler" "command -v i686-w64-mingw32-g++-posix && command -v i686-w64-mingw32-windres" g++-mingw-w64-i686
need "GoogleTest's sources" "test -e /usr/src/googletest/CMakeLists.txt" googletest
need "Python, which makes the help" "command -v python3" python3
need "the compiler of the help" "command -v chmcmd" fp-utils
need "the virtual screen" "command -v Xvfb" xvfb
source_package pugixml
source_package sqlite3
# SQLite is compiled from one file, which its own sources make.
if [ ! -e "$KX_SOURCES/sqlite3/sqlite3.c" ]; then
    need "Tcl, which joins SQLite's sources" "command -v tclsh" tcl
    need "make" "command -v make" make
    say "joining SQLite's sources ..."
    (cd "$KX_SOURCES/sqlite3" && ./configure --disable-tcl && make sqlite3.c) >"$log" 2>&1 ||
        die "SQLite's sources could not be joined: $(tail -n 1 "$log")"
fi
case "${1:-}" in
bench)
    need "libtiff, the rival of the raster compression" "echo '#include <tiffio.h>' | g++ -fsyntax-only -x c++ -" libtiff-dev
    ;;
fuzz)
    need "clang with libFuzzer" \
        "echo 'extern \"C\" int LLVMFuzzerTestOneInput(const char*, int){return 0;}' |
         clang++ -m32 -fsanitize=address,undefined,fuzzer -x c++ - -o /dev/null" \
        clang libclang-rt-dev
    ;;
test | package)
    need "zip" "command -v zip && command -v unzip" zip unzip
    need "a second compiler for hosts" "command -v clang" clang
    need "the maker of import libraries for Microsoft's linker" "command -v llvm-dlltool" llvm
    ;;
walkthrough)
    need "a script's mouse and keyboard" "command -v xdotool" xdotool
    need "pictures of a screen" "command -v import" imagemagick
    need "a viewer of pages" "command -v gs" ghostscript
    ;;
lint) need "the linters" "command -v clang-format && command -v clang-tidy" clang-format clang-tidy ;;
esac

# The probe is the proof: a Wine serves when it runs a 32-bit program.
probe="$KX_CACHE/probe.exe"
[ -e "$probe" ] || echo 'int main(void){return 42;}' | i686-w64-mingw32-gcc -x c - -o "$probe"
wine_runs() {
    local status=0
    KX_WINEPREFIX="$KX_CACHE/probe-prefix" timeout 180 "$KX_ROOT/tools/wine.sh" "$probe" >/dev/null 2>&1 || status=$?
    [ "$status" -eq 42 ]
}
choose() {
    echo "$1" >"$KX_WINE_CHOICE"
    wine_runs || {
        rm -f "$KX_WINE_CHOICE"
        return 1
    }
}

if [ -r "$KX_WINE_CHOICE" ]; then
    root="$(wine_root)"
    if { [ -n "$root" ] && [ -e "$root/.kx-complete" ]; } || { [ -z "$root" ] && command -v wine >/dev/null 2>&1; }; then
        exit 0
    fi
    say "the Wine of the last set-up is gone, looking again ..."
    rm -f "$KX_WINE_CHOICE"
fi

if command -v wine >/dev/null 2>&1 && choose system; then
    say "Wine: the one installed on this machine"
    exit 0
fi

# From version 9 the distribution's Wine runs 32-bit programs without 32-bit libraries of the host.
apt_update
candidate="$(apt-cache policy wine 2>/dev/null | sed -n 's/.*Candidate: \([0-9]*\).*/\1/p')"
if [ "${candidate:-0}" -ge 9 ]; then
    say "installing Wine $candidate from the distribution ..."
    if as_root apt-get install -y -qq --no-install-recommends wine >"$log" 2>&1 && choose system; then
        say "Wine: the distribution's package"
        exit 0
    fi
elif [ "$(dpkg --print-architecture 2>/dev/null)" = amd64 ] && [ "${candidate:-0}" -gt 0 ] && [ -z "${KX_NO_I386:-}" ]; then
    had_i386="$(dpkg --print-foreign-architectures | grep -x i386 || true)"
    [ -n "$had_i386" ] || as_root dpkg --add-architecture i386
    say "trying the distribution's 32-bit Wine ..."
    if as_root apt-get update -qq >/dev/null 2>&1 && apt-get install -s -qq wine32:i386 wine >/dev/null 2>&1 &&
        as_root apt-get install -y -qq --no-install-recommends wine32:i386 wine >"$log" 2>&1 && choose system; then
        say "Wine: the distribution's package wine32"
        exit 0
    fi
    say "it cannot be installed beside this machine's packages"
    if [ -z "$had_i386" ]; then
        as_root dpkg --remove-architecture i386 || true
        as_root apt-get update -qq >/dev/null 2>&1 || true
    fi
fi

need "the tools for a private Wine" "command -v debootstrap && command -v bwrap" debootstrap bubblewrap
root="$KX_CACHE/wine-root"
if [ ! -e "$root/.kx-complete" ]; then
    # The mirror and the release are the ones that apt is set up with; a Debian release is needed.
    . /etc/os-release
    suite="${VERSION_CODENAME:-bookworm}"
    mirror="$(apt-get indextargets --format '$(REPO_URI)' "Created-By: Packages" "Codename: $suite" 2>/dev/null | head -n 1)"
    say "making a private Wine root in $root (about 1.3 GB, a minute or two) ..."
    as_root rm -rf "$root.part" "$root"
    as_root debootstrap --arch=i386 --variant=minbase --include=wine32,wine,fonts-liberation,fonts-dejavu-core \
        "$suite" "$root.part" ${mirror:+"$mirror"} >"$log" 2>&1 ||
        die "the private Wine root could not be made: $(tail -n 1 "$log")"
    as_root touch "$root.part/.kx-complete"
    as_root mv "$root.part" "$root"
fi
choose "root:$root" || die "no Wine on this machine runs a 32-bit program; tried the installed one, the packages and $root"
say "Wine: the private root $root"
