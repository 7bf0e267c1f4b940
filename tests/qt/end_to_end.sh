#!/usr/bin/env bash
# The real aerix binary on a fresh data root under Xvfb: disclaimer accepted, the database
# picked at the start-up chooser, the simulator refused in the PLAN view with its warning, then
# MAP, the simulator, the instrument views, a screenshot and Exit; the saved settings are checked.
# Usage: end_to_end.sh AERIX_BINARY
set -euo pipefail
aerix="$1"
if ! command -v xvfb-run >/dev/null; then
    echo "SKIP: xvfb-run is not installed (scripts/deps test installs xvfb and xauth)"
    exit 77
fi
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
root="$work/root"
cat >"$work/script" <<'SCRIPT'
# Start simulation in the PLAN view: refused with a warning.
command 40057
# MAP, then the simulator.
command 40040
command 40057
# Long enough for a second start to find this one and give way.
wait 4
# AERIX (the loading dialog runs), HSI, back to PLAN.
command 40053
command 40041
# The HSI's drawing thread has had time to hand over a frame or two.
wait 1.5
screenshot HSI
command 40039
wait 0.3
screenshot SHOT
exit
SCRIPT
sed -i "s|SHOT|$work/plan.png|; s|HSI$|$work/hsi.png|" "$work/script"

cat >"$work/session" <<SESSION
"$aerix" --home "$root" --accept-disclaimer --database World --view plan 2>"$work/stderr" &
first=\$!
sleep 2.5
# A second start on the same data root raises the first window and exits at once.
timeout 10 "$aerix" --home "$root" --accept-disclaimer 2>"$work/second.stderr"
echo \$? >"$work/second.code"
wait \$first
SESSION
set +e
AERIX_SPLASH_MS=100 AERIX_SCRIPT="$work/script" timeout 60 \
    xvfb-run -a -s "-screen 0 800x700x24" bash "$work/session"
code=$?
set -e
fail() {
    echo "FAIL: $*"
    echo "--- stderr"
    cat "$work/stderr"
    exit 1
}
[ "$code" -eq 0 ] || fail "aerix exited with $code"
[ "$(cat "$work/second.code")" -eq 0 ] || fail "the second start did not give way"
grep -qF "box: [Warning] Select Map, HSI or AERIX view before starting simulation" "$work/stderr" ||
    fail "no warning for the simulator in the PLAN view"
[ "$(grep -c 'Select Map, HSI or AERIX view' "$work/stderr")" -eq 1 ] ||
    fail "the simulator was refused in the MAP view too"
for shot in plan hsi; do
    head -c 8 "$work/$shot.png" | od -An -c | grep -q 'P   N   G' || fail "no PNG screenshot of $shot"
done
reg="$root/registry.reg"
grep -qF '"CuDbase"="World"' "$reg" || fail "database name not saved"
grep -qF '"CuPlanName"="Plan1"' "$reg" || fail "plan name not saved"
grep -qF '"EnableHotKeys"=dword:00000001' "$reg" || fail "flags not saved at exit"
[ -f "$root/My Documents/Aerix/splash2" ] || fail "splash bitmap not written"
echo "PASS"
