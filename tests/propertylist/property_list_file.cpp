#include "propertylist/property_list_file.h"

#include "propertylist/binary_property_list.h"

namespace plenzo {

std::string bigEndian(std::uint64_t number, std::size_t byteCount) {
    std::string bytes;
    for (std::size_t index = byteCount; index-- > 0;)
        bytes += static_cast<char>(index < 8 ? number >> (8 * index) : 0);
    return bytes;
}

std::string PropertyListFile::bytes() const {
    std::string file = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += bigEndian(file.size(), offsetSize);
        file += object;
    }
    const std::size_t tableOffset = file.size();
    return file + table + bigEndian(0, 6) + bigEndian(offsetSize, 1) + bigEndian(referenceSize, 1) +
           bigEndian(objects.size(), 8) + bigEndian(topObject, 8) + bigEndian(tableOffset, 8);
}

std::string object(unsigned marker, std::string_view content) {
    return bigEndian(marker, 1).append(content);
}

std::string objectWithCount(unsigned marker, std::uint64_t count, std::string_view content) {
    if (count < 15)
        return object(marker + static_cast<unsigned>(count), content);
    return object(marker + 15, object(0x13, bigEndian(count, 8))).append(content);
}

std::string textObject(std::string_view text) {
    return objectWithCount(0x50, text.size(), text);
}

namespace {

std::string referenceBytes(const std::vector<std::uint64_t>& references, std::size_t size) {
    std::string bytes;
    for (std::uint64_t reference : references)
        bytes += bigEndian(reference, size);
    return bytes;
}

} // namespace

std::string arrayObject(const std::vector<std::uint64_t>& references, std::size_t referenceSize) {
    return objectWithCount(0xA0, references.size(), referenceBytes(references, referenceSize));
}

std::string dictionaryObject(const std::vector<std::uint64_t>& keys,
                             const std::vector<std::uint64_t>& values, std::size_t referenceSize) {
    return objectWithCount(0xD0, keys.size(),
                           referenceBytes(keys, referenceSize) +
                               referenceBytes(values, referenceSize));
}

std::optional<Value> readFile(std::string_view file) {
    return readBinaryPropertyList(std::as_bytes(std::span(file)));
}

std::optional<Value> readFile(const PropertyListFile& file) {
    return readFile(file.bytes());
}

std::optional<Value> readObject(std::string_view object) {
    return readFile(PropertyListFile{{std::string(object)}});
}

std::string writeFile(const Value& value) {
    const auto bytes = writeBinaryPropertyList(value);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace plenzo
