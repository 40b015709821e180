#include "linux/wire/value_decoder.h"

#include "linux/wire/message_access.h"

#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace plenzo {

namespace {

/// How far a read got. At the end of the array that the cursor is in there is nothing to read.
enum class Step { Damaged, AtEnd, Done };

constexpr Step stepOf(int result) {
    if (result < 0) {
        return Step::Damaged;
    }
    return result == 0 ? Step::AtEnd : Step::Done;
}

/// Walks one message. What is read is collected on two stacks, so that every array and dictionary
/// is made once, at its size. A value that is left out is read as nothing.
class ValueDecoder {
public:
    explicit ValueDecoder(sdbus::Message& message) : m_message(libraryMessage(message)) {}

    /// The next value, whose type this is.
    Step read(const char* type, Value& value);

private:
    Step readBasic(char type, Value& value);
    template <typename Item>
    Step readNumber(char type, Value& value);
    Step readBoolean(Value& value);
    Step readString(Value& value);
    Step readDate(Value& value);
    Step readData(Value& value);
    Step readVariant(Value& value);
    Step readCollection(const char* elementType, Value& value);
    Step readElements(const char* elementType);
    Step readEntries();
    Step readEntry();
    Array takeElements(std::size_t begin);
    Dictionary takeEntries(std::size_t begin);

    Step skip(const char* type) { return stepOf(sd_bus_message_skip(m_message, type)); }
    Step enter(char container, const char* contents) {
        return stepOf(sd_bus_message_enter_container(m_message, container, contents));
    }
    Step exit() { return stepOf(sd_bus_message_exit_container(m_message)); }

    static constexpr int deepestNesting = 32;

    sd_bus_message* m_message;
    int m_nesting = 0;
    std::vector<Value> m_elements;
    std::vector<Dictionary::Entry> m_entries;
};

Step ValueDecoder::read(const char* type, Value& value) {
    if (type[1] == '\0') {
        return readBasic(type[0], value);
    }
    const std::string_view signature(type);
    if (signature == "(d)") {
        return readDate(value);
    }
    if (signature == "ay") {
        return readData(value);
    }
    const bool isCollection =
        signature == "a{sv}" || signature == "av" || signature == "as" || signature == "aa{sv}";
    if (!isCollection || m_nesting == deepestNesting) {
        return skip(type);
    }
    return readCollection(type + 1, value);
}

Step ValueDecoder::readBasic(char type, Value& value) {
    switch (type) {
    case SD_BUS_TYPE_STRING:
        return readString(value);
    case SD_BUS_TYPE_BOOLEAN:
        return readBoolean(value);
    case SD_BUS_TYPE_BYTE:
        return readNumber<std::uint8_t>(type, value);
    case SD_BUS_TYPE_INT16:
        return readNumber<std::int16_t>(type, value);
    case SD_BUS_TYPE_UINT16:
        return readNumber<std::uint16_t>(type, value);
    case SD_BUS_TYPE_INT32:
        return readNumber<std::int32_t>(type, value);
    case SD_BUS_TYPE_UINT32:
        return readNumber<std::uint32_t>(type, value);
    case SD_BUS_TYPE_INT64:
        return readNumber<std::int64_t>(type, value);
    case SD_BUS_TYPE_UINT64:
        return readNumber<std::uint64_t>(type, value);
    case SD_BUS_TYPE_DOUBLE:
        return readNumber<double>(type, value);
    default:
        return skip(std::string(1, type).c_str());
    }
}

template <typename Item>
Step ValueDecoder::readNumber(char type, Value& value) {
    Item item = 0;
    const Step step = stepOf(sd_bus_message_read_basic(m_message, type, &item));
    value = Value(item);
    return step;
}

Step ValueDecoder::readBoolean(Value& value) {
    int item = 0;
    const Step step = stepOf(sd_bus_message_read_basic(m_message, SD_BUS_TYPE_BOOLEAN, &item));
    value = Value(item != 0);
    return step;
}

Step ValueDecoder::readString(Value& value) {
    const char* text = nullptr;
    const Step step = stepOf(sd_bus_message_read_basic(m_message, SD_BUS_TYPE_STRING, &text));
    if (step == Step::Done) {
        value = Value(std::string_view(text));
    }
    return step;
}

Step ValueDecoder::readDate(Value& value) {
    Date date;
    const bool isRead = enter(SD_BUS_TYPE_STRUCT, "d") == Step::Done &&
                        sd_bus_message_read_basic(m_message, SD_BUS_TYPE_DOUBLE,
                                                  &date.secondsSinceReferenceDate) > 0 &&
                        exit() == Step::Done;
    value = Value(date);
    return isRead ? Step::Done : Step::Damaged;
}

Step ValueDecoder::readData(Value& value) {
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (sd_bus_message_read_array(m_message, SD_BUS_TYPE_BYTE, &bytes, &size) <= 0) {
        // So it is in a message of the other byte order, which no program of this machine sends.
        return skip("ay");
    }
    value = Value::fromData({static_cast<const std::byte*>(bytes), size});
    return Step::Done;
}

Step ValueDecoder::readVariant(Value& value) {
    char type = 0;
    const char* contents = nullptr;
    const Step step = stepOf(sd_bus_message_peek_type(m_message, &type, &contents));
    if (step != Step::Done) {
        return step;
    }
    const bool isRead = enter(SD_BUS_TYPE_VARIANT, contents) == Step::Done &&
                        read(contents, value) == Step::Done && exit() == Step::Done;
    return isRead ? Step::Done : Step::Damaged;
}

Step ValueDecoder::readCollection(const char* elementType, Value& value) {
    const Step step = enter(SD_BUS_TYPE_ARRAY, elementType);
    if (step != Step::Done) {
        return step;
    }
    const bool isDictionary = elementType[0] == '{';
    const std::size_t firstElement = m_elements.size();
    const std::size_t firstEntry = m_entries.size();
    ++m_nesting;
    const Step end = isDictionary ? readEntries() : readElements(elementType);
    --m_nesting;
    if (end != Step::AtEnd) {
        return Step::Damaged;
    }
    value = isDictionary ? Value(takeEntries(firstEntry)) : Value(takeElements(firstElement));
    return exit();
}

Step ValueDecoder::readElements(const char* elementType) {
    const bool areVariants = elementType[0] == SD_BUS_TYPE_VARIANT;
    while (true) {
        Value element;
        const Step step = areVariants ? readVariant(element) : read(elementType, element);
        if (step != Step::Done) {
            return step;
        }
        if (!element.isNothing()) {
            m_elements.push_back(std::move(element));
        }
    }
}

Step ValueDecoder::readEntries() {
    Step step = Step::Done;
    while (step == Step::Done) {
        step = readEntry();
    }
    return step;
}

Step ValueDecoder::readEntry() {
    const Step step = enter(SD_BUS_TYPE_DICT_ENTRY, "sv");
    if (step != Step::Done) {
        return step;
    }
    const char* key = nullptr;
    Value value;
    if (sd_bus_message_read_basic(m_message, SD_BUS_TYPE_STRING, &key) <= 0 ||
        readVariant(value) != Step::Done) {
        return Step::Damaged;
    }
    if (!value.isNothing()) {
        m_entries.push_back({Key(std::string_view(key)), std::move(value)});
    }
    return exit();
}

Array ValueDecoder::takeElements(std::size_t begin) {
    const auto first = m_elements.begin() + static_cast<std::ptrdiff_t>(begin);
    Array array;
    array.reserve(m_elements.size() - begin);
    for (auto element = first; element != m_elements.end(); ++element) {
        array.append(std::move(*element));
    }
    m_elements.erase(first, m_elements.end());
    return array;
}

Dictionary ValueDecoder::takeEntries(std::size_t begin) {
    const auto first = m_entries.begin() + static_cast<std::ptrdiff_t>(begin);
    Dictionary dictionary;
    dictionary.reserve(m_entries.size() - begin);
    for (auto entry = first; entry != m_entries.end(); ++entry) {
        dictionary.set(std::move(entry->key), std::move(entry->value));
    }
    m_entries.erase(first, m_entries.end());
    return dictionary;
}

/// The argument as a value; nothing when it could not be read.
Value readArgument(sdbus::Message& message, const char* type) {
    Value value;
    if (ValueDecoder(message).read(type, value) != Step::Done) {
        return {};
    }
    return value;
}

} // namespace

std::optional<Array> readDictionaries(sdbus::Message& message) {
    const Value value = readArgument(message, "aa{sv}");
    return value.isNothing() ? std::nullopt : std::optional(*value.array());
}

std::optional<Dictionary> readDictionary(sdbus::Message& message) {
    const Value value = readArgument(message, "a{sv}");
    return value.isNothing() ? std::nullopt : std::optional(*value.dictionary());
}

} // namespace plenzo
