#include "propertylist/keyed_hash.h"

#include <bit>
#include <cstring>
#include <random>

namespace plenzo {

namespace {

struct HashKey {
    std::uint64_t first;
    std::uint64_t second;
};

HashKey drawHashKey() {
    try {
        std::random_device device;
        auto draw = [&] { return (std::uint64_t{device()} << 32) | device(); };
        return {draw(), draw()};
    } catch (const std::exception&) {
        // Without a source of randomness, at least where the loader put us.
        const auto place = reinterpret_cast<std::uintptr_t>(&keyedHash);
        return {place, place * 0x9E3779B97F4A7C15u};
    }
}

struct State {
    std::uint64_t a;
    std::uint64_t b;
    std::uint64_t c;
    std::uint64_t d;

    void mix() {
        a += b;
        b = std::rotl(b, 13) ^ a;
        a = std::rotl(a, 32);
        c += d;
        d = std::rotl(d, 16) ^ c;
        a += d;
        d = std::rotl(d, 21) ^ a;
        c += b;
        b = std::rotl(b, 17) ^ c;
        c = std::rotl(c, 32);
    }
    void take(std::uint64_t word) {
        d ^= word;
        mix();
        a ^= word;
    }
};

} // namespace

std::uint64_t keyedHash(const void* bytes, std::size_t size) {
    static const HashKey key = drawHashKey();
    State state{key.first ^ 0x736F6D6570736575u, key.second ^ 0x646F72616E646F6Du,
                key.first ^ 0x6C7967656E657261u, key.second ^ 0x7465646279746573u};
    const char* rest = static_cast<const char*>(bytes);
    const char* const lastWord = rest + size / 8 * 8;
    std::uint64_t word = 0;
    for (; rest != lastWord; rest += 8) {
        std::memcpy(&word, rest, 8);
        state.take(word);
    }
    word = 0;
    if (size % 8 != 0)
        std::memcpy(&word, rest, size % 8);
    state.take(word | (std::uint64_t{size} << 56));
    state.c ^= 0xFF;
    state.mix();
    state.mix();
    state.mix();
    return state.a ^ state.b ^ state.c ^ state.d;
}

} // namespace plenzo
