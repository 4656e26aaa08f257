# shellcheck shell=bash
# Functions for the scripts in this folder. Source it; it changes to the root of the source tree.

# The folder that the script was started in.
readonly start_folder=$PWD

CDPATH='' cd -- "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

# packages_for USE...: prints the packages for these uses, one per line.
packages_for() {
    awk -v uses=" $* " '!/^#/ && index(uses, " " $1 " ") { print $2 }' scripts/packages
}

# missing_packages USE...: prints those that are not installed.
missing_packages() {
    local package
    for package in $(packages_for "$@"); do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done
}

# as_root COMMAND...: runs a command as root, through sudo if necessary; fails if that isn't possible.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        # Without a terminal nobody can type a password, so sudo must not ask for one.
        if [ -t 0 ]; then sudo "$@"; else sudo -n "$@"; fi
    else
        return 1
    fi
}

# ensure_packages USE...: installs what is missing, or says why it can't and ends the script.
ensure_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This isn't a Debian system, so the packages listed in scripts/packages are assumed to be installed." >&2
        return
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ "${#missing[@]}" -gt 0 ] || return 0
    if ! as_root true 2>/dev/null; then
        echo "Packages are missing, and only root can install them. As root, type:" >&2
        echo "  apt-get update && apt-get install -y --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing: ${missing[*]}"
    install_packages "${missing[@]}" || exit 1
}

# install_packages NAME...: installs packages, or says in one line why it can't. If the lists can't be updated, the
# installation is tried all the same, because it may need no source that failed.
install_packages() {
    local apt=(env LC_ALL=C DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
    local install=("${apt[@]}" install -y --no-install-recommends "$@")
    local report
    if report=$(as_root "${apt[@]}" -qq -o APT::Update::Error-Mode=any update 2>&1); then
        as_root "${install[@]}" && return
        echo "apt-get could not install the missing packages; it says why above." >&2
        return 1
    fi
    as_root "${install[@]}" >/dev/null 2>&1 && return
    if grep -Eq 'resolv|onnect|unreachable|timed out' <<<"$report"; then
        echo "There is no network, or the servers in apt's sources don't answer, so these can't be installed." >&2
    else
        echo "$report" >&2
        echo "apt-get could not update its lists of packages; it says why above." >&2
    fi
    return 1
}

# configure PRESET [OPTION...]: configures build/PRESET, with ccache if it is installed.
configure() {
    local preset=$1 launcher=()
    shift
    if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
    cmake --preset "$preset" "${launcher[@]}" "$@"
}

# build PRESET [TARGET...]: configures and builds these targets, or everything.
build() {
    local preset=$1
    shift
    configure "$preset"
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
