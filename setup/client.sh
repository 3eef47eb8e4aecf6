# What the scripts for a centre's server share: their options and the client program. They define usage().

misused() {
    say "$1"
    usage >&2
    exit 2
}

# The option's value, or the end when there is none (OPTION [VALUE]).
value_of() {
    [[ -n ${2:-} ]] || misused "$1 needs a value."
    printf '%s' "$2"
}

# Whether host, socket and port, each of which may be empty, go together.
check_server() {
    [[ -z $host || -z $socket ]] || misused "Either --host or --socket, not both."
    [[ -z $socket || -S $socket ]] || fail "$socket is no socket."
    [[ -z $port || -n $host ]] || misused "--port goes with --host."
    [[ $port =~ ^[0-9]{0,5}$ && $((10#0$port)) -le 65535 ]] || misused "$port is no port."
}

# Asks on the terminal, or takes the next line of the input (QUESTION [hidden]); the answer is in `answer`.
ask() {
    local options=(-r)
    if [[ ${2:-} == hidden ]]; then
        options+=(-s)
    fi
    printf '%s ' "$1" >&2
    IFS= read "${options[@]}" answer || [[ -n $answer ]] || fail $'\n'"No answer."
    if [[ ${2:-} == hidden || ! -t 0 ]]; then
        say
    fi
}

find_client() {
    client=$(command -v mariadb || command -v mysql) || fail "The client is missing: apt-get install mariadb-client-core"
}

# Makes sql() speak to this server (ACCOUNT PASSWORD HOST SOCKET PORT); fails when there is no connection. Passwords
# stand in a file that only its owner reads, never in a command line, which everybody on the machine can see.
connect_as() {
    settings=$(mktemp)
    trap 'rm -f "$settings"' EXIT
    {
        printf '[client]\nuser="%s"\npassword="%s"\n' "$(option_text "$1")" "$(option_text "$2")"
        [[ -z $3 ]] || printf 'host="%s"\n' "$(option_text "$3")"
        [[ -z $4 ]] || printf 'socket="%s"\n' "$(option_text "$4")"
        [[ -z $5 ]] || printf 'port=%s\nprotocol=tcp\n' "$5"
    } >"$settings"
    sql -e 'SELECT 1' >/dev/null
}

# Quotes a text for an option file.
option_text() {
    local text=${1//\\/\\\\}
    printf '%s' "${text//\"/\\\"}"
}

sql() {
    "$client" --defaults-file="$settings" --default-character-set=utf8mb4 --batch --skip-column-names "$@"
}
