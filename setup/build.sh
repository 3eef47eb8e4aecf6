# Configures and builds one of the presets.

# Builds a preset (PRESET [TARGET...]); the words of the configuration are shown when it fails.
build_preset() {
    # Two ninjas in one folder would spoil each other's work.
    one_at_a_time "$1" build_now "$@"
}

build_now() {
    local preset=$1 log="$project/build/$1.log" quiet=() targets=()
    shift
    if (($#)); then
        targets=(--target "$@")
    fi
    # On a terminal ninja keeps to one line that it overwrites; elsewhere every step would be a line.
    if [[ ! -t 2 ]]; then
        quiet=(-- --quiet)
    fi
    say "Building $preset …"
    cd "$project"
    cmake --preset "$preset" >"$log" 2>&1 || {
        cat "$log" >&2
        fail "The configuration of $preset failed."
    }
    cmake --build "build/$preset" "${targets[@]}" "${quiet[@]}" >&2
}
