// Takes whatever bytes come as what follows the scheme of a command. An identifier must find
// nothing but what is there, and a quick entry must become an item that can be read again.

#include "host/commands/host_command.h"
#include "host/edits/calendar_edits.h"
#include "host/edits/command_targets.h"
#include "host/edits/component_text.h"
#include "host/ical/calendar_text.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using namespace plenzo;

void require(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

void requireItem(const std::string& typed) {
    const QuickEntry entry = readQuickEntry(typed, {});
    const std::string component = componentText(entry, {"uid-1", {}, "Europe/Berlin"});
    const EditResult added = addComponent("", component);
    require(added.error.empty() && holdsItem(added.text, "uid-1"));
    const CalendarText calendar = readCalendarText(added.text);
    require(calendar.items.size() == 1 && calendar.items[0].kind == entry.kind);
    require(calendar.items[0].start.has_value() == entry.start.has_value());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string rest(reinterpret_cast<const char*>(data), size);
    const auto command = readHostCommand("plenzoevent://" + rest);
    if (!command) {
        return 0;
    }
    require(!isReplacedBy(*command, {.kind = HostCommand::Kind::Show}));
    if (command->kind == HostCommand::Kind::New) {
        requireItem(command->text);
    }
    static const CalendarSet empty;
    require(!CommandTargets(empty).alarm(command->uid));
    return 0;
}
