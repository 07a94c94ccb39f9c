#!/usr/bin/env bash
# Takes a screenshot of the seal screen on the demo installation under Xvfb, for the
# README: scripts/screenshot.sh [OUT.png]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build}
out=${1:-$root/docs/seal-screen.png}
demo=$build/demo
command -v import >/dev/null || { echo "screenshot: needs imagemagick (apt-get install imagemagick)" >&2; exit 2; }
[ -f "$demo/adodb.ini" ] || { echo "screenshot: run scripts/demo.sh first (it writes $demo)" >&2; exit 2; }

display=:97
Xvfb "$display" -screen 0 1280x800x24 >/dev/null 2>&1 &
xvfb=$!
trap 'kill $app $xvfb 2>/dev/null || true' EXIT
sleep 1
DISPLAY=$display PATH="$build/src/main:$PATH" "$build/src/main/sealprint" --app-dir "$demo" 1 &
app=$!
sleep "${WAIT:-4}"
DISPLAY=$display import -window root "$out"
echo "screenshot: $out"
