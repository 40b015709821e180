#include "propertylist/binary_scalars.h"

#include "propertylist/text_encoding.h"

#include <bit>

namespace plenzo::binary {

namespace {

std::uint64_t integerAt(const std::byte* place, std::size_t byteCount) {
    return ObjectTable::integerAt(place, byteCount);
}

/// Integers below 8 bytes are unsigned, those of 8 and 16 bytes are signed.
Value integerValue(const ObjectHead& head) {
    if (head.count < 8)
        return integerAt(head.content, head.count);
    if (head.count == 8)
        return static_cast<std::int64_t>(integerAt(head.content, 8));
    if (head.count != 16)
        return {};
    const std::uint64_t upper = integerAt(head.content, 8);
    const std::uint64_t lower = integerAt(head.content + 8, 8);
    if (upper == 0)
        return lower;
    const auto number = static_cast<std::int64_t>(lower);
    return upper == UINT64_MAX && number < 0 ? Value(number) : Value();
}

double doubleAt(const std::byte* place) {
    return std::bit_cast<double>(integerAt(place, 8));
}

float floatAt(const std::byte* place) {
    return std::bit_cast<float>(static_cast<std::uint32_t>(integerAt(place, 4)));
}

std::size_t writeInteger(Output& output, const Value& value) {
    const std::uint64_t number = value.unsignedIntegerValue();
    if (number > INT64_MAX) {
        // The shorter ones of this size are signed.
        output.writeByte(static_cast<std::uint8_t>(Marker::Integer) | 4);
        output.writeInteger(0, 8);
        output.writeInteger(number, 8);
        return 16;
    }
    if (value.integerValue() < 0) {
        output.writeByte(static_cast<std::uint8_t>(Marker::Integer) | 3);
        output.writeInteger(static_cast<std::uint64_t>(value.integerValue()), 8);
        return 8;
    }
    output.writeIntegerObject(number);
    return fittingSize(number);
}

std::size_t writeDouble(Output& output, Marker marker, double number) {
    output.writeMarker(marker);
    output.writeInteger(std::bit_cast<std::uint64_t>(number), 8);
    return 8;
}

} // namespace

Value scalarValue(const ObjectHead& head) {
    switch (head.marker) {
    case Marker::False:
        return false;
    case Marker::True:
        return true;
    case Marker::Integer:
        return integerValue(head);
    case Marker::Float:
        return double{floatAt(head.content)};
    case Marker::Double:
        return doubleAt(head.content);
    case Marker::Date:
        return Date{doubleAt(head.content)};
    default:
        return {};
    }
}

Value bytesValue(const ObjectHead& head) {
    const std::span bytes(head.content, byteCount(head));
    if (head.marker == Marker::Data)
        return Value::fromData(bytes);
    if (head.marker == Marker::Utf16String)
        return utf8FromUtf16BigEndian(bytes);
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return isAscii(text) ? Value(text) : Value();
}

std::uint64_t byteCount(const ObjectHead& head) {
    return head.marker == Marker::Utf16String ? 2 * head.count : head.count;
}

std::size_t writeText(Output& output, std::string_view text) {
    if (isAscii(text)) {
        output.writeMarker(Marker::AsciiString, text.size());
        output.writeBytes(std::as_bytes(std::span(text)));
        return text.size();
    }
    const std::u16string units = utf16FromUtf8(text);
    output.writeMarker(Marker::Utf16String, units.size());
    for (char16_t unit : units)
        output.writeInteger(unit, sizeof(unit));
    return sizeof(char16_t) * units.size();
}

std::size_t writeScalar(Output& output, const Value& value) {
    switch (value.type()) {
    case ValueType::String:
        return writeText(output, *value.string());
    case ValueType::Data:
        output.writeMarker(Marker::Data, value.data()->size());
        output.writeBytes(*value.data());
        return value.data()->size();
    case ValueType::Integer:
        return writeInteger(output, value);
    case ValueType::Real:
        return writeDouble(output, Marker::Double, value.doubleValue());
    case ValueType::Date:
        return writeDouble(output, Marker::Date, value.date()->secondsSinceReferenceDate);
    case ValueType::Boolean:
        output.writeMarker(value.boolValue() ? Marker::True : Marker::False);
        return 0;
    default:
        return 0;
    }
}

} // namespace plenzo::binary
