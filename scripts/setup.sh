# shellcheck shell=bash
# Sourced by ./run, ./test and ./bench: what has to be there before anything can be built.

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# wanted_packages [SECTION]: those above the first section of packages.txt ("# checks", "# bench",
# "# farm", "# web"), and those of SECTION.
wanted_packages() {
    awk -v wanted="${1:-}" '/^# (checks|bench|farm|web)$/ { section = $2 }
        !/^#/ && NF && (section == "" || section == wanted) { print $1 }' packages.txt
}

missing_packages() {
    local package
    for package in $(wanted_packages "${1:-}"); do
        dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            printf '%s ' "$package"
    done
}

# install_packages [SECTION]: installs what packages.txt names and the machine lacks; nothing happens
# when all is there.
install_packages() {
    command -v apt-get >/dev/null || fail "apt-get not found: this script knows Debian 12; the packages are listed in packages.txt"
    local missing sudo=""
    missing=$(missing_packages "${1:-}")
    [ -z "$missing" ] && return
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "missing packages, and neither root nor sudo to install them: $missing"
        sudo=sudo
    fi
    echo "installing: $missing"
    # shellcheck disable=SC2086 # several packages are several words
    { $sudo apt-get -qq update &&
        DEBIAN_FRONTEND=noninteractive $sudo apt-get -qq -y --no-install-recommends \
            install $missing; } >/tmp/vyr-apt.$$.log 2>&1 ||
        fail "could not install: $missing($(grep '^E:' /tmp/vyr-apt.$$.log | head -n 1))"
    rm -f /tmp/vyr-apt.$$.log
}

# folder_of PRESET: build/ for release, else build-PRESET/.
folder_of() { if [ "$1" = release ]; then echo build; else echo "build-$1"; fi; }

# configure PRESET: a preset of CMakePresets.json. A folder that somebody configured by hand keeps its
# generator, which CMake would refuse to change.
configure() {
    local folder log generator
    folder=$(folder_of "$1")
    mkdir -p "$folder"
    log=$folder/build.log
    generator=$(sed -n 's/^CMAKE_GENERATOR:INTERNAL=//p' "$folder/CMakeCache.txt" 2>/dev/null || true)
    cmake --preset "$1" ${generator:+-G "$generator"} >"$log" 2>&1 ||
        { cat "$log"; fail "could not configure, see above"; }
}

# log_steps LOG: writes the build's output there, and a line here at each tenth of its steps.
log_steps() {
    local line percent announced=0
    while IFS= read -r line; do
        printf '%s\n' "$line"
        [[ $line =~ ^\[\ *([0-9]+)(/([0-9]+)|%)\] ]] || continue
        percent=$((BASH_REMATCH[1] * 100 / ${BASH_REMATCH[3]:-100}))
        if [ $((percent / 10)) -gt $((announced / 10)) ]; then
            announced=$percent
            echo "  built: $percent %" >&2
        fi
    done >"$1"
}

# configure_and_build PRESET [targets]: how far it is, and nothing else unless it fails.
configure_and_build() {
    local folder log
    folder=$(folder_of "$1")
    log=$folder/build.log
    configure "$1"
    shift
    cmake --build "$folder" --parallel "$(nproc)" --target "${@:-all}" 2>&1 | log_steps "$log" ||
        { grep -vE '^\[ *[0-9]+(/[0-9]+|%)\]' "$log"; fail "could not build, see above"; }
}
