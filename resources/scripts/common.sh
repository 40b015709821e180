# To be sourced by the scripts beside this file, which are called like this:
#
#   SCRIPT mail_attachment SUBJECT BODY ATTACHMENT SEND ADDRESS NAME
#
# SEND is 1 for a message that is to be sent unseen and 0 for one that is to be left open; ATTACHMENT
# and NAME may be empty. Exit status 0 says that the client has taken the message.
# shellcheck shell=sh
# shellcheck disable=SC2034 # the scripts use what is set here

[ "$#" -eq 7 ] && [ "$1" = mail_attachment ] || exit 64
body=$3
attachment=$4
send=$5
address=$6

# A header is one line.
one_line() {
    printf '%s' "$1" | LC_ALL=C tr '\001-\037\177' '[ *]'
}

subject=$(one_line "$2")
name=$(one_line "$7")

# What a client could take for an option, a command, a file or a second header.
[ "$(one_line "$address")" = "$address" ] || exit 65
case $address in
'' | [-\|/+!\&~]*) exit 65 ;;
esac

# The text as part of a URL (RFC 3986), with the line ends of one (RFC 6068): as much as fits into so
# many characters, and an ellipsis.
percent_encoded() {
    printf '%s' "$1" | od -An -v -tx1 | LC_ALL=C awk -v limit="$2" '
        BEGIN {
            for (code = 33; code < 127; code++) {
                character = sprintf("%c", code)
                if (character ~ /[A-Za-z0-9._~@-]/) {
                    encoded[sprintf("%02x", code)] = character
                }
            }
            encoded["0a"] = "%0D%0A"
            encoded["0d"] = ""
        }
        {
            for (field = 1; field <= NF; field++) {
                byte = $field ""
                if (used >= limit && (byte < "80" || byte >= "c0")) {
                    printf "%%E2%%80%%A6"
                    exit
                }
                piece = byte in encoded ? encoded[byte] : "%" toupper(byte)
                used += length(piece)
                printf "%s", piece
            }
        }'
}

# A URL of the message that fits into one argument. The first argument names the client's parameter
# for an attachment; an empty one, that it has none.
mailto_url() {
    printf 'mailto:%s?subject=%s&body=%s' "$(percent_encoded "$address" 2000)" \
        "$(percent_encoded "$subject" 10000)" "$(percent_encoded "$body" 100000)"
    if [ -n "$1" ] && [ -n "$attachment" ]; then
        printf '&%s=%s' "$1" "$(percent_encoded "$attachment" 12000)"
    fi
}

# The recipient as a header has it (RFC 5322), the name without what would have to be quoted.
mailbox() {
    if [ -n "$name" ]; then
        printf '%s <%s>' "$(printf '%s' "$name" | LC_ALL=C tr '\\"<>(),:;@[]' '[ *]')" "$address"
    else
        printf '%s' "$address"
    fi
}

# Sets $command: that of the Flatpak when the user's client is one, else the one that the client's
# desktop entry starts when the entry has a name of its own, else the first of these that is there.
# Fails without any.
find_command() {
    for command in "${XDG_DATA_HOME:-$HOME/.local/share}/flatpak/exports/bin/$PLENZO_MAIL_CLIENT" \
        "/var/lib/flatpak/exports/bin/$PLENZO_MAIL_CLIENT" "$PLENZO_MAIL_PROGRAM" "$@" \
        "/snap/bin/$1"; do
        case $command in '' | */) continue ;; esac
        if command -v "$command" >/dev/null; then
            return 0
        fi
    done
    exit 69
}
PLENZO_MAIL_CLIENT=${PLENZO_MAIL_CLIENT-}
PLENZO_MAIL_PROGRAM=${PLENZO_MAIL_PROGRAM-}

# Starts a client that may go on, apart from the script, which has a time limit. One that ends within
# seconds, as it does when it runs already, says whether it went well.
start_apart() {
    setsid "$@" &
    client=$!
    for _ in 1 2 3 4 5 6 7 8 9 10; do
        sleep 1
        if ! kill -0 "$client" 2>/dev/null; then
            wait "$client"
            return
        fi
    done
}

# The same for a client of the terminal, in a new one.
start_in_terminal() {
    if command -v xdg-terminal-exec >/dev/null; then
        start_apart xdg-terminal-exec "$@"
    elif command -v x-terminal-emulator >/dev/null; then
        start_apart x-terminal-emulator -e "$@"
    else
        start_apart xterm -e "$@"
    fi
}
