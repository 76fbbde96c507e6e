# Sourced by run, test, bench and the scripts of tools: installs what is missing and builds. Each step says what it does
# in one line.

BUILD_PACKAGES="g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-multimedia-dev qt6-svg-dev
    libxcb1-dev libxcb-shape0-dev libxcb-randr0-dev flite1-dev libespeak-ng-dev espeak-ng-data libswresample-dev libavutil-dev
    libavformat-dev libavcodec-dev libswscale-dev ffmpeg libchm-dev libpocketsphinx-dev pocketsphinx-en-us
    fonts-comic-neue fonts-dejavu-core"
DESKTOP_PACKAGES="xvfb tigervnc-standalone-server xauth openbox picom xdotool x11-utils imagemagick pulseaudio pulseaudio-utils python3
    at-spi2-core dbus-daemon python3-gi gir1.2-atspi-2.0"

CHECK_PACKAGES="clang-format clang clang-tidy cppcheck git"

say() { printf '== %s\n' "$*"; }

# need PACKAGE...: installs those that are not there, with apt, as root or through sudo.
need() {
    local missing=() package installed
    installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' 2>/dev/null)
    for package in "$@"; do
        grep -qx "$package installed" <<<"$installed" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local root=()
    [ "$(id -u)" -eq 0 ] || root=(sudo)
    say "installing: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${root[@]}" apt-get update && "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -20 "$log" >&2
        say "the packages could not be installed; the last lines of apt are above"
        return 1
    fi
    rm -f "$log"
}

# build PRESET [TARGET...]: configures when needed and builds.
build() {
    local preset=$1 log
    shift
    say "building ($preset)"
    mkdir -p build
    log=build/$preset.log
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" -- "$@"; } >"$log" 2>&1; then
        tail -60 "$log" >&2
        say "the build failed; all of it is in $log"
        return 1
    fi
}
