#pragma once

#include <systemd/sd-bus.h>

#include <cstddef>
#include <span>
#include <string_view>

namespace sdbus {
class Message;
}

namespace plenzo {

/// Appends to a bus message and keeps count of what the bus measures: the nesting and the bytes.
/// After the first failure it does nothing more, and the message must not be sent.
class MessageWriter {
public:
    /// What a value may be packed in, in the bus library's letters.
    enum class Container : char {
        Array = SD_BUS_TYPE_ARRAY,
        Variant = SD_BUS_TYPE_VARIANT,
        Struct = SD_BUS_TYPE_STRUCT,
        Entry = SD_BUS_TYPE_DICT_ENTRY
    };

    explicit MessageWriter(sdbus::Message& message);

    /// Whether something could not be appended, or an array went beyond the 64 MiB that the bus
    /// lets through.
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

    /// Whether this many more containers can be opened one inside the other; the bus breaks the
    /// connection over a 65th.
    [[nodiscard]] bool hasRoomFor(std::size_t containers) const {
        return m_depth + containers <= deepestNesting;
    }

    /// The contents are the signature of what is inside, for an array of one element.
    void open(Container container, const char* contents);
    void close();

    /// Any text: what a bus message cannot carry becomes U+FFFD.
    void appendText(std::string_view text);
    void appendBytes(std::span<const std::byte> bytes);
    /// The item must be of the C type of the type letter (an int for a boolean).
    template <typename Item>
    void append(char type, Item item) {
        static_assert(sizeof(Item) == 4 || sizeof(Item) == 8);
        occupy(sizeof(Item), sizeof(Item));
        if (!m_hasFailed) {
            check(sd_bus_message_append_basic(m_message, type, &item));
        }
    }

private:
    void appendCarriedText(std::string_view text);
    void occupy(std::size_t alignment, std::size_t byteCount);
    void check(int result) { m_hasFailed = m_hasFailed || result < 0; }

    static constexpr std::size_t deepestNesting = 64;

    sd_bus_message* m_message;
    std::size_t m_depth = 0;
    std::size_t m_byteCount = 0;
    bool m_hasFailed = false;
};

} // namespace plenzo
