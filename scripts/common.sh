# Shared by the scripts: configure and build a tree, and run a command on a display (a virtual
# one when there is none).

configure_and_build() {
    local dir=$1
    shift
    cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
    cmake --build "$dir"
}

on_display() {
    if [ -n "${DISPLAY:-}" ]; then
        "$@"
    else
        NO_AT_BRIDGE=1 xvfb-run -a -s "-screen 0 1600x1200x24" "$@"
    fi
}
