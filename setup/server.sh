# A private MariaDB server in a folder of its own. It listens on no network: the only way in is a unix socket in a folder
# that nobody but its owner can enter, so its root account needs no password.
#
# Every copy of the program holds a shared lock on FOLDER/use.lock, on file descriptor 8, which the program inherits from
# the script that starts it. A small guard process waits until nobody holds that lock any more and then stops the server,
# so the last copy may end in any way, a kill included. FOLDER/setup.lock, on descriptor 9, is held while the server is
# made, started or stopped. A folder that holds a file named "temporary" is removed together with its server.

source "$project/setup/reports.sh"

# mariadbd runs as root only when told so.
server_user=()
if ((EUID == 0)); then
    server_user=(--user=root)
fi

# Takes part in the use of a server and leaves it running, setup.lock still held (FOLDER [SETTING...]).
join_server() {
    local folder=$1
    enter_folder "$folder"
    flock --shared 8
    # The guard comes first, so that a server whose start is interrupted is not left behind either.
    setsid --fork bash "$project/setup/guard_server.sh" "$folder" </dev/null &>/dev/null 8>&- 9>&-
    ensure_server_runs "$@"
}

# Opens both locks of a folder and holds setup.lock (FOLDER).
enter_folder() {
    mkdir -p "$1"
    chmod 700 "$1"
    exec 8>>"$1/use.lock" 9>>"$1/setup.lock"
    flock 9
}

end_setup() {
    exec 9>&-
}

# Gives up the use of a server and stops it unless another copy uses it (FOLDER).
leave_server() {
    # setup.lock too: the script may have failed while it held it.
    exec 8>&- 9>&-
    # The guard may be doing the same at this moment: then it ends what is left.
    stop_unused_server "$1" || true
}

# Stops the server when nobody uses it; fails when somebody does (FOLDER).
stop_unused_server() (
    [[ -d $1 ]] || exit 0
    enter_folder "$1"
    flock --nonblock 8 || exit 1
    stop_server "$1"
    if [[ -e $1/temporary ]]; then
        rm -rf "$1"
    fi
)

ensure_server_runs() {
    local folder=$1 pid
    if server_answers "$folder"; then
        return
    fi
    if pid=$(server_pid "$folder"); then
        # Started by a script that was interrupted: it may still come up.
        wait_for_server "$folder" && return
        fail "The server of $folder (process $pid) does not answer; $folder/server.log says more."
    fi
    start_server "$@"
}

start_server() {
    local folder=$1 socket
    shift
    socket=$(server_socket "$folder")
    if [[ ! -d $folder/data ]]; then
        make_data_folder "$folder"
    fi
    rm -f "$socket"
    # In a session of its own, so that Ctrl+C in the terminal does not reach it.
    setsid mariadbd --no-defaults "${server_user[@]}" --datadir="$folder/data" --socket="$socket" \
        --pid-file="$folder/server.pid" --log-error="$folder/server.log" --skip-networking --skip-name-resolve \
        --character-set-server=utf8mb4 --innodb-buffer-pool-size=64M --innodb-log-file-size=16M "$@" \
        </dev/null &>/dev/null 8>&- 9>&- &
    # Before the server itself would write it, so that a starting server is known too.
    printf '%s\n' "$!" >"$folder/server.pid"
    wait_for_server "$folder" || {
        tail -n 20 "$folder/server.log" >&2
        fail "The server did not start; its last words stand above."
    }
}

make_data_folder() {
    local folder=$1 log="$1/server.log"
    rm -rf "$folder/data.new"
    # From inside the folder, because mariadb-install-db stumbles over a blank in a path. With --force it also works on
    # a machine whose own name cannot be looked up.
    (cd "$folder" && mariadb-install-db --no-defaults "${server_user[@]}" --datadir=./data.new --skip-test-db \
        --auth-root-authentication-method=normal --force) </dev/null >"$log" 2>&1 || {
        cat "$log" >&2
        fail "The server's data folder could not be made."
    }
    # Under its final name only when it is whole.
    mv "$folder/data.new" "$folder/data"
}

# Waits up to a minute; fails at once when the server has ended.
wait_for_server() {
    local tries pid
    for ((tries = 0; tries < 600; tries++)); do
        server_answers "$1" && return
        # Not by server_pid: a process that was just forked does not bear the server's command line yet.
        pid=$(cat "$1/server.pid" 2>/dev/null) && [[ -d /proc/$pid ]] || return 1
        sleep 0.1
    done
    return 1
}

# SIGTERM is the server's ordinary way to end. After a minute without success it is left alone: killing it helps nobody.
stop_server() {
    local pid tries
    stop_reports "$1"
    pid=$(server_pid "$1") || return 0
    kill -TERM "$pid"
    for ((tries = 0; tries < 600; tries++)); do
        if ! server_pid "$1" >/dev/null; then
            rm -f "$1/server.pid"
            # The short folder, when the socket stood in one.
            rmdir "$(dirname "$(server_socket "$1")")" 2>/dev/null || true
            return
        fi
        sleep 0.1
    done
    fail "The server of $1 (process $pid) does not end."
}

# Prints the process id of a folder's server; fails when none runs. A file left by a crash may name a stranger's process.
server_pid() {
    local pid
    [[ -r $1/server.pid ]] || return 1
    pid=$(<"$1/server.pid")
    [[ $pid =~ ^[0-9]+$ ]] && grep -qzxF -e "--datadir=$1/data" "/proc/$pid/cmdline" 2>/dev/null && printf '%s' "$pid"
}

server_answers() {
    [[ -S $(server_socket "$1") ]] && server_client "$1" -e 'SELECT 1' &>/dev/null
}

# The client as the private server's root (FOLDER [ARGUMENT...]); statements come from standard input.
server_client() {
    local socket
    socket=$(server_socket "$1")
    shift
    mariadb --no-defaults --socket="$socket" --user=root --default-character-set=utf8mb4 --batch --skip-column-names "$@"
}

# Prints the path of a folder's socket. A socket's path may have 107 bytes, and this one stands in a connection string,
# where some signs have a meaning of their own; a folder that cannot hold it gets a short one in the run-time directory.
server_socket() {
    local socket="$1/server.sock" LC_ALL=C short name
    if ((${#socket} > 107)) || [[ $socket =~ [^A-Za-z0-9/._-] ]]; then
        name=$(printf '%s' "$1" | sha256sum)
        short="${XDG_RUNTIME_DIR:-/tmp}/tamsora-$EUID-${name:0:12}"
        mkdir -p -m 700 "$short"
        # Somebody else may have made a folder of that name under /tmp first.
        [[ -O $short && ! -L $short && $(stat -c %a "$short") == 700 ]] || fail "$short is not safe to use; remove it."
        socket="$short/server.sock"
    fi
    printf '%s' "$socket"
}
