# The tour: the real windows, driven through a day's work on a sample centre of its own, with a picture of every step.

readonly tour_out="$project/out/tour"

run_tour() {
    tour_folder=$(mktemp -d "${TMPDIR:-/tmp}/tamsora-tour-XXXXXX")
    touch "$tour_folder/temporary"
    clean_up_with leave_server "$tour_folder"
    rm -rf "$tour_out"
    say "Starting a server for the tour …"
    # Nothing here has to survive a power cut.
    open_sample "$tour_folder" --innodb-flush-log-at-trx-commit=0
    tour_pass "$tour_out" 1366x768 1
    load_sample "$tour_folder"
    tour_pass "$tour_out/200-percent" 2732x1536 2
    say "The tour's pictures are in out/tour."
}

# Walks once through the windows (FOLDER WIDTHxHEIGHT SCALE).
tour_pass() {
    local out=$1 size=$2 scale=$3
    say "Walking through the windows at $size …"
    mkdir -p "$out"
    start_display "$size"
    take_counter "$tour_folder" 1
    XDG_CONFIG_HOME="$counter_folder" XDG_RUNTIME_DIR="$tour_folder" QT_SCALE_FACTOR="$scale" \
        attend timeout 300 "$project/build/release/bin/tamsora_tour" --out "$out" || fail "The tour failed."
    stop_display
}
