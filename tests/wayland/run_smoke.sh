#!/usr/bin/env bash
# The library on a Wayland display: Weston on a private runtime folder, a program (the gallery's
# paint check, a test) with GDK's Wayland backend and no X display at all (an X11 call would
# fail), and the compositor stopped again. Usage: run_smoke.sh COMMAND [ARGUMENTS...]
#
# Weston's headless backend has no seat (no pointer, no keyboard), and wxWidgets' modal dialogs
# take the pointer when they open: without a seat the toolkit itself crashes there. So the
# compositor runs on a virtual X screen through its X11 backend, which gives it a seat; the
# program under test speaks only Wayland to it.
set -euo pipefail
runtime=$(mktemp -d)
chmod 700 "$runtime"
weston_pid=""
cleanup() {
    # The compositor, its X screen and its clients form one process group of their own.
    [ -n "$weston_pid" ] && kill -- "-$weston_pid" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$runtime"
}
trap cleanup EXIT

set -m # the background job gets a process group of its own
XDG_RUNTIME_DIR=$runtime xvfb-run -a -s "-screen 0 1700x1300x24" weston --backend=x11-backend.so \
    --socket=varnel-smoke --idle-time=0 --width=1600 --height=1200 --no-config \
    >"$runtime/weston.log" 2>&1 &
weston_pid=$!
set +m
# The compositor is up once its socket is there (within ten seconds).
for _ in $(seq 100); do
    [ -S "$runtime/varnel-smoke" ] && break
    kill -0 "$weston_pid" 2>/dev/null || { cat "$runtime/weston.log"; exit 1; }
    sleep 0.1
done
[ -S "$runtime/varnel-smoke" ] || { echo "weston did not start"; cat "$runtime/weston.log"; exit 1; }

env -u DISPLAY XDG_RUNTIME_DIR="$runtime" WAYLAND_DISPLAY=varnel-smoke GDK_BACKEND=wayland \
    NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory "$@"
