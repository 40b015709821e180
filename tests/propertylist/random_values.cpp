#include "propertylist/random_values.h"

#include <bit>
#include <cstddef>
#include <span>

namespace plenzo {

Value RandomValues::collection(int levels) {
    const std::uint32_t size = below(6);
    if (below(2) == 0) {
        Array array;
        for (std::uint32_t count = 0; count < size; ++count)
            array.append(value(levels - 1));
        return array;
    }
    Dictionary dictionary;
    for (std::uint32_t count = 0; count < size; ++count) {
        const bool isKnown = below(2) == 0;
        dictionary.set(isKnown ? Key(knownKeyNames + below(knownKeyCount)) : Key(text()),
                       value(levels - 1));
    }
    return dictionary;
}

Value RandomValues::value(int levels) {
    switch (below(levels > 0 ? 6 : 4)) {
    case 0:
        return text();
    case 1:
        return number();
    case 2:
        return below(2) == 0;
    case 3:
        return data();
    default:
        return collection(levels);
    }
}

Value RandomValues::number() {
    // Every size of number is as likely as every other.
    const std::uint64_t bits = (std::uint64_t{m_random()} << 32 | m_random()) >> below(64);
    switch (below(4)) {
    case 0:
        return bits;
    case 1:
        return static_cast<std::int64_t>(~bits);
    case 2:
        return std::bit_cast<double>(bits);
    default:
        return Date{static_cast<double>(bits) / 8};
    }
}

Value RandomValues::data() {
    const std::string bytes = text();
    return Value::fromData(std::as_bytes(std::span(bytes)));
}

std::string RandomValues::text() {
    static constexpr const char* pieces[] = {"a", "Z", " ", "\n", "ü",
                                             "Ω", "€", "🚮", "\0", "dinner"};
    std::string text;
    for (std::uint32_t count = below(12); count > 0; --count)
        text += pieces[below(std::size(pieces))];
    return text;
}

std::string RandomValues::damaged(std::string file) {
    for (std::uint32_t count = 1 + below(3); count > 0 && !file.empty(); --count) {
        const std::size_t place = below(static_cast<std::uint32_t>(file.size()));
        switch (below(5)) {
        case 0:
            file[place] = static_cast<char>(below(256));
            break;
        case 1:
            file[place] = static_cast<char>(file[place] ^ (1 << below(8)));
            break;
        case 2:
            std::swap(file[place], file[below(static_cast<std::uint32_t>(file.size()))]);
            break;
        case 3:
            file.erase(place, 1 + below(4));
            break;
        default:
            file.insert(place, file.substr(place / 2, 1 + below(8)));
            break;
        }
    }
    return file;
}

} // namespace plenzo
