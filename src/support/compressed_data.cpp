#include "support/compressed_data.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace plenzo {

namespace {

constexpr std::size_t lengthFieldSize = 4;
constexpr int smallestLevel = 9;

/// No stream of deflate is longer than its bytes by more than this.
constexpr std::size_t greatestExpansion = 1032;

void storeBigEndian(std::uint32_t number, std::byte* target) {
    for (unsigned index = 0; index < lengthFieldSize; ++index) {
        target[index] = static_cast<std::byte>((number >> (24 - 8 * index)) & 0xFF);
    }
}

std::uint32_t loadBigEndian(const std::byte* source) {
    std::uint32_t number = 0;
    for (unsigned index = 0; index < lengthFieldSize; ++index) {
        number = number << 8 | std::to_integer<std::uint32_t>(source[index]);
    }
    return number;
}

const Bytef* zlibBytes(std::span<const std::byte> bytes) {
    return reinterpret_cast<const Bytef*>(bytes.data());
}

int zlibLevel(int level) {
    return level < Z_DEFAULT_COMPRESSION ? Z_NO_COMPRESSION : std::min(level, smallestLevel);
}

bool replace(Bytes& buffer, std::optional<Bytes> contents) {
    if (contents) {
        buffer = std::move(*contents);
    }
    return contents.has_value();
}

} // namespace

std::optional<Bytes> compressedDataWithLevel(std::span<const std::byte> bytes, int level,
                                             std::size_t extraHeaderBytes) {
    constexpr std::size_t greatestHeader = std::numeric_limits<std::uint32_t>::max();
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max() ||
        extraHeaderBytes > greatestHeader) {
        return std::nullopt;
    }
    const std::size_t streamStart = extraHeaderBytes + lengthFieldSize;
    uLongf streamSize = ::compressBound(bytes.size());
    Bytes container(streamStart + streamSize);
    auto* stream = reinterpret_cast<Bytef*>(container.data() + streamStart);
    if (::compress2(stream, &streamSize, zlibBytes(bytes), bytes.size(), zlibLevel(level)) !=
        Z_OK) {
        return std::nullopt;
    }
    storeBigEndian(static_cast<std::uint32_t>(bytes.size()), container.data() + extraHeaderBytes);
    container.resize(streamStart + streamSize);
    return container;
}

std::optional<Bytes> compressedData(std::span<const std::byte> bytes) {
    return compressedDataWithLevel(bytes, Z_DEFAULT_COMPRESSION, 0);
}

std::optional<Bytes> uncompressedData(std::span<const std::byte> container) {
    if (container.size() <= lengthFieldSize) {
        return std::nullopt;
    }
    const auto stream = container.subspan(lengthFieldSize);
    const std::size_t promised = loadBigEndian(container.data());
    uLongf size = std::min(promised, stream.size() * greatestExpansion);
    // zlib wants somewhere to write to even when nothing is to be written.
    Bytes bytes(std::max<std::size_t>(size, 1));
    if (::uncompress(reinterpret_cast<Bytef*>(bytes.data()), &size, zlibBytes(stream),
                     stream.size()) != Z_OK) {
        return std::nullopt;
    }
    bytes.resize(size);
    return bytes;
}

std::optional<Bytes> compressedDataWithFile(const Files& files, const std::string& path) {
    const auto bytes = files.read(path);
    return bytes ? compressedDataWithLevel(*bytes, smallestLevel, 0) : std::nullopt;
}

bool writeUncompressedDataToFile(Files& files, std::span<const std::byte> container,
                                 const std::string& path) {
    const auto bytes = uncompressedData(container);
    return bytes && files.replace(path, *bytes);
}

bool compress(Bytes& buffer) {
    return replace(buffer, compressedData(buffer));
}

bool uncompress(Bytes& buffer) {
    return replace(buffer, uncompressedData(buffer));
}

} // namespace plenzo
