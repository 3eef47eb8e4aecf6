# The sample centre: its database on a private server, and a settings folder for each of its counters.

readonly sample_files=("$project"/database/{schema.sql,sample_centre.sql,sample_centre.ini})

# Where the user's own sample centre lives.
sample_folder() {
    local home=${XDG_DATA_HOME:-}
    # A relative path there counts as none.
    [[ $home == /* ]] || home="${HOME:?is not set}/.local/share"
    printf '%s/tamsora/sample' "$home"
}

# Joins the folder's server and fills it when it is new (FOLDER [SERVER SETTING...]).
open_sample() {
    local folder=$1
    mkdir -p "$(dirname "$folder")"
    join_server "$@"
    if [[ ! -e $folder/loaded ]]; then
        say "Filling the sample centre …"
        load_sample "$folder"
    elif [[ $(<"$folder/loaded") != "$(sample_version)" ]]; then
        say "This sample centre was made by another version of Tamsora; ./run --reset makes it anew."
    elif [[ -n $(find "$folder/loaded" -mtime +7) ]]; then
        say "This sample centre's bookings grow old; ./run --reset makes new ones from today on."
    fi
    ensure_reports "$folder"
    end_setup
}

# Fills the server with a fresh sample centre, whatever it held before (FOLDER).
load_sample() {
    local folder=$1 password
    password=$(random_password)
    rm -f "$folder/loaded"
    (umask 077 && printf '%s\n' "$password" >"$folder/password")
    {
        printf 'DROP DATABASE IF EXISTS posdb;\n'
        create_database_sql
        create_account_sql localhost "$password"
        change_password_sql localhost "$password"
        grant_sql localhost
    } | server_client "$folder"
    server_client "$folder" posdb <"$project/database/schema.sql"
    server_client "$folder" posdb <"$project/database/sample_centre.sql"
    sample_version >"$folder/loaded"
}

sample_version() {
    cat "${sample_files[@]}" | sha256sum
}

# Removes the sample centre unless a copy uses it (FOLDER).
remove_sample() {
    local folder=$1
    [[ -d $folder ]] || return 0
    enter_folder "$folder"
    flock --nonblock 8 || fail "A counter of the sample centre is open; close it first."
    stop_server "$folder"
    # The lock files stay: a copy that waits for them must not be left with a lock on a file that is gone.
    rm -rf "$folder"/{data,data.new,loaded,password,server.log,reports.ini,reports.log} "$folder"/counter-*/tamsora.ini
    exec 8>&- 9>&-
}

# Takes a counter that no copy stands at, the wanted one or the first free one, and prepares its settings
# (FOLDER [COUNTER]). Sets counter_folder; the counter is held through descriptor 7, which the program inherits.
take_counter() {
    local folder=$1 wanted=${2:-} counters counter
    counters=$(sample_counters)
    if [[ -n $wanted ]] && ! [[ $wanted =~ ^[1-9][0-9]{0,2}$ && $wanted -le $counters ]]; then
        fail "The sample centre has counters 1 to $counters, not $wanted."
    fi
    for counter in ${wanted:-$(seq "$counters")}; do
        counter_folder="$folder/counter-$counter"
        mkdir -p -m 700 "$counter_folder"
        exec 7>>"$counter_folder/use.lock"
        if flock --nonblock 7; then
            write_settings "$folder" "$counter"
            return
        fi
    done
    if [[ -n $wanted ]]; then
        fail "Counter $wanted of the sample centre is open already."
    fi
    fail "All $counters counters of the sample centre are open already."
}

sample_counters() {
    sed -n 's/^counters=\([0-9]*\).*/\1/p' "$project/database/sample_centre.ini"
}

# Writes a counter's tamsora.ini, but leaves one alone that fits the database: somebody may have tried settings in it.
write_settings() {
    local file="$1/counter-$2/tamsora.ini" socket password text
    socket=$(server_socket "$1")
    password=$(<"$1/password")
    if [[ -e $file ]] && grep -qF "database_server=$socket" "$file" && grep -qF "database_password=$password" "$file"; then
        lead_to_reports "$1" "$file"
        return
    fi
    text=$(<"$project/database/sample_centre.ini")
    text=${text//@SERVER@/"$socket"}
    text=${text//@USER@/"$account"}
    text=${text//@PASSWORD@/"$password"}
    text=${text//@COUNTER@/"$2"}
    (umask 077 && printf '%s\n' "$text" >"$file")
    lead_to_reports "$1" "$file"
}
