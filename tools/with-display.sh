#!/usr/bin/env bash
# Runs a command with a screen: the DISPLAY there is, else an Xvfb of its own that ends with the command.
set -u
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

if [ -n "${DISPLAY:-}" ]; then
    exec "$@"
fi
command -v Xvfb >/dev/null 2>&1 || die "no display and no Xvfb; run ./kx setup"
fifo="$(mktemp -u)"
mkfifo "$fifo"
Xvfb -displayfd 3 -screen 0 1600x1200x24 -dpi 96 -nolisten tcp 3>"$fifo" >/dev/null 2>&1 &
xvfb=$!
trap 'kill "$xvfb" 2>/dev/null; rm -f "$fifo"' EXIT
read -r -t 20 number <"$fifo" || die "Xvfb did not start"
DISPLAY=":$number" "$@"
