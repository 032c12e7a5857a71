# shellcheck shell=sh
# A PostgreSQL server of its own on the loopback address, for the checks under Wine.

bin=/usr/lib/postgresql/15/bin
server=$(mktemp -d /tmp/zomrel-server.XXXXXX)

# PostgreSQL refuses to run as root.
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

# start_server OWNER KIND [SETTING...]: starts the server, whose superuser is OWNER, and sets the variable port. KIND is
# host, or hostssl if only encrypted connections are accepted.
start_server() {
  owner=$1
  kind=$2
  shift 2
  [ "$(id -u)" -ne 0 ] || chown -R postgres "$server"
  as_server "$bin/initdb" --pgdata="$server/data" --username="$owner" --auth=trust --encoding=UTF8 --locale=C.UTF-8 \
    --data-checksums --no-sync >"$work/initdb.log"
  as_server sh -c "echo '$kind all all 127.0.0.1/32 trust' >'$server/data/pg_hba.conf'"
  options="-c listen_addresses=127.0.0.1 -c unix_socket_directories=$server"
  for setting in "$@"; do
    options="$options -c $setting"
  done
  # The server does not start on a port that another program uses.
  for port in $(shuf --input-range=20000-29999 --head-count=10); do
    ! as_server "$bin/pg_ctl" --pgdata="$server/data" --wait --silent --log="$server/log" \
      --options="$options -c port=$port" start || return 0
  done
  cat "$server/log" >&2
  return 1
}
trap stop_server EXIT
