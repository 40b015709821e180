# To be sourced, with processes.sh: the agent and the host of the release build, on the desktop that
# the script finds.

checkout=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")
programs=$checkout/build/release/bin

# Starts the agent, unless one runs already.
startAgent() {
    if "$programs/plenzoalarm" --list >/dev/null 2>&1; then
        echo "An agent already runs on this desktop; the calendars go to it."
        return
    fi
    setpriv --pdeathsig TERM "$programs/plenzoalarm" &
    gdbus wait --session --timeout 20 org.plenzo.PlenzoAlarm
}

# Starts the host over these files and folders, and waits until the agent has their events.
startHost() {
    start "" "$programs/plenzohost" "$@"
    echo "$ready"
}

# Writes a calendar with an event in five minutes and eight seconds, of which an alarm tells five
# minutes ahead.
writeCalendarDueSoon() {
    cat >"$1" <<END
BEGIN:VCALENDAR
VERSION:2.0
PRODID:-//Plenzo//Calendar due soon//EN
NAME:Due soon
COLOR:crimson
BEGIN:VEVENT
UID:due-soon-$(date +%s)
DTSTAMP:$(date --utc +%Y%m%dT%H%M%SZ)
DTSTART:$(date --utc --date='5 minutes 8 seconds' +%Y%m%dT%H%M%SZ)
DURATION:PT30M
SUMMARY:Tea with Marit
LOCATION:Corner Café\, Harbour Street 4
BEGIN:VALARM
ACTION:DISPLAY
DESCRIPTION:Tea with Marit
TRIGGER:-PT5M
END:VALARM
END:VEVENT
END:VCALENDAR
END
}

showPendingAlarms() {
    echo
    "$programs/plenzoalarm" --list
    echo
}
