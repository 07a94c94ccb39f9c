#!/usr/bin/env bash
# Builds the whole tree with clang under AddressSanitizer and UndefinedBehaviorSanitizer
# in a folder of its own (build-asan/, or $ASAN_BUILD_DIR), then runs every test there,
# the fuzz corpus replays among them. Any report fails the run. The only suppression is
# scripts/lsan.supp: fontconfig's caches, which the system library keeps for the
# process's life. Set SEAL_SANITIZE=0 to leave the run out of scripts/test.sh.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${ASAN_BUILD_DIR:-$root/build-asan}
jobs=${JOBS:-2}
start=$(date +%s)

# -O1 keeps the build and the run quick while the sanitizers still see every access;
# line tables alone are enough for readable reports and keep linking light.
flags="-O1 -gline-tables-only -fno-omit-frame-pointer -fsanitize=address,undefined -fno-sanitize-recover=all"
if [ ! -f "$build/build.ninja" ]; then
  CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Asan \
    -DCMAKE_C_FLAGS_ASAN="$flags" -DCMAKE_CXX_FLAGS_ASAN="$flags" \
    -DCMAKE_EXE_LINKER_FLAGS_ASAN="-fsanitize=address,undefined" -DSEAL_BUILD_BENCH=OFF >/dev/null
fi
cmake --build "$build" -j "$jobs"
built=$(date +%s)

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export LSAN_OPTIONS=suppressions=$root/scripts/lsan.supp:print_suppressions=0
symbolizer=$(command -v llvm-symbolizer-14 || command -v llvm-symbolizer || true)
[ -z "$symbolizer" ] || export ASAN_SYMBOLIZER_PATH=$symbolizer
cd "$build"
ctest --output-on-failure -j "$jobs" --timeout 900 "$@"
echo "sanitize: build $((built - start)) s, tests $(($(date +%s) - built)) s"
