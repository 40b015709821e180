#include "linux/wire/value_encoder.h"

#include "linux/wire/message_writer.h"

#include <algorithm>

namespace plenzo {

namespace {

using Container = MessageWriter::Container;

bool areAll(const Array& array, ValueType type) {
    return !array.empty() &&
           std::ranges::all_of(array, [type](const Value& value) { return value.type() == type; });
}

const char* typeOfArray(const Array& array) {
    if (areAll(array, ValueType::Dictionary)) {
        return "aa{sv}";
    }
    return areAll(array, ValueType::String) ? "as" : "av";
}

bool isLargeUnsigned(const Value& value) {
    return value.unsignedIntegerValue() > static_cast<std::uint64_t>(INT64_MAX);
}

/// What the value's variant holds; null for one that is left out.
const char* typeOfValue(const Value& value) {
    switch (value.type()) {
    case ValueType::String:
        return "s";
    case ValueType::Integer:
        return isLargeUnsigned(value) ? "t" : "x";
    case ValueType::Real:
        return "d";
    case ValueType::Boolean:
        return "b";
    case ValueType::Date:
        return "(d)";
    case ValueType::Data:
        return "ay";
    case ValueType::Array:
        return typeOfArray(*value.array());
    case ValueType::Dictionary:
        return "a{sv}";
    case ValueType::Nothing:
    case ValueType::Color:
        break;
    }
    return nullptr;
}

class ValueEncoder {
public:
    explicit ValueEncoder(sdbus::Message& message) : m_writer(message) {}

    void appendDictionaries(const Array& dictionaries);
    void appendDictionary(const Dictionary& dictionary);
    [[nodiscard]] bool hasFailed() const { return m_writer.hasFailed(); }

private:
    void appendEntry(const Key& key, const Value& value);
    void appendVariant(const Value& value, const char* type);
    void appendContents(const Value& value, const char* type);
    void appendInteger(const Value& value);
    void appendArray(const Array& array, const char* elementType);
    void appendStrings(const Array& strings);
    void appendVariants(const Array& values);
    [[nodiscard]] bool fits(const char* type, std::size_t containersAround) const;

    MessageWriter m_writer;
};

void ValueEncoder::appendDictionaries(const Array& dictionaries) {
    m_writer.open(Container::Array, "a{sv}");
    for (const Value& value : dictionaries) {
        const Dictionary* dictionary = value.dictionary();
        if (dictionary != nullptr && m_writer.hasRoomFor(1) && !hasFailed()) {
            appendDictionary(*dictionary);
        }
    }
    m_writer.close();
}

void ValueEncoder::appendDictionary(const Dictionary& dictionary) {
    m_writer.open(Container::Array, "{sv}");
    for (const auto& [key, value] : dictionary) {
        if (!hasFailed()) {
            appendEntry(key, value);
        }
    }
    m_writer.close();
}

void ValueEncoder::appendEntry(const Key& key, const Value& value) {
    const char* type = typeOfValue(value);
    if (!fits(type, 2)) {
        return;
    }
    m_writer.open(Container::Entry, "sv");
    m_writer.appendText(key.name());
    appendVariant(value, type);
    m_writer.close();
}

void ValueEncoder::appendVariant(const Value& value, const char* type) {
    m_writer.open(Container::Variant, type);
    appendContents(value, type);
    m_writer.close();
}

void ValueEncoder::appendContents(const Value& value, const char* type) {
    switch (value.type()) {
    case ValueType::String:
        return m_writer.appendText(*value.string());
    case ValueType::Integer:
        return appendInteger(value);
    case ValueType::Real:
        return m_writer.append(SD_BUS_TYPE_DOUBLE, value.doubleValue());
    case ValueType::Boolean:
        return m_writer.append(SD_BUS_TYPE_BOOLEAN, static_cast<int>(value.boolValue()));
    case ValueType::Date:
        m_writer.open(Container::Struct, "d");
        m_writer.append(SD_BUS_TYPE_DOUBLE, value.date()->secondsSinceReferenceDate);
        return m_writer.close();
    case ValueType::Data:
        return m_writer.appendBytes(*value.data());
    case ValueType::Array:
        return appendArray(*value.array(), type + 1);
    case ValueType::Dictionary:
        return appendDictionary(*value.dictionary());
    case ValueType::Nothing:
    case ValueType::Color:
        break;
    }
}

void ValueEncoder::appendInteger(const Value& value) {
    if (isLargeUnsigned(value)) {
        m_writer.append(SD_BUS_TYPE_UINT64, value.unsignedIntegerValue());
    } else {
        m_writer.append(SD_BUS_TYPE_INT64, value.integerValue());
    }
}

void ValueEncoder::appendArray(const Array& array, const char* elementType) {
    switch (elementType[0]) {
    case SD_BUS_TYPE_ARRAY:
        return appendDictionaries(array);
    case SD_BUS_TYPE_STRING:
        return appendStrings(array);
    default:
        return appendVariants(array);
    }
}

void ValueEncoder::appendStrings(const Array& strings) {
    m_writer.open(Container::Array, "s");
    for (const Value& string : strings) {
        m_writer.appendText(*string.string());
    }
    m_writer.close();
}

void ValueEncoder::appendVariants(const Array& values) {
    m_writer.open(Container::Array, "v");
    for (const Value& value : values) {
        const char* type = typeOfValue(value);
        if (fits(type, 1) && !hasFailed()) {
            appendVariant(value, type);
        }
    }
    m_writer.close();
}

bool ValueEncoder::fits(const char* type, std::size_t containersAround) const {
    if (type == nullptr) {
        return false;
    }
    const bool isContainer = type[0] == SD_BUS_TYPE_ARRAY || type[0] == SD_BUS_TYPE_STRUCT_BEGIN;
    return m_writer.hasRoomFor(containersAround + (isContainer ? 1 : 0));
}

} // namespace

bool appendDictionaries(sdbus::Message& message, const Array& dictionaries) {
    ValueEncoder encoder(message);
    encoder.appendDictionaries(dictionaries);
    return !encoder.hasFailed();
}

bool appendDictionary(sdbus::Message& message, const Dictionary& dictionary) {
    ValueEncoder encoder(message);
    encoder.appendDictionary(dictionary);
    return !encoder.hasFailed();
}

} // namespace plenzo
