#include "linux/file_reference_data.h"

#include "propertylist/binary_property_list.h"
#include "propertylist/dictionary.h"

namespace plenzo {

namespace {

constexpr std::int64_t dataVersion = 1;
constexpr const char* versionKey = "version";
constexpr const char* pathKey = "path";
constexpr const char* deviceKey = "device";
constexpr const char* inodeKey = "inode";
constexpr const char* birthSecondsKey = "birthSeconds";
constexpr const char* birthNanosecondsKey = "birthNanoseconds";

/// Null when the key has anything but an integer.
const Value* integer(const Dictionary& dictionary, const char* key) {
    const Value* value = dictionary.find(key);
    return value != nullptr && value->type() == ValueType::Integer ? value : nullptr;
}

std::optional<BirthTime> birthTime(const Dictionary& dictionary) {
    const Value* seconds = integer(dictionary, birthSecondsKey);
    const Value* nanoseconds = integer(dictionary, birthNanosecondsKey);
    if (seconds == nullptr || nanoseconds == nullptr) {
        return std::nullopt;
    }
    return BirthTime{.seconds = seconds->integerValue(),
                     .nanoseconds = nanoseconds->integerValue()};
}

} // namespace

bool isSameFile(const FileIdentity& left, const FileIdentity& right) {
    if (left.birth && right.birth) {
        return left.inode == right.inode && *left.birth == *right.birth;
    }
    return left.inode == right.inode && left.device == right.device;
}

std::vector<std::byte> fileReferenceData(const FileReference& reference) {
    Dictionary dictionary{{versionKey, dataVersion},
                          {pathKey, Value::fromData(std::as_bytes(std::span(reference.path)))},
                          {deviceKey, reference.identity.device},
                          {inodeKey, reference.identity.inode}};
    if (reference.identity.birth) {
        dictionary.set(birthSecondsKey, reference.identity.birth->seconds);
        dictionary.set(birthNanosecondsKey, reference.identity.birth->nanoseconds);
    }
    return writeBinaryPropertyList(Value(std::move(dictionary)));
}

std::optional<FileReference> readFileReference(std::span<const std::byte> data) {
    const auto value = readBinaryPropertyList(data);
    const Dictionary* dictionary = value ? value->dictionary() : nullptr;
    if (dictionary == nullptr) {
        return std::nullopt;
    }
    const Value* version = integer(*dictionary, versionKey);
    const Value* device = integer(*dictionary, deviceKey);
    const Value* inode = integer(*dictionary, inodeKey);
    const auto path = dictionary->dataForKey(pathKey);
    if (version == nullptr || version->integerValue() != dataVersion || device == nullptr ||
        inode == nullptr || !path) {
        return std::nullopt;
    }
    return FileReference{.path =
                             std::string(reinterpret_cast<const char*>(path->data()), path->size()),
                         .identity = {.device = device->unsignedIntegerValue(),
                                      .inode = inode->unsignedIntegerValue(),
                                      .birth = birthTime(*dictionary)}};
}

} // namespace plenzo
