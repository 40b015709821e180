#pragma once

#include <systemd/sd-bus.h>

namespace plenzo {

/// Reads a message to its end and keeps nothing, with no call of the bus library but those that are
/// needed to learn what is there. Each step gives what the library does: above 0 something was
/// read, 0 it was the end of an array, below 0 the message is damaged.
class Walk {
public:
    explicit Walk(sd_bus_message* message) : m_message(message) {}

    int array(const char* elementType) {
        int step = sd_bus_message_enter_container(m_message, SD_BUS_TYPE_ARRAY, elementType);
        if (step <= 0) {
            return step;
        }
        while (step > 0) {
            step = element(elementType);
        }
        return step < 0 ? step : sd_bus_message_exit_container(m_message);
    }

private:
    int element(const char* type) {
        switch (type[0]) {
        case SD_BUS_TYPE_DICT_ENTRY_BEGIN:
            return entry();
        case SD_BUS_TYPE_ARRAY:
            return array("{sv}");
        default:
            return variant();
        }
    }

    int entry() {
        const int step = sd_bus_message_enter_container(m_message, SD_BUS_TYPE_DICT_ENTRY, "sv");
        const char* key = nullptr;
        if (step <= 0) {
            return step;
        }
        const bool isRead =
            sd_bus_message_read_basic(m_message, SD_BUS_TYPE_STRING, &key) > 0 && variant() > 0;
        return isRead ? sd_bus_message_exit_container(m_message) : -1;
    }

    int variant() {
        char type = 0;
        const char* contents = nullptr;
        const int step = sd_bus_message_peek_type(m_message, &type, &contents);
        if (step <= 0) {
            return step;
        }
        const bool isRead =
            sd_bus_message_enter_container(m_message, SD_BUS_TYPE_VARIANT, contents) > 0 &&
            contentsOfType(contents) > 0;
        return isRead ? sd_bus_message_exit_container(m_message) : -1;
    }

    int contentsOfType(const char* type) {
        double item = 0;
        if (type[0] == SD_BUS_TYPE_ARRAY) {
            return array(type + 1);
        }
        if (type[0] != SD_BUS_TYPE_STRUCT_BEGIN) {
            return sd_bus_message_read_basic(m_message, type[0], &item);
        }
        const bool isRead =
            sd_bus_message_enter_container(m_message, SD_BUS_TYPE_STRUCT, "d") > 0 &&
            sd_bus_message_read_basic(m_message, SD_BUS_TYPE_DOUBLE, &item) > 0;
        return isRead ? sd_bus_message_exit_container(m_message) : -1;
    }

    sd_bus_message* m_message;
};

} // namespace plenzo
