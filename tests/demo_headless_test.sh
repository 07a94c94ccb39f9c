#!/usr/bin/env bash
# The headless demo end to end: a small demo installation, the seal screen driven by
# the demo's script with the real engine, and a label PDF with pages.
#   demo_headless_test.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1
src=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Offices install under "Program Files": the path has a blank and Japanese characters.
demo="$work/訪問 デモ"
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
"$build/tools/demo/sealdemo" --out "$demo" --patients 60 --seed 7 --today 2026/11/21 >/dev/null
mkdir -p "$demo/SYS"
cp "$src"/forms/*.wfd "$demo/SYS/"
PATH="$build/src/main:$PATH" "$build/src/main/sealprint" --script "$src/scripts/demo_headless.txt" \
  --app-dir "$demo" --start-programs > "$work/transcript.txt"
grep -q '^run 2 wfrfv10.exe /c ' "$work/transcript.txt" || { echo "the engine was not started:"; cat "$work/transcript.txt"; exit 1; }
pdf="$demo/TMP/シール.pdf"
[ -s "$pdf" ] || { echo "no PDF at $pdf"; cat "$work/transcript.txt"; exit 1; }
pages=$(pdfinfo "$pdf" | awk '/^Pages:/ {print $2}')
[ "${pages:-0}" -ge 1 ] || { echo "the PDF has no pages"; exit 1; }
echo "demo PDF with $pages pages"
