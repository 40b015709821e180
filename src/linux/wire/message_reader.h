#pragma once

#include "propertylist/value.h"

#include <systemd/sd-bus.h>

namespace sdbus {
class Message;
}

namespace plenzo {

/// Moves along a bus message and reads the values that are no collections. A type is a signature in
/// the letters of D-Bus.
class MessageReader {
public:
    /// How far a read got. At the end of the array that the cursor is in there is nothing to read.
    enum class Step { Damaged, AtEnd, Done };

    explicit MessageReader(sdbus::Message& message);

    /// The container is a letter of the library, such as SD_BUS_TYPE_ARRAY; the contents are the
    /// type of what is inside, for an array of one element.
    Step enter(char container, const char* contents) {
        return stepOf(sd_bus_message_enter_container(m_message, container, contents));
    }
    /// Tries the type first, which may be null: to ask the library for the right one costs a
    /// seventh of all the time. Afterwards it is the right one, and lies in the message.
    Step enterVariant(const char*& likelyType);
    Step exit() { return stepOf(sd_bus_message_exit_container(m_message)); }

    /// Reads a string, number, boolean, date or data. A value of another type is skipped and
    /// becomes nothing.
    Step read(const char* type, Value& value);
    /// Points into the message.
    Step readText(const char*& text) {
        return stepOf(sd_bus_message_read_basic(m_message, SD_BUS_TYPE_STRING, &text));
    }
    Step skip(const char* type) { return stepOf(sd_bus_message_skip(m_message, type)); }

private:
    static constexpr Step stepOf(int result) {
        if (result < 0) {
            return Step::Damaged;
        }
        return result == 0 ? Step::AtEnd : Step::Done;
    }

    Step readBasic(const char* type, Value& value);
    template <typename Item>
    Step readNumber(char type, Value& value);
    Step readBoolean(Value& value);
    Step readString(Value& value);
    Step readDate(Value& value);
    Step readData(Value& value);

    sd_bus_message* m_message;
};

} // namespace plenzo
