# shellcheck shell=bash
# What the scripts beside this file share. To be sourced; it leaves the shell in the root of the sources.

# The folder that the script was started in.
readonly start_folder=$PWD

CDPATH='' cd -- "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

# packages_for USE...: names of the packages for these uses, one a line.
packages_for() {
    awk -v uses=" $* " '!/^#/ && index(uses, " " $1 " ") { print $2 }' scripts/packages
}

# missing_packages USE...: those of them that are not installed.
missing_packages() {
    local package
    for package in $(packages_for "$@"); do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || echo "$package"
    done
}

# as_root COMMAND...: runs it as root, through sudo where we aren't; fails where that can't be done.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        # Without a terminal nobody can type a password, so sudo must not wait for one.
        if [ -t 0 ]; then sudo "$@"; else sudo -n "$@"; fi
    else
        return 1
    fi
}

# ensure_packages USE...: installs what is missing, or says why it can't and ends the script.
ensure_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian system: what scripts/packages lists is taken to be here." >&2
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

# install_packages NAME...: does that, or says in one line why not. Stale lists and a source that doesn't answer are no
# reason to give up before apt has tried.
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
        echo "The packages above can't be installed: there is no network, or the servers in apt's sources don't answer." >&2
    else
        echo "$report" >&2
        echo "apt-get could not update its lists of packages; it says why above." >&2
    fi
    return 1
}

# configure PRESET [OPTION...]: prepares build/PRESET; compilations go through ccache where it is installed.
configure() {
    local preset=$1 launcher=()
    shift
    if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
    cmake --preset "$preset" "${launcher[@]}" "$@"
}

# build PRESET [TARGET...]: configures and builds; everything where no target is named.
build() {
    local preset=$1
    shift
    configure "$preset"
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
