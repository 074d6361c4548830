#!/bin/bash
# Installs the packages of Debian or Ubuntu that a task needs, if they are missing.
#
#   install_packages.sh GROUP...     GROUP: build, run, test, bench, package, try32
#
# "run" and "test" need what "build" installs as well: name all the groups that a task needs.
set -euo pipefail

packages_of() {
    case $1 in
    build)
        echo cmake ninja-build g++ g++-mingw-w64-x86-64-posix librsvg2-bin icoutils python3 python3-pil \
            fp-utils
        ;;
    run)
        # Wine recommends the X libraries and its fonts rather than depending on them.
        echo wine wine64 fonts-wine libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 \
            libxrandr2 libxrender1 libxxf86vm1
        echo xvfb openbox xdotool imagemagick x11-utils xauth fonts-dejavu-core fonts-liberation \
            fonts-droid-fallback
        ;;
    test)
        # The style checks are bound to a version: others lay out and warn differently.
        echo googletest clang clang-format-14 clang-tidy-14
        ;;
    bench)
        echo libbenchmark-dev libsimpleini-dev libinih-dev
        ;;
    package)
        echo g++-mingw-w64-i686-win32 nsis git
        ;;
    try32)
        echo g++-mingw-w64-i686-posix debootstrap
        ;;
    *)
        echo "install_packages.sh: unknown group '$1'" >&2
        return 1
        ;;
    esac
}

# Prints those of the packages that are not installed.
missing_of() {
    local installed package
    # dpkg-query fails as soon as it does not know one of the packages, and still lists the others.
    installed=$(dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' "$@" 2>/dev/null || true)
    for package in "$@"; do
        if ! grep -q "^ii *$package\$" <<<"$installed"; then
            echo "$package"
        fi
    done
}

# Clang's run-time libraries come with it on some releases and are a package of their own on others.
lacks_fuzzer_runtime() {
    local library
    library=$(clang --print-file-name="libclang_rt.fuzzer-$(uname -m).a" 2>/dev/null) || return 0
    [[ ! -e $library ]]
}

as_root() {
    if [[ $(id -u) == 0 ]]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    else
        sudo env DEBIAN_FRONTEND=noninteractive "$@"
    fi
}

install() {
    as_root apt-get install -y -q --no-install-recommends "$@"
}

if [[ $# == 0 ]]; then
    echo "usage: install_packages.sh build|run|test|bench|package|try32..." >&2
    exit 2
fi

wanted=()
needs_fuzzer=false
for group in "$@"; do
    list=$(packages_of "$group")
    read -r -a names <<<"${list//$'\n'/ }"
    wanted+=("${names[@]}")
    [[ $group != test ]] || needs_fuzzer=true
done

mapfile -t missing < <(missing_of "${wanted[@]}")
updated=false
if [[ ${#missing[@]} -gt 0 ]]; then
    echo "Installing: ${missing[*]}"
    as_root apt-get update -q
    updated=true
    install "${missing[@]}"
fi
if $needs_fuzzer && lacks_fuzzer_runtime; then
    $updated || as_root apt-get update -q
    install libclang-rt-dev
fi
