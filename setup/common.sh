# What every script here starts with: strict mode, the project's folder, and the two ways to speak.
# Messages go to standard error, so that what a script is asked for (the lines of ./bench) stands alone on standard output.

set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly project

say() {
    printf '%s\n' "$*" >&2
}

fail() {
    say "$@"
    exit 1
}

# 24 letters and digits, about 142 bits.
random_password() {
    local text
    text=$(LC_ALL=C tr -dc 'A-Za-z0-9' < <(head -c 1024 /dev/urandom))
    printf '%s' "${text:0:24}"
}

# Runs a command while no other script here runs one under the same name (NAME COMMAND...).
one_at_a_time() {
    local lock="$project/build/$1.lock"
    shift
    mkdir -p "$project/build"
    (
        flock 6
        "$@"
    ) 6>"$lock"
}

# Runs a command on which a signal to this script does not have to wait.
attend() {
    local status=0
    "$@" &
    attended=$!
    wait "$attended" || status=$?
    attended=''
    return "$status"
}

# From here on the script ends on a signal, and the given command cleans up in any case, after what it attends to has ended.
clean_up_with() {
    clean_up=("$@")
    trap 'end_attended; "${clean_up[@]}"' EXIT
    trap 'exit 130' INT TERM HUP
}

end_attended() {
    if [[ -n ${attended:-} ]]; then
        kill "$attended" 2>/dev/null || true
        wait "$attended" || true
    fi
}
