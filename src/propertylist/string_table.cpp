#include "propertylist/string_table.h"

#include "propertylist/binary_property_list.h"
#include "propertylist/dictionary.h"
#include "propertylist/string_table_scanner.h"
#include "propertylist/text_encoding.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace plenzo {

namespace {

enum class Encoding { Utf8, Utf16BigEndian, Utf16LittleEndian };

struct EncodedText {
    Encoding encoding;
    std::span<const std::byte> bytes;
};

bool startsWith(std::span<const std::byte> bytes, std::string_view start) {
    return bytes.size() >= start.size() &&
           std::ranges::equal(bytes.first(start.size()), std::as_bytes(std::span(start)));
}

/// Without a mark, a zero in the first or the second byte tells the order: a strings file begins
/// with an ASCII character.
EncodedText detected(std::span<const std::byte> bytes) {
    using namespace std::string_view_literals;
    if (startsWith(bytes, "\xEF\xBB\xBF")) {
        return {Encoding::Utf8, bytes.subspan(3)};
    }
    if (startsWith(bytes, "\xFE\xFF")) {
        return {Encoding::Utf16BigEndian, bytes.subspan(2)};
    }
    if (startsWith(bytes, "\xFF\xFE")) {
        return {Encoding::Utf16LittleEndian, bytes.subspan(2)};
    }
    if (bytes.size() >= 2 && bytes[0] == std::byte{0} && bytes[1] != std::byte{0}) {
        return {Encoding::Utf16BigEndian, bytes};
    }
    if (bytes.size() >= 2 && bytes[0] != std::byte{0} && bytes[1] == std::byte{0}) {
        return {Encoding::Utf16LittleEndian, bytes};
    }
    return {Encoding::Utf8, bytes};
}

std::string utf8FromUtf16LittleEndian(std::span<const std::byte> bytes) {
    std::vector<std::byte> swapped(bytes.begin(), bytes.end());
    for (std::size_t unit = 0; unit + 1 < swapped.size(); unit += 2) {
        std::swap(swapped[unit], swapped[unit + 1]);
    }
    return utf8FromUtf16BigEndian(swapped);
}

std::string utf8Text(std::span<const std::byte> bytes) {
    const auto [encoding, content] = detected(bytes);
    switch (encoding) {
    case Encoding::Utf16BigEndian:
        return utf8FromUtf16BigEndian(content);
    case Encoding::Utf16LittleEndian:
        return utf8FromUtf16LittleEndian(content);
    case Encoding::Utf8:
        break;
    }
    // There and back, so that what is not UTF-8 is replaced.
    return utf8FromUtf16(
        utf16FromUtf8({reinterpret_cast<const char*>(content.data()), content.size()}));
}

} // namespace

StringTable StringTable::fromBytes(std::span<const std::byte> bytes) {
    StringTable table;
    const auto propertyList = readBinaryPropertyList(bytes);
    if (const Dictionary* dictionary = propertyList ? propertyList->dictionary() : nullptr) {
        for (const auto& [key, value] : *dictionary) {
            if (const auto string = value.string()) {
                table.m_strings.insert_or_assign(std::string(key.name()), std::string(*string));
            }
        }
        return table;
    }
    const std::string text = utf8Text(bytes);
    StringTableScanner scanner(text);
    while (auto entry = scanner.next()) {
        table.m_strings.insert_or_assign(std::move(entry->key), std::move(entry->value));
    }
    return table;
}

std::optional<std::string_view> StringTable::string(std::string_view key) const {
    const auto entry = m_strings.find(key);
    return entry != m_strings.end() ? std::optional<std::string_view>(entry->second) : std::nullopt;
}

} // namespace plenzo
