#!/usr/bin/env bash
# Start-up of the whole program under a virtual display: wall time from launch to the first
# painted frame of the welcome screen, and of Idioten 1 started with --game 0 and animation
# off, plus peak memory. With a ratio the program runs as on a screen of that device pixel
# ratio (QT_SCALE_FACTOR), on a virtual display with as many more pixels.
# Usage: bench/startup.sh [runs] [ratio]   (uses build/fjolkpatience, or $FJOLK_PROGRAM;
# installs xvfb and time)
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
PROGRAM="${FJOLK_PROGRAM:-$ROOT/build/fjolkpatience}"
RUNS="${1:-11}"
RATIO="${2:-1}"
for package in xvfb xauth time; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
        ${SUDO:-$([ "$(id -u)" -ne 0 ] && echo sudo)} apt-get install -y -qq "$package" >/dev/null
done

measure() { # measure ARGS... -> prints "milliseconds peak-kB" for one run
    local data out
    data="$(mktemp -d)"
    out="$(mktemp)"
    local start
    start=$(date +%s.%N)
    FJOLK_STARTUP_PROBE=1 /usr/bin/time -f 'peak-kb %M' -o "$out.time" \
        "$PROGRAM" --data-dir "$data" "$@" >"$out"
    awk -v s="$start" '/^first-paint/ { printf "%.1f ", ($2 - s) * 1000 }' "$out"
    awk '/^peak-kb/ { print $2 }' "$out.time"
    rm -rf "$data" "$out" "$out.time"
}

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

run() { # run LABEL ARGS...
    local label="$1"
    shift
    local times=() peaks=()
    for _ in $(seq "$RUNS"); do
        read -r ms kb < <(measure "$@")
        times+=("$ms")
        peaks+=("$kb")
    done
    printf '%-28s ratio %s  first paint %7s ms (median of %s)   peak memory %6s MB (median)\n' \
        "$label" "$RATIO" \
        "$(printf '%s\n' "${times[@]}" | median)" "$RUNS" \
        "$(printf '%s\n' "${peaks[@]}" | median | awk '{ printf "%.1f", $1 / 1024 }')"
}

if [ -z "${DISPLAY:-}" ]; then
    size="$(awk -v r="$RATIO" 'BEGIN { printf "%dx%d", 1280 * r, 1024 * r }')"
    exec xvfb-run -a -s "-screen 0 ${size}x24" "$0" "$@"
fi
if [ "$RATIO" != 1 ]; then
    export QT_SCALE_FACTOR="$RATIO"
fi
run "welcome screen"
run "Idioten 1, --game 0" --game 0 --no-animation
