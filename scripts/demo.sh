#!/usr/bin/env bash
# Installs what is missing, builds, writes a demo installation under build/demo/ and
# opens the seal screen on it. Without a display it runs the same program headless:
# it searches, ticks every patient, prints, and leaves the engine's PDF in the demo's
# TMP folder.
#
#   scripts/demo.sh [--patients N] [--fresh]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build}
demo=$build/demo
patients=3000
fresh=0
while [ $# -gt 0 ]; do
  case "$1" in
    --patients) patients=$2; shift 2 ;;
    --fresh) fresh=1; shift ;;
    *) echo "demo: unknown option $1" >&2; exit 2 ;;
  esac
done

"$root/scripts/setup.sh"
"$root/scripts/build.sh"

if [ "$fresh" = 1 ] || [ ! -f "$demo/adodb.ini" ]; then
  rm -rf "$demo"
  "$build/tools/demo/sealdemo" --out "$demo" --patients "$patients" --seed 1
fi
# The report forms and the engine's programs belong with the program.
mkdir -p "$demo/SYS" "$demo/TMP"
cp "$root"/forms/*.wfd "$demo/SYS/"
export PATH="$build/src/main:$PATH"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "demo: opening the seal screen on $demo"
  exec "$build/src/main/sealprint" --app-dir "$demo" 1
fi

echo "demo: no display; running the seal screen headless on $demo"
rm -f "$demo/TMP/シール.pdf"
"$build/src/main/sealprint" --script "$root/scripts/demo_headless.txt" --app-dir "$demo" --start-programs
if [ ! -s "$demo/TMP/シール.pdf" ]; then
  echo "demo: the engine left no PDF in $demo/TMP" >&2
  exit 1
fi
echo "demo: the labels are in $demo/TMP/シール.pdf"
