#!/usr/bin/env bash
# A clinician's hour in a few minutes: the real workstation on a screen of its own, by mouse and keyboard. Imports the same ECG
# in three formats, finds it, measures, corrects two markers, writes and confirms the statement, saves, is killed, opens again,
# prints and exports. Fails unless every figure is the same before and after. Pictures into docs/pictures/walkthrough/, which
# docs/clinician-walkthrough.md shows; with "144" the same on a screen of 144 dots an inch, pictures into build/walkthrough-144/.
# Wants the recordings (KX_RECORDS).
# On a busy machine KX_PACE=3 leaves three times as long between keys.
set -eu
dpi="${1:-96}"
pace="${KX_PACE:-1}"
sleep() { command sleep "$(awk "BEGIN { print $1 * $pace }")"; }
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$KX_ROOT"

formats="$(records_folder)/formats"
[ -d "$formats" ] || die "no recordings of three formats here (set KX_RECORDS)"
bash tools/build.sh win32:workstation

pictures=docs/pictures/walkthrough
if [ "$dpi" != 96 ]; then
    pictures="build/walkthrough-$dpi"
    export KX_WINEPREFIX="$KX_ROOT/build/wine-prefix-$dpi"
fi
rm -rf "$pictures"
scaled() { echo $(($1 * dpi / 96)); }
work="$(mktemp -d /tmp/kx-XXXX)"
mkdir -p "$pictures"
cp "$formats"/Example.* "$work"
dos() { printf 'Z:%s' "${1//\//\\}"; }
host() { tools/wine.sh build/win32/bin/kxhost.exe --archive "$(dos "$work/archive.kxdb")" "$@"; }

number=90
while [ -e "/tmp/.X11-unix/X$number" ]; do number=$((number + 1)); done
Xvfb ":$number" -screen 0 "$(scaled 1180)x$(scaled 860)x24" -dpi "$dpi" -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
export DISPLAY=":$number"
finish() {
    kill "$xvfb" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT
# There is no window manager: Wine draws the title bars and gives the keyboard itself.
tools/wine.sh reg add 'HKCU\Software\Wine\AppDefaults\kxhost.exe\X11 Driver' /v Managed /d N /f >/dev/null
if [ "$dpi" != 96 ]; then
    for key in 'HKCU\Control Panel\Desktop' 'HKCU\Software\Wine\Fonts' 'HKCC\Software\Fonts'; do
        tools/wine.sh reg add "$key" /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
    done
fi

step=0
# shot NAME: the whole screen, when it has come to rest.
shot() {
    sleep "${2:-1.2}"
    step=$((step + 1))
    import -window root "$pictures/$(printf '%02d' $step)-$1.png"
    say "$pictures/$(printf '%02d' $step)-$1.png"
}
# A part of the screen as bare dots, to compare: WxH+X+Y.
dots() { import -window root -crop "$1" +repage rgb:- | sha256sum; }
window() { # waits for a window whose title holds the text
    for _ in $(seq 100); do
        xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 && return 0
        sleep 0.2
    done
    die "no window \"$1\""
}
keys() {
    for key in "$@"; do
        xdotool key "$key"
        sleep 0.25
    done
}
write() { xdotool type --delay $((25 * pace)) "$1"; }
click() {
    xdotool mousemove "$(scaled "$1")" "$(scaled "$2")"
    sleep 0.1
    xdotool click 1
    sleep 0.4
}
drag() { # X Y X Y, in steps as a hand goes
    local i
    xdotool mousemove "$(scaled "$1")" "$(scaled "$2")" mousedown 1
    for i in 1 2 3 4 5 6 7 8 9 10; do
        xdotool mousemove "$(scaled $(($1 + ($3 - $1) * i / 10)))" "$(scaled $(($2 + ($4 - $2) * i / 10)))"
        sleep 0.04
    done
    xdotool mouseup 1
    sleep 0.4
}
# In a dialog for a file: its name, then Enter.
file() {
    window "$1"
    sleep 0.8
    keys ctrl+a
    write "$(dos "$2")"
    keys Return
    sleep 1.5
}
open_workstation() {
    host >/dev/null 2>&1 &
    window "Stazione ECG"
    sleep 2.5
    click 300 12
}
figures() { host --export "$1" "$(dos "$work/$2")" && sed -i '/<id root=/d;/<effectiveTime/d' "$work/$2"; }

# One to three: import, find, open.
open_workstation
shot worklist-empty
for name in Example.xml Example.scp Example.dcm; do
    keys ctrl+i
    file "Importa" "$work/$name"
done
shot worklist-imported
keys ctrl+0
write "clark 2002"
sleep 0.6
keys Down Down
shot worklist-search

# The tracing, and two beats measured on it.
keys Return
shot tracing 2
drag 75 400 149 360
shot calipers
keys Escape

# A marker by the mouse, one by the keys, taken back and done again by the menu.
keys ctrl+2
sleep 0.8
drag 788 500 796 500
shot general-corrected
keys ctrl+3
sleep 0.8
keys Right Right Right
click 58 33
keys Down Return
keys ctrl+y Tab Left
shot qrs-corrected

# The statement, confirmed.
keys ctrl+7
sleep 0.8
click 346 480
write "Ritmo sinusale. Emiblocco anteriore sinistro. Esiti di infarto anteriore, da rivedere con il curante."
click 506 159
click 698 159
keys Down Return
shot interpretation-confirmed
keys ctrl+s
sleep 1
shot saved
figures 2 before.xml
figures 2 before.csv
general="$(scaled 263)x$(scaled 480)+$(scaled 10)+$(scaled 150)"
for pane in 2 3; do
    keys ctrl+$pane
    sleep 1
    dots $general >"$work/before-$pane"
done

# Killed, opened again: everything is there.
pkill -KILL -f "kxhost.exe --archive $(printf '%s' "$(dos "$work/archive.kxdb")" | sed 's/\\/./g')" || true
sleep 1
open_workstation
click 672 145
keys Tab
shot worklist-again
click 346 186
keys Return
sleep 2
for pane in 2 3; do
    keys ctrl+$pane
    sleep 1
    dots $general >"$work/after-$pane"
    cmp "$work/before-$pane" "$work/after-$pane" || die "pane $pane does not show the figures that were saved"
done
keys ctrl+7
shot interpretation-again

# Printed and exported, by the menu and its dialogs.
keys ctrl+1
sleep 1
keys ctrl+p
window "Stampa"
shot print
keys alt+s
file "Salva pagina" "$work/page.pdf"
keys alt+f r
file "Esporta" "$work/menu.xml"
shot exported
figures 2 after.xml
figures 2 after.csv
sed -i '/<id root=/d;/<effectiveTime/d' "$work/menu.xml"
for pair in "before.xml after.xml" "before.csv after.csv" "after.xml menu.xml"; do
    cmp "$work/${pair% *}" "$work/${pair#* }" || die "$pair differ"
done
step=$((step + 1))
gs -q -dNOPAUSE -dBATCH -sDEVICE=png16m -r"$dpi" -sOutputFile="$pictures/$(printf '%02d' $step)-page.png" "$work/page.pdf"
say "every figure is the same before and after"
