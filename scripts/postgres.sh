# A throw-away PostgreSQL cluster for the tests, on a Unix socket in a folder
# of our own (never the system's port). Sets KV_TEST_PG for the tests.
# shellcheck shell=bash

KV_PG_PORT="${KV_PG_PORT:-5499}"
KV_PG_DIR=""

kv_pg_bin() {
    local dir
    dir=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
    [ -n "$dir" ] && [ -x "$dir/initdb" ] && echo "$dir"
}

# Runs a server command as a user PostgreSQL accepts (it refuses root).
kv_pg_as_owner() {
    if [ "$(id -u)" -eq 0 ]; then
        runuser -u postgres -- "$@"
    else
        "$@"
    fi
}

kv_pg_start() {
    if [ -n "${KV_TEST_PG:-}" ]; then
        kv_say "PostgreSQL tests use KV_TEST_PG=$KV_TEST_PG"
        return 0
    fi
    if [ "$(id -u)" -eq 0 ] && [ -z "$(kv_pg_bin)" ]; then
        kv_ensure_packages postgresql || true
    fi
    local bin
    bin=$(kv_pg_bin) || true
    if [ -z "$bin" ]; then
        kv_warn "NOTICE: no PostgreSQL server installed: the PostgreSQL tests are SKIPPED"
        kv_warn "        (install the postgresql package, or set KV_TEST_PG to a server's connection string)"
        return 0
    fi
    KV_PG_DIR=$(mktemp -d /tmp/korvane-pg.XXXXXX)
    [ "$(id -u)" -eq 0 ] && chown postgres: "$KV_PG_DIR"
    # UTF-8 with C.UTF-8's character classes, whatever the caller's locale:
    # upper() then folds every letter, as the view's where texts expect.
    if ! kv_pg_as_owner "$bin/initdb" -D "$KV_PG_DIR/data" -A trust -U postgres -E UTF8 \
        --locale=C.UTF-8 >"$KV_PG_DIR/initdb.log" 2>&1 ||
        ! kv_pg_as_owner "$bin/pg_ctl" -D "$KV_PG_DIR/data" -l "$KV_PG_DIR/server.log" -w \
            -o "-p $KV_PG_PORT -k $KV_PG_DIR -c listen_addresses='' -c fsync=off" start >/dev/null; then
        kv_warn "NOTICE: could not start a PostgreSQL server: the PostgreSQL tests are SKIPPED"
        cat "$KV_PG_DIR"/*.log >&2 2>/dev/null || true
        return 0
    fi
    kv_pg_as_owner "$bin/createdb" -h "$KV_PG_DIR" -p "$KV_PG_PORT" -U postgres korvane_test
    export KV_TEST_PG="host=$KV_PG_DIR port=$KV_PG_PORT dbname=korvane_test user=postgres"
    kv_say "PostgreSQL test server running: $KV_TEST_PG"
}

kv_pg_stop() {
    [ -n "$KV_PG_DIR" ] || return 0
    kv_pg_as_owner "$(kv_pg_bin)/pg_ctl" -D "$KV_PG_DIR/data" -m fast -w stop >/dev/null 2>&1 || true
    rm -rf "$KV_PG_DIR"
    KV_PG_DIR=""
}
