# To be sourced: starts programs in the background and ends them all with the script. Who is in the
# background does not hear Ctrl-C, so that the script can end everything in order.

# Starts a program and waits for its first line, with which it says that it is ready: $ready. Its
# errors go to the file of the first argument, or to the script's when that is empty.
start() {
    local errors=$1 fifo
    shift
    fifo=$(mktemp --dry-run)
    mkfifo --mode=600 "$fifo"
    setpriv --pdeathsig TERM "$@" >"$fifo" 2>>"${errors:-/dev/stderr}" &
    exec {output}<"$fifo"
    rm "$fifo"
    read -r ready <&"$output" || { echo "$1 did not start${errors:+, see $errors}" >&2; exit 1; }
}

# Ends what was started, and waits until it has ended.
end() {
    trap '' INT TERM
    # shellcheck disable=SC2046 # one argument for each process
    kill $(jobs -rp) 2>/dev/null || true
    wait
}

trap end EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
