# A virtual display, so that the windows work where there is no screen.

# Starts one of the given size (WIDTHxHEIGHT) and makes it this script's display; it ends with the script.
start_display() {
    local log="$project/build/display.log" display
    mkdir -p "$project/build"
    exec 5< <(exec setpriv --pdeathsig TERM Xvfb -displayfd 1 -screen 0 "$1x24" -dpi 96 -nolisten tcp -noreset \
        </dev/null 2>"$log" 7>&- 8>&- 9>&-)
    display_process=$!
    read -r -t 30 -u 5 display || {
        cat "$log" >&2
        fail "The virtual display did not start."
    }
    # Nothing of the caller's own desktop may shine through.
    unset WAYLAND_DISPLAY XAUTHORITY QT_STYLE_OVERRIDE QT_SCREEN_SCALE_FACTORS QT_FONT_DPI QT_QPA_PLATFORMTHEME
    export DISPLAY=":$display" QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8
    start_window_frames "$log"
}

# Starts the window manager, which goes when the display goes. A window that is shown while it begins may never be seen.
start_window_frames() {
    local ready tries
    ready=$(mktemp -u)
    openbox --startup "touch '$ready'" </dev/null >>"$1" 2>&1 5<&- 7>&- 8>&- 9>&- &
    for ((tries = 0; tries < 100; tries++)); do
        if [[ -e $ready ]]; then
            rm "$ready"
            return
        fi
        sleep 0.1
    done
    cat "$1" >&2
    fail "The window manager did not start."
}

stop_display() {
    kill "$display_process"
    exec 5<&-
}
