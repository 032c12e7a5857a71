#!/bin/sh
# Moves a store to a server of its own on this computer, over TLS with a verified certificate, and works on it.
set -eu
. "$(dirname "$0")/common.sh"
. "$(dirname "$0")/wine.sh"

unpack "$work/station"
cd "$work/station/zomrel"
port=${ZOMREL_WINDOWS_CHECK_PORT:-54329}
bin=/usr/lib/postgresql/15/bin
server=$(mktemp -d /tmp/zomrel-server.XXXXXX)

as_server() {
  if [ "$(id -u)" -eq 0 ]; then
    (cd "$server" && runuser -u postgres -- "$@")
  else
    (cd "$server" && "$@")
  fi
}
stop_server() {
  as_server "$bin/pg_ctl" --pgdata="$server/data" --mode=immediate --silent stop || true
  wineserver --kill 2>/dev/null || true
  rm -rf "$server"
}
trap stop_server EXIT

openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=localhost -addext subjectAltName=DNS:localhost \
  -keyout "$server/server.key" -out "$server/server.crt" 2>/dev/null
chmod 600 "$server/server.key"
[ "$(id -u)" -ne 0 ] || chown -R postgres "$server"
as_server "$bin/initdb" --pgdata="$server/data" --username=owner --auth=trust --encoding=UTF8 --locale=C.UTF-8 >"$work/initdb.log"
as_server sh -c "printf 'hostssl all all 127.0.0.1/32 trust\n' >'$server/data/pg_hba.conf'"
as_server "$bin/pg_ctl" --pgdata="$server/data" --wait --silent --log="$server/log" --options="-c port=$port
  -c listen_addresses=127.0.0.1 -c unix_socket_directories=$server -c ssl=on -c ssl_cert_file=$server/server.crt
  -c ssl_key_file=$server/server.key" start
PGSSLROOTCERT=$(winepath --windows "$server/server.crt")
export PGSSLROOTCERT

sql() {
  PGSSLROOTCERT="$server/server.crt" psql --no-psqlrc --quiet --tuples-only --no-align \
    "host=localhost port=$port user=owner dbname=$1 sslmode=verify-full" --command "$2"
}
sql postgres "CREATE DATABASE workshop TEMPLATE template0"

cp "$sources/tests/packages/opening.csv" .
windows zomrel-store.exe create Aluminium.mdb
expect "a store is moved to the server over TLS" \
  windows zomrel-store.exe move Aluminium.mdb "postgresql://owner@localhost:$port/workshop"
expect "all rows are there" [ "$(sql workshop 'SELECT count(*) > 0 FROM "Serials"')" = t ]
expect "a link with a verified certificate is written" windows zomrel-store.exe link server.mdb \
  --server "localhost:$port" --database workshop --user owner --tls verify-full
expect "the store on the server is sound" windows zomrel-store.exe check server.mdb
expect "an order is entered on the server" windows zomrel-demo.exe opening.csv --store server.mdb --out out
expect "its report contains the cuts" has_order out/order-1.pdf
expect "the server has the order" [ "$(sql workshop 'SELECT count(*) FROM "Orders"')" = 1 ]
expect "the store on the server is backed up" windows zomrel-store.exe backup server.mdb backup.mdb
expect "the backup is sound" windows zomrel-store.exe check backup.mdb
expect "the backup is restored on the server" windows zomrel-store.exe restore backup.mdb server.mdb
expect "nothing is left" no_rest_in "$work/station"

# Without the certificate of its issuer, the server is not trusted.
PGSSLROOTCERT=$(winepath --windows "$server/missing.crt")
expect "a server without a trusted certificate is refused" fails_with "certificate" zomrel-store.exe check server.mdb
