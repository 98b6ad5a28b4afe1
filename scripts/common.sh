# What ./run, ./test and .ci/run share. To be sourced by bash with `root` set to the project's
# folder.
# shellcheck shell=bash

root=${root:?}

die() {
    printf '%s\n' "$@" >&2
    exit 1
}

# Prints the packages that packages.txt lists in the groups given.
packages_of() {
    local line group='' wanted=" $* "
    while read -r line || [[ $line ]]; do
        line=${line%%#*}
        line=${line%"${line##*[![:space:]]}"}
        case $line in
            '') ;;
            '['*']') group=${line:1:-1} ;;
            *) [[ $wanted != *" $group "* ]] || printf '%s\n' "$line" ;;
        esac
    done < "$root/packages.txt"
}

# Prints those of the packages given that are not installed.
missing_of() {
    local line
    local -A installed=()
    while read -r line; do
        [[ $line != ?'i '* ]] || installed[${line:3}]=1
    done < <(dpkg-query -W -f='${db:Status-Abbrev}${Package}\n' "$@" 2>/dev/null)
    for line in "$@"; do
        [[ ${installed[$line]:-} ]] || printf '%s\n' "$line"
    done
}

# Installs what is missing of the groups given; calls apt-get only when something is.
install_packages() {
    local wanted missing by_hand as_root=()
    mapfile -t wanted < <(packages_of "$@")
    if ! command -v dpkg-query > /dev/null || ! command -v apt-get > /dev/null; then
        echo "This is no Debian system, so nothing is installed here by itself. Needed are what" \
            "Debian 12 calls: ${wanted[*]}" >&2
        return
    fi
    mapfile -t missing < <(missing_of "${wanted[@]}")
    ((${#missing[@]})) || return 0
    by_hand="apt-get update && apt-get install --no-install-recommends ${missing[*]}"

    if ((EUID != 0)); then
        command -v sudo > /dev/null || die "These packages are missing: ${missing[*]}" \
            "There is no sudo here to install them with. As root, please run: $by_hand"
        as_root=(sudo)
    fi
    as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" update || echo "Going on with the package lists that are here." >&2
    "${as_root[@]}" install --no-install-recommends -y "${missing[@]}" ||
        die "These packages could not be installed: ${missing[*]}" \
            "As root, please run: $by_hand"
}

# Configures the preset $1 if it has not been, or not as it stands now, and builds it.
build_preset() {
    local preset=$1 folder=$root/build/$1 home='' launcher=()
    if [[ -f $folder/CMakeCache.txt ]]; then
        home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt")
    fi
    if [[ $home != "$root" || ! -f $folder/build.ninja ||
        $root/CMakePresets.json -nt $folder/build.ninja ]]; then
        if command -v ccache > /dev/null; then
            launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        fi
        # Afresh: a cache of a folder since moved, or of a configuration that failed, is no use.
        (cd "$root" && cmake --fresh --preset "$preset" "${launcher[@]}") ||
            die "The preset $preset could not be configured."
    fi
    (cd "$root" && cmake --build --preset "$preset" --parallel "$(nproc)") ||
        die "The preset $preset did not build."
}
