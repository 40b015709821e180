#include "linux/wire/message_reader.h"

#include "linux/wire/message_access.h"

#include <cstdint>
#include <string_view>

namespace plenzo {

MessageReader::MessageReader(sdbus::Message& message) : m_message(libraryMessage(message)) {}

MessageReader::Step MessageReader::enterVariant(const char*& likelyType) {
    if (likelyType != nullptr && enter(SD_BUS_TYPE_VARIANT, likelyType) == Step::Done) {
        return Step::Done;
    }
    char variant = 0;
    const Step step = stepOf(sd_bus_message_peek_type(m_message, &variant, &likelyType));
    return step == Step::Done ? enter(SD_BUS_TYPE_VARIANT, likelyType) : step;
}

MessageReader::Step MessageReader::read(const char* type, Value& value) {
    if (type[1] == '\0') {
        return readBasic(type, value);
    }
    const std::string_view signature(type);
    if (signature == "(d)") {
        return readDate(value);
    }
    return signature == "ay" ? readData(value) : skip(type);
}

MessageReader::Step MessageReader::readBasic(const char* type, Value& value) {
    switch (type[0]) {
    case SD_BUS_TYPE_STRING:
        return readString(value);
    case SD_BUS_TYPE_BOOLEAN:
        return readBoolean(value);
    case SD_BUS_TYPE_BYTE:
        return readNumber<std::uint8_t>(type[0], value);
    case SD_BUS_TYPE_INT16:
        return readNumber<std::int16_t>(type[0], value);
    case SD_BUS_TYPE_UINT16:
        return readNumber<std::uint16_t>(type[0], value);
    case SD_BUS_TYPE_INT32:
        return readNumber<std::int32_t>(type[0], value);
    case SD_BUS_TYPE_UINT32:
        return readNumber<std::uint32_t>(type[0], value);
    case SD_BUS_TYPE_INT64:
        return readNumber<std::int64_t>(type[0], value);
    case SD_BUS_TYPE_UINT64:
        return readNumber<std::uint64_t>(type[0], value);
    case SD_BUS_TYPE_DOUBLE:
        return readNumber<double>(type[0], value);
    default:
        return skip(type);
    }
}

template <typename Item>
MessageReader::Step MessageReader::readNumber(char type, Value& value) {
    Item item = 0;
    const Step step = stepOf(sd_bus_message_read_basic(m_message, type, &item));
    value = Value(item);
    return step;
}

MessageReader::Step MessageReader::readBoolean(Value& value) {
    int item = 0;
    const Step step = stepOf(sd_bus_message_read_basic(m_message, SD_BUS_TYPE_BOOLEAN, &item));
    value = Value(item != 0);
    return step;
}

MessageReader::Step MessageReader::readString(Value& value) {
    const char* text = nullptr;
    const Step step = readText(text);
    if (step == Step::Done) {
        value = Value(std::string_view(text));
    }
    return step;
}

MessageReader::Step MessageReader::readDate(Value& value) {
    Date date;
    const bool isRead = enter(SD_BUS_TYPE_STRUCT, "d") == Step::Done &&
                        sd_bus_message_read_basic(m_message, SD_BUS_TYPE_DOUBLE,
                                                  &date.secondsSinceReferenceDate) > 0 &&
                        exit() == Step::Done;
    value = Value(date);
    return isRead ? Step::Done : Step::Damaged;
}

MessageReader::Step MessageReader::readData(Value& value) {
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (sd_bus_message_read_array(m_message, SD_BUS_TYPE_BYTE, &bytes, &size) <= 0) {
        // So it is in a message of the other byte order, which no program of this machine sends.
        return skip("ay");
    }
    value = Value::fromData({static_cast<const std::byte*>(bytes), size});
    return Step::Done;
}

} // namespace plenzo
