#include "linux/wire/value_decoder.h"

#include "linux/wire/message_reader.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace plenzo {

namespace {

using Step = MessageReader::Step;

bool isCollection(const char* type) {
    const std::string_view signature(type);
    return signature == "a{sv}" || signature == "av" || signature == "as" || signature == "aa{sv}";
}

/// Walks one message. What is read is collected on two stacks, so that every array and dictionary
/// is made once, at its size. A value that is left out is read as nothing. Records are alike, so a
/// variant is first taken for what the last one under its key was.
class ValueDecoder {
public:
    explicit ValueDecoder(sdbus::Message& message) : m_reader(message) {}

    /// The next value, whose type this is.
    Step read(const char* type, Value& value);

private:
    Step readVariant(Value& value, const char*& likelyType);
    Step readCollection(const char* elementType, Value& value);
    Step readElements(const char* elementType);
    Step readEntries();
    Step readEntry();
    Array takeElements(std::size_t begin);
    Dictionary takeEntries(std::size_t begin);

    /// Where the type last seen under the key is remembered; it lies in the message. Keys that
    /// share a place only guess wrong more often; the factors keep those of records apart.
    const char*& likelyType(std::string_view key) {
        const auto ends = key.empty() ? 0 : key.front() * 5 + key.back();
        const std::size_t number = static_cast<std::size_t>(ends) + key.size() * 22;
        return m_likelyTypes[number % m_likelyTypes.size()];
    }

    static constexpr int deepestNesting = 32;

    MessageReader m_reader;
    int m_nesting = 0;
    std::array<const char*, 128> m_likelyTypes{};
    std::vector<Value> m_elements;
    std::vector<Dictionary::Entry> m_entries;
};

Step ValueDecoder::read(const char* type, Value& value) {
    if (type[0] != SD_BUS_TYPE_ARRAY || !isCollection(type)) {
        return m_reader.read(type, value);
    }
    return m_nesting == deepestNesting ? m_reader.skip(type) : readCollection(type + 1, value);
}

Step ValueDecoder::readVariant(Value& value, const char*& likelyType) {
    const Step step = m_reader.enterVariant(likelyType);
    if (step != Step::Done) {
        return step;
    }
    // Reading what is inside may bring a new likely type for this place.
    const char* type = likelyType;
    const bool isRead = read(type, value) == Step::Done && m_reader.exit() == Step::Done;
    return isRead ? Step::Done : Step::Damaged;
}

Step ValueDecoder::readCollection(const char* elementType, Value& value) {
    const Step step = m_reader.enter(SD_BUS_TYPE_ARRAY, elementType);
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
    return m_reader.exit();
}

Step ValueDecoder::readElements(const char* elementType) {
    const bool areVariants = elementType[0] == SD_BUS_TYPE_VARIANT;
    const char* likelyType = nullptr;
    while (true) {
        Value element;
        const Step step =
            areVariants ? readVariant(element, likelyType) : read(elementType, element);
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
    const Step step = m_reader.enter(SD_BUS_TYPE_DICT_ENTRY, "sv");
    if (step != Step::Done) {
        return step;
    }
    const char* text = nullptr;
    if (m_reader.readText(text) != Step::Done) {
        return Step::Damaged;
    }
    const std::string_view key(text);
    Value value;
    if (readVariant(value, likelyType(key)) != Step::Done) {
        return Step::Damaged;
    }
    if (!value.isNothing()) {
        m_entries.push_back({Key(key), std::move(value)});
    }
    return m_reader.exit();
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
    // Whoever keeps it may add something of its own.
    dictionary.reserve(m_entries.size() - begin + 1);
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
