#!/bin/sh
# Moves a store to a server of its own on this computer, over TLS with a verified certificate, and works on it.
set -eu
. "$(dirname "$0")/common.sh"
. "$(dirname "$0")/wine.sh"
. "$(dirname "$0")/server.sh"

unpack "$work/station"
cd "$work/station/zomrel"

openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=localhost -addext subjectAltName=DNS:localhost \
  -keyout "$server/server.key" -out "$server/server.crt" 2>/dev/null
chmod 600 "$server/server.key"
start_server owner hostssl ssl=on "ssl_cert_file=$server/server.crt" "ssl_key_file=$server/server.key"
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
