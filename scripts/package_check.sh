#!/usr/bin/env bash
# The package as a user gets it: builds the Debian package with CPack, installs it
# with apt-get, runs the installed program headless on a demo installation in a folder
# whose path holds a blank and Japanese characters, checks the label PDF, and removes
# the package again. Needs a build in build/ (or $BUILD_DIR) and root or sudo.
#
#   scripts/package_check.sh
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build}
sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
say() { echo "package: $*"; }
fail() { echo "package: $*" >&2; exit 1; }

if dpkg-query -W -f='${Status}' sealprint 2>/dev/null | grep -q 'install ok installed'; then
  fail "sealprint is installed on this machine already; this check would replace and remove it"
fi

out="$build/package"
rm -rf "$out"
(cd "$build" && cpack -G DEB -B "$out" >/dev/null)
debs=("$out"/sealprint_*.deb)
deb=${debs[0]}
[ -f "$deb" ] || fail "cpack made no .deb in $out"
depends=$(dpkg-deb -f "$deb" Depends)
say "built $(basename "$deb"); Depends: $depends"
for need in libqt6gui6 libqt6printsupport6 libsqlite3 libodbc fonts-ipaexfont; do
  [[ $depends == *"$need"* ]] || fail "the package does not depend on $need"
done

work=$(mktemp -d)
installed=0
cleanup() {
  if [ "$installed" = 1 ]; then
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get remove -y -qq sealprint >/dev/null || true
  fi
  rm -rf "$work"
}
trap cleanup EXIT

DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "$deb" >/dev/null
installed=1
for f in /usr/bin/sealprint /usr/bin/wfrfv10 /usr/bin/WrVb6Viewer /usr/bin/wfrimg10 \
         /usr/share/sealprint/forms/シール.wfd /usr/share/doc/sealprint/README.md \
         /usr/share/applications/org.sealprint.SealPrint.desktop \
         /usr/share/metainfo/org.sealprint.SealPrint.metainfo.xml \
         /usr/share/icons/hicolor/scalable/apps/org.sealprint.SealPrint.svg; do
  [ -e "$f" ] || fail "the package did not install $f"
done
desktop-file-validate /usr/share/applications/org.sealprint.SealPrint.desktop
appstreamcli validate --no-net /usr/share/metainfo/org.sealprint.SealPrint.metainfo.xml >/dev/null

# Only the installed programs: the build folder is not on the search path.
run() { env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM PATH=/usr/bin:/bin SEAL_LOG_DIR="$work/log" "$@"; }
run sealprint --version | grep -q '^sealprint ' || fail "sealprint --version says nothing"
code=0
run sealprint --no-such-option >/dev/null 2>"$work/err" || code=$?
[ "$code" = 2 ] && grep -q 'no-such-option' "$work/err" || fail "an unknown option ended with $code: $(cat "$work/err")"

# An office's installation folder as Windows would have it, with no forms of its own in
# SYS: the engine takes them from the installation.
demo="$work/Program Files/訪問 治療院"
"$build/tools/demo/sealdemo" --out "$demo" --patients 60 --seed 7 --today 2026/11/21 >/dev/null
run sealprint --script "$root/scripts/demo_headless.txt" --app-dir "$demo" --start-programs >"$work/transcript.txt" \
  || fail "the installed program failed: $(cat "$work/transcript.txt")"
grep -qF "run 2 wfrfv10.exe /c $demo\\TMP\\WfdCom.dat" "$work/transcript.txt" \
  || grep -qF "run 2 wfrfv10.exe /c $demo/TMP/WfdCom.dat" "$work/transcript.txt" \
  || fail "the engine was not started on the installation's script: $(cat "$work/transcript.txt")"
pdf="$demo/TMP/シール.pdf"
[ -s "$pdf" ] || fail "no PDF at $pdf"
pages=$(pdfinfo "$pdf" | awk '/^Pages:/ {print $2}')
[ "${pages:-0}" -ge 1 ] || fail "the PDF has no pages"
grep -q 'sealprint.app: sealprint .* started' "$work/log/sealprint.log" || fail "the program's log records no program start"
grep -q 'sealprint.engine: wrote' "$work/log/wfrfv10.log" || fail "the engine's log records no PDF"

DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get remove -y -qq sealprint >/dev/null
installed=0
[ ! -e /usr/bin/sealprint ] || fail "removing the package left /usr/bin/sealprint"
say "installed, printed $pages pages under \"$demo\", removed"
