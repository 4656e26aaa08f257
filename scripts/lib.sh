# shellcheck shell=bash
# What the scripts beside this file share. To be sourced; it leaves the shell in the root of the sources.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

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

# ensure_packages USE...: installs what is missing, or tells how to and ends the script.
ensure_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian system: what scripts/packages lists is taken to be here." >&2
        return
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ "${#missing[@]}" -gt 0 ] || return 0
    echo "Installing: ${missing[*]}"
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
    if ! { as_root "${apt[@]}" update && as_root "${apt[@]}" install -y --no-install-recommends "${missing[@]}"; }; then
        echo "Packages are missing and could not be installed. As root, type:" >&2
        echo "  apt-get update && apt-get install -y --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
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
