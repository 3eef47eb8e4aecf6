# The report server of the sample centre: it stands beside the private server of a folder, on a loopback port, and ends
# with it.

readonly reports_program="$project/build/release/bin/tamsora_reports"

# Starts the report server unless it runs, or was not built (FOLDER). To be called while setup.lock is held.
ensure_reports() {
    local folder=$1 password tables
    if [[ ! -x $reports_program ]] || reports_pid "$folder" >/dev/null; then
        return
    fi
    password=$(random_password)
    tables=$(reports_tables_sql | server_client "$folder")
    {
        create_reports_account_sql localhost "$password"
        change_reports_password_sql localhost "$password"
        # shellcheck disable=SC2086 # a word for each table
        reports_grant_sql localhost $tables
    } | server_client "$folder"
    write_reports_settings "$folder" "$password"
    # The port of the last time, so that what people have bookmarked still leads there; another when it is taken.
    start_reports "$folder" "$(reports_port "$folder")" || start_reports "$folder" 0 ||
        say "The report server did not start; $folder/reports.log says why."
}

# Its settings are those of a counter, with an account that can only read (FOLDER PASSWORD).
write_reports_settings() {
    local text
    text=$(<"$project/database/sample_centre.ini")
    text=${text//@SERVER@/"$(server_socket "$1")"}
    text=${text//@USER@/"$reports_account"}
    text=${text//@PASSWORD@/"$2"}
    (umask 077 && printf '%s\n' "$text" >"$1/reports.ini")
}

# Succeeds when it listens (FOLDER PORT).
start_reports() {
    local folder=$1 tries pid
    setsid "$reports_program" --config "$folder/reports.ini" --port "$2" \
        </dev/null >"$folder/reports.log" 2>&1 7>&- 8>&- 9>&- &
    pid=$!
    printf '%s\n' "$pid" >"$folder/reports.pid"
    for ((tries = 0; tries < 100; tries++)); do
        [[ -z $(reports_address "$folder") ]] || return 0
        [[ -d /proc/$pid ]] || return 1
        sleep 0.1
    done
    return 1
}

# "127.0.0.1:8088", as the running report server says it; empty without one (FOLDER).
reports_address() {
    sed -n 's|^Reports are at http://\([^/]*\)/$|\1|p' "$1/reports.log" 2>/dev/null || true
}

# The port of the last time, or 0 (FOLDER).
reports_port() {
    local address
    address=$(reports_address "$1")
    printf '%s' "${address##*:}" | grep . || printf 0
}

# Prints the process id of a folder's report server; fails when none runs (FOLDER).
reports_pid() {
    local pid
    [[ -r $1/reports.pid ]] || return 1
    pid=$(<"$1/reports.pid")
    [[ $pid =~ ^[0-9]+$ ]] && grep -qzxF -e "$1/reports.ini" "/proc/$pid/cmdline" 2>/dev/null && printf '%s' "$pid"
}

stop_reports() {
    local pid
    pid=$(reports_pid "$1") || return 0
    kill -TERM "$pid" 2>/dev/null || true
    rm -f "$1/reports.pid"
}

# Leads a counter to the report server, unless somebody gave it another one (FOLDER SETTINGS_FILE).
lead_to_reports() {
    local address
    address=$(reports_address "$1")
    if [[ -n $address ]]; then
        sed -i -E "s/^webserver=(localhost|127\.0\.0\.1:[0-9]+)(\r?)$/webserver=$address\2/" "$2"
    fi
}
