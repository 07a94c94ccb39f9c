#!/usr/bin/env bash
# Follows the README's section "A real SQL Server" word for word against the TDS test
# server: its shell lines run as written (sudo dropped when already root; the install
# line is checked against what is installed, since a test installs nothing), its
# adodb.ini is written as shown with only Data Source pointing at the test server, and
# the program must then list the same patients as it does on SQLite.
#   readme_sql_server_test.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1
src=$2
work=$(mktemp -d)
server_pid=
cleanup() {
  [ -n "$server_pid" ] && kill "$server_pid" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM SEAL_ODBC_DRIVER

# The section, from its heading to the next one.
section=$(awk '/^## A real SQL Server/ {on=1; next} /^## / {on=0} on' "$src/README.md")
[ -n "$section" ] || { echo "the README has no section 'A real SQL Server'"; exit 1; }
# Its fenced blocks: the adodb.ini example, then the shell lines.
ini=$(printf '%s\n' "$section" | awk '/^```$/ && !on {on=1; next} /^```/ && on {exit} on')
shell=$(printf '%s\n' "$section" | awk '/^```sh$/ {on=1; next} /^```/ && on {exit} on')
[ -n "$ini" ] && [ -n "$shell" ] || { echo "the section lost its adodb.ini or its shell lines"; exit 1; }

while IFS= read -r line; do
  [ -z "$line" ] && continue
  echo "README: $line"
  if [ "$(id -u)" = 0 ]; then line=${line#sudo }; fi
  if [[ $line == apt-get\ install* ]]; then
    for package in ${line#apt-get install}; do
      dpkg -s "$package" >/dev/null 2>&1 || { echo "not installed: $package"; exit 1; }
    done
  else
    bash -c "$line"
  fi
done <<< "$shell"

# The example's connection string, with the test server in place of SERVER\SQLEXPRESS.
connect=$(printf '%s\n' "$ini" | sed -n 's/^接続情報=//p')
user=$(printf '%s' "$connect" | sed -n 's/.*User ID=\([^;]*\).*/\1/p')
password=$(printf '%s' "$connect" | sed -n 's/.*Password=\([^;]*\).*/\1/p')
catalog=$(printf '%s' "$connect" | sed -n 's/.*Initial Catalog=\([^;]*\).*/\1/p')
[ -n "$user" ] && [ -n "$password" ] && [ -n "$catalog" ] || { echo "unexpected example: $connect"; exit 1; }

"$build/tools/demo/sealdemo" --out "$work/demo" --patients 60 --seed 7 --today 2026/11/21 >/dev/null
cat > "$work/script.txt" <<'SCRIPT'
today 2026/11/21
start 1
click btnDisp
show fpSpread02
click btnExit
SCRIPT
run() { "$build/src/main/sealprint" --script "$work/script.txt" --app-dir "$work/demo"; }
run > "$work/sqlite.txt"

exec 3< <(exec "$build/tests/tds_server/tds_test_server" --db "$work/demo/DATA/sealdemo.db" \
            --user "$user" --password "$password" --database "$catalog")
server_pid=$!
read -r word port <&3
[ "$word" = port ] || { echo "the test server did not start"; exit 1; }
server_connect=$(printf '%s' "$connect" | sed "s/Data Source=[^;]*/Data Source=127.0.0.1,$port/")
printf '[接続情報]\r\n接続情報=%s\r\n' "$server_connect" | iconv -f UTF-8 -t CP932 > "$work/demo/adodb.ini"
run > "$work/server.txt"

grep -q '^state fpSpread02 row 1 ' "$work/sqlite.txt" || { echo "no list on SQLite:"; cat "$work/sqlite.txt"; exit 1; }
if ! diff "$work/sqlite.txt" "$work/server.txt"; then
  echo "the program lists other patients through the README's SQL Server set-up"
  exit 1
fi
echo "the README's SQL Server set-up lists the same $(grep -c . "$work/server.txt") transcript lines as SQLite"
