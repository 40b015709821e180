#pragma once

#include "host/configuration/configuration.h"
#include "propertylist/value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plenzo {

enum class JsonKind : std::uint8_t { Null, Boolean, Number, Text, Array, Object };

struct JsonMember;

/// A value of a JSON text (RFC 8259), which remembers where it stands.
struct JsonValue {
    JsonKind kind = JsonKind::Null;
    std::size_t offset = 0; // of its first byte
    Value scalar;           // of a boolean, number or text
    std::vector<JsonMember> members;

    /// As property lists have it: what is null is left out there, and of members with the same name
    /// the last one counts.
    [[nodiscard]] Value propertyValue() const;
};

/// An entry of an object, or an element of an array, without a name.
struct JsonMember {
    std::string name;
    JsonValue value;
};

/// What a text holds, and what is wrong with it.
struct JsonText {
    std::optional<JsonValue> root; // nothing when the text is no JSON
    std::vector<ConfigurationProblem> problems;
};

/// Whatever the text is. Arrays and objects more than 16 deep are left out, with a problem; a
/// number that is too large for a double makes the text no JSON.
JsonText readJson(std::string_view text);

/// Columns count characters, not bytes.
TextPlace placeInText(std::string_view text, std::size_t offset);

} // namespace plenzo
