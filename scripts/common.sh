# Shared by scripts/play and scripts/test: installs what the build needs, then builds.
set -euo pipefail

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

# Debian 12 / Ubuntu package names. fonts-dejavu-core gives the card labels and the
# hiscore rows their faces; fonts-dejavu-extra the narrower face of the welcome screen's
# tightest texts; librsvg2-bin renders the program's icon at its PNG sizes.
FJOLK_PACKAGES=(cmake ninja-build g++ pkg-config qt6-base-dev libsqlite3-dev
                libgl-dev fonts-dejavu-core fonts-dejavu-extra sqlite3 libbenchmark-dev
                librsvg2-bin
                # the tests turn Qt's accessibility on as a screen reader does
                qt6-base-private-dev
                # the solver benchmark's Freecell peer, linked into bench_losare only
                libfreecell-solver-dev
                # links the test programs in a tenth of the time (the build falls back without)
                lld)

# The program and its tests optimised as a player gets them, without debug information,
# which would make the build a third slower (configure a build of your own with
# -DCMAKE_BUILD_TYPE=RelWithDebInfo to debug).
FJOLK_BUILD_TYPE=(-DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG")

install_missing() {
    local missing=()
    for package in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing ${missing[*]}" >&2
    local sudo=()
    [ "$(id -u)" -ne 0 ] && sudo=(sudo)
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >&2
}

# phase NAME: closes the phase before with the CPU (user+sys) and wall seconds it took, the
# processes it ran included, so a slow step shows in the log; `phase` alone closes the last.
FJOLK_PHASE=""
phase() {
    local stamp
    stamp="$(mktemp)"
    times >"$stamp"
    local cpu
    cpu="$(awk 'NR == 2 { for (i = 1; i <= 2; i++) { split($i, t, /[ms]/); s += t[1] * 60 + t[2] }
                          printf "%.0f", s }' "$stamp")"
    rm -f "$stamp"
    if [ -n "$FJOLK_PHASE" ]; then
        printf '== %s: %d s CPU, %d s wall\n' "$FJOLK_PHASE" "$((cpu - FJOLK_PHASE_CPU))" \
            "$((SECONDS - FJOLK_PHASE_WALL))" >&2
    fi
    FJOLK_PHASE="$*" FJOLK_PHASE_CPU="$cpu" FJOLK_PHASE_WALL="$SECONDS"
}

# build FOLDER [cmake options...]: configures once, then builds incrementally; with
# TARGET set in the environment, only that target.
build() {
    local folder="$1"
    shift
    if [ ! -f "$folder/build.ninja" ]; then
        cmake -S "$ROOT" -B "$folder" -G Ninja "$@"
    fi
    cmake --build "$folder" --parallel "$(nproc)" ${TARGET:+--target "$TARGET"}
}
