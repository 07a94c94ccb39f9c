#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the demo need; does nothing
# when they are all there.
set -euo pipefail
packages=(cmake ninja-build g++ ccache pkg-config qt6-base-dev libsqlite3-dev sqlite3
          unixodbc-dev unixodbc tdsodbc libsqliteodbc libgtest-dev libgmock-dev
          fonts-ipaexfont xvfb xauth poppler-utils qt6-translations-l10n
          dpkg-dev file desktop-file-utils appstream
          clang clang-format libclang-rt-14-dev llvm-14)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi
echo "setup: installing ${missing[*]}"
sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
