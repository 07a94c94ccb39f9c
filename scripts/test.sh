#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test through CTest; then checks the
# Debian package installed and runs the suite again under the sanitizers.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh"
build=${BUILD_DIR:-$root/build}
cd "$build"
ctest --output-on-failure -j "${JOBS:-2}" "$@"
"$root/scripts/package_check.sh"
[ "${SEAL_SANITIZE:-1}" = 0 ] || "$root/scripts/sanitize.sh" "$@"
