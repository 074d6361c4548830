#!/bin/bash
# Builds the program and its tests for 32-bit Windows and runs them: in a Debian for 32-bit processors with its Wine, which
# is laid out in build/try32 the first time (700 MB). Not part of ./test; needs root, and some minutes.
#
#   try_32bit.sh
set -euo pipefail

tools=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$tools")
system=$root/build/try32/root
build=$root/build/try32/windows
# Where the system below finds the checkout.
inside=/tamarind

if [[ ${1-} != --with-display ]]; then
    "$tools/install_packages.sh" build run test try32
    if [[ ! -e $system/ready ]]; then
        echo "Laying out a system for 32-bit programs"
        mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' | head -n 1)
        rm -rf "$system"
        mkdir -p "$system"
        debootstrap --arch=i386 --variant=minbase \
            --include=wine,wine32,fonts-wine,fonts-liberation,fonts-dejavu-core,libxcomposite1,libxcursor1,libxfixes3,libxi6,libxinerama1,libxrandr2,libxrender1,libxxf86vm1 \
            bookworm "$system" "$mirror" >"$system.log" 2>&1 || { tail "$system.log" >&2; exit 1; }
        touch "$system/ready"
    fi
    cmake -G Ninja -S "$root" -B "$build" --toolchain "$root/cmake/mingw-w64-i686-posix.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DHOUSE_PURPOSE=tests \
        -DCMAKE_C_FLAGS_RELEASE="-Os -DNDEBUG" -DCMAKE_CXX_FLAGS_RELEASE="-Os -DNDEBUG" >/dev/null
    cmake --build "$build" --parallel 2 --target core_tests model_tests ui_tests TamarindEditor program_files
    exec unshare --mount "$tools/with_display.sh" --own "$0" --with-display
fi

# Only this process and its children see these.
mkdir -p "$system$inside" "$system/tmp/.X11-unix"
mount --bind "$root" "$system$inside"
mount --bind /tmp/.X11-unix "$system/tmp/.X11-unix"
mount -t proc proc "$system/proc"
mount --rbind /dev "$system/dev"

in_system() {
    chroot "$system" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 DISPLAY="$DISPLAY" \
        WINEARCH=win32 WINEPREFIX=/root/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d" \
        bash -c "cd $inside && $1"
}

in_system "[[ -e /root/wine/system.reg ]] || wineboot -i >/dev/null 2>&1"
status=0
for tests in core model ui; do
    in_system "wine build/try32/windows/tests/${tests}_tests.exe --gtest_brief=1" || status=1
done

# The program itself, with copies of the samples beside it.
in_system "rm -rf /root/try && cp -r build/try32/windows/bin /root/try && cp samples/Wincmd.ini /root/try/"
in_system "wine reg add 'HKCU\\Software\\Ghisler\\Total Commander' /v IniFileName /d 'Z:\\root\\try\\Wincmd.ini' /f >/dev/null"
in_system "cd /root/try && wine TamarindEditor.exe" &
title=
for ((attempt = 0; attempt < 60 && ${#title} == 0; attempt++)); do
    sleep 0.5
    title=$(xdotool search --onlyvisible --class tamarindeditor getwindowname 2>/dev/null | head -n 1) || true
done
if [[ $title == *Wincmd.ini ]]; then
    sleep 2
    import -window root "$root/build/try32/program.png"
    echo "The program shows \"$title\" (build/try32/program.png)"
else
    echo "The program does not show the sample settings but \"$title\"" >&2
    status=1
fi
in_system "timeout 20 wineserver -k" || true
wait
exit "$status"
