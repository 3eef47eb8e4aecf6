# The Debian packages that Tamsora needs, and their installation when some are missing.

readonly needed_packages=(
    # to build
    cmake ninja-build g++ mold qt6-base-dev libmariadb-dev libasio-dev
    qt6-webengine-dev libcpp-httplib-dev libcurl4-openssl-dev
    # to run: the private server and its client, drawn icons, the virtual display, letters and emoji
    mariadb-server-core mariadb-client-core libqt6svg6 xvfb fonts-dejavu-core fonts-noto-color-emoji
    # frames and titles for the windows on it
    openbox
)
readonly test_packages=(
    # what the tests read PDFs with, the mail server they send to, the browser that reads the report pages, and what
    # database/install and database/backup need
    poppler-utils python3-aiosmtpd chromium python3 mariadb-client
)
readonly check_packages=(clang-format clang-tidy)

# Installs those of the named packages that are missing; asks nothing and does nothing when all are there.
install_packages() {
    local missing
    if ! command -v dpkg-query >/dev/null; then
        say "This is no Debian system; install what these Debian packages hold if something is missing: $*"
        return
    fi
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]})); then
        one_at_a_time packages install_missing "$@"
    fi
}

missing_packages() {
    local package
    for package in "$@"; do
        if [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            printf '%s\n' "$package"
        fi
    done
}

install_missing() {
    local missing
    # Asked once more under the lock: another script may have installed them meanwhile.
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]} == 0)); then
        return
    fi
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        fail "Packages are missing. As root: apt-get install --no-install-recommends ${missing[*]}"
    fi
    say "Installing ${missing[*]} …"
    apt_get update
    apt_get install --yes --no-install-recommends "${missing[@]}"
}

# Quiet apt-get as root; its words are shown when it fails.
apt_get() {
    local as_root=() log="$project/build/packages.log"
    if ((EUID != 0)); then
        as_root=(sudo)
    fi
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get --quiet \
        -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 "$@" </dev/null >"$log" 2>&1 || {
        cat "$log" >&2
        fail "apt-get $1 failed."
    }
}
