#include "linux/wire/message_writer.h"

#include "linux/wire/bus_text.h"
#include "linux/wire/message_access.h"

#include <algorithm>

namespace plenzo {

namespace {

constexpr std::size_t largestArrayByteCount = 64UL * 1024 * 1024;

/// Where values of the type begin: at a multiple of this (the D-Bus specification, "Marshaling").
constexpr std::size_t alignmentOf(char type) {
    switch (type) {
    case SD_BUS_TYPE_STRUCT_BEGIN:
    case SD_BUS_TYPE_DICT_ENTRY_BEGIN:
        return 8;
    case SD_BUS_TYPE_ARRAY:
    case SD_BUS_TYPE_STRING:
        return 4;
    default:
        return 1;
    }
}

} // namespace

MessageWriter::MessageWriter(sdbus::Message& message) : m_message(libraryMessage(message)) {}

void MessageWriter::open(Container container, const char* contents) {
    switch (container) {
    case Container::Array:
        occupy(4, 4);
        occupy(alignmentOf(contents[0]), 0);
        break;
    case Container::Variant:
        occupy(1, std::string_view(contents).size() + 2);
        break;
    case Container::Struct:
    case Container::Entry:
        occupy(8, 0);
        break;
    }
    ++m_depth;
    if (!m_hasFailed) {
        check(sd_bus_message_open_container(m_message, static_cast<char>(container), contents));
    }
}

void MessageWriter::close() {
    --m_depth;
    if (!m_hasFailed) {
        check(sd_bus_message_close_container(m_message));
    }
}

void MessageWriter::appendText(std::string_view text) {
    if (isBusText(text)) {
        appendCarriedText(text);
    } else {
        appendCarriedText(busText(text));
    }
}

void MessageWriter::appendCarriedText(std::string_view text) {
    occupy(4, 4 + text.size() + 1);
    char* space = nullptr;
    if (!m_hasFailed) {
        check(sd_bus_message_append_string_space(m_message, text.size(), &space));
    }
    if (!m_hasFailed) {
        *std::ranges::copy(text, space).out = '\0';
    }
}

void MessageWriter::appendBytes(std::span<const std::byte> bytes) {
    occupy(4, 4 + bytes.size());
    if (!m_hasFailed) {
        check(sd_bus_message_append_array(m_message, SD_BUS_TYPE_BYTE, bytes.data(), bytes.size()));
    }
}

void MessageWriter::occupy(std::size_t alignment, std::size_t byteCount) {
    m_byteCount = (m_byteCount + alignment - 1) / alignment * alignment + byteCount;
    // Counted from where the writer began, so up to 8 bytes of padding may be missing.
    m_hasFailed = m_hasFailed || m_byteCount + 8 > largestArrayByteCount;
}

} // namespace plenzo
