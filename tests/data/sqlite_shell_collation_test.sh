#!/usr/bin/env bash
# The sqlite3 shell on a table declared like the program's: without the collation
# extension a sort of readings fails; with it, readings sort and match as on the
# clinic's server (kana type and width ignored, voicing after the letters).
#   sqlite_shell_collation_test.sh EXTENSION
set -euo pipefail
extension=${1%.so}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
db="$work/r.db"
sqlite3 "$db" ".load $extension" \
  "CREATE TABLE R (n INTEGER, cNameKana TEXT COLLATE Japanese_CI_AS);" \
  "INSERT INTO R VALUES (1, 'ｻﾄｳ'), (2, 'スズキ'), (3, 'カネコ'), (4, 'ガトウ'), (5, 'さとう');"
if sqlite3 "$db" "SELECT n FROM R ORDER BY cNameKana" >/dev/null 2>&1; then
  echo "the shell sorted without the collation"; exit 1
fi
order=$(sqlite3 "$db" ".load $extension" "SELECT group_concat(n) FROM (SELECT n FROM R ORDER BY cNameKana, n)")
[ "$order" = "4,3,1,5,2" ] || { echo "order: $order"; exit 1; }
found=$(sqlite3 "$db" ".load $extension" "SELECT group_concat(n) FROM (SELECT n FROM R WHERE cNameKana LIKE 'さと%' ORDER BY n)")
[ "$found" = "1,5" ] || { echo "found: $found"; exit 1; }
echo "the shell sorts and matches readings with the extension"
