# Waits until no copy uses the server of FOLDER, stops it and ends (FOLDER). One guard stands at a server.

source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
source "$project/setup/server.sh"

guard() {
    local folder=$1
    cd /
    exec 7>>"$folder/guard.lock"
    # The guard that stands here may just be leaving, which takes it a minute at most.
    flock --timeout 90 7 || exit 0
    while [[ -e $folder/use.lock ]]; do
        flock "$folder/use.lock" true
        stop_unused_server "$folder" && exit 0
    done
}

guard "$@"
exit
