#include "propertylist/binary_scalar_table.h"

#include "propertylist/binary_scalars.h"

#include <cstring>

namespace plenzo::binary {

namespace {

std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15u;
    hash = (hash ^ word) * factor;
    // A product's upper bits depend on all others, its lower ones not.
    return hash ^ (hash >> 32);
}

/// Texts that fall together, by chance or by intent, only push each other out of the recent ones.
std::uint32_t hashOf(std::span<const std::byte> bytes) {
    std::uint64_t hash = bytes.size();
    std::uint64_t word = 0;
    for (; bytes.size() >= sizeof(word); bytes = bytes.subspan(sizeof(word))) {
        std::memcpy(&word, bytes.data(), sizeof(word));
        hash = mixed(hash, word);
    }
    word = 0;
    if (!bytes.empty()) {
        std::memcpy(&word, bytes.data(), bytes.size());
    }
    return static_cast<std::uint32_t>(mixed(mixed(hash, word), 0));
}

} // namespace

ScalarTable::Added ScalarTable::add(const Value& value) {
    if (const auto text = value.string())
        return addText(*text);
    const std::size_t offset = m_objects.output().size();
    const std::size_t contentSize = writeScalar(m_objects.output(), value);
    RecentObjects& recent = value.data() ? m_recentTexts : m_recentNumbers;
    return {unique(offset, recent), stepsOfObject(contentSize)};
}

ScalarTable::Added ScalarTable::addText(std::string_view text) {
    const std::size_t offset = m_objects.output().size();
    const std::size_t contentSize = writeText(m_objects.output(), text);
    return {unique(offset, m_recentTexts), stepsOfObject(contentSize)};
}

std::uint32_t ScalarTable::unique(std::size_t offset, RecentObjects& recent) {
    const auto bytes = m_objects.output().bytes().subspan(offset);
    const std::uint32_t hash = hashOf(bytes);
    // An object's first bytes say where it ends, and so those that begin alike are alike.
    const std::uint32_t twin = recent.find(hash, [&](std::uint32_t number) {
        const std::byte* other = m_objects.placeOf(number);
        return std::memcmp(other, bytes.data(), bytes.size()) == 0;
    });
    if (twin != RecentObjects::noNumber) {
        m_objects.output().truncate(offset);
        return twin;
    }
    const std::uint32_t number = m_objects.add(offset);
    recent.add(hash, number);
    return number;
}

} // namespace plenzo::binary
