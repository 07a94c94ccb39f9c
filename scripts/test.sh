#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test through CTest.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh"
build=${BUILD_DIR:-$root/build}
cd "$build"
ctest --output-on-failure -j "${JOBS:-2}" "$@"
[ "${SEAL_SANITIZE:-1}" = 0 ] || "$root/scripts/sanitize.sh" "$@"
