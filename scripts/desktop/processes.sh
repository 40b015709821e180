# To be sourced: starts programs in the background and ends them all with the script. Who is in the
# background does not hear Ctrl-C, so that the script can end everything in order.

# Starts a program whose standard output can then be read from the descriptor $output. Its errors go
# to the file of the first argument, or to the script's when that is empty.
startReadable() {
    local errors=$1 fifo
    shift
    fifo=$(mktemp --dry-run)
    mkfifo --mode=600 "$fifo"
    setpriv --pdeathsig TERM "$@" >"$fifo" 2>>"${errors:-/dev/stderr}" &
    exec {output}<"$fifo"
    rm "$fifo"
}

# The same, and waits for the program's first line, with which it says that it is ready: $ready.
start() {
    startReadable "$@"
    read -r ready <&"$output" || { echo "$2 did not start${1:+, see $1}" >&2; exit 1; }
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
