#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace plenzo {

/// The texts of one language by key, read from a strings file.
class StringTable {
public:
    StringTable() = default;

    /// Reads the bytes of a strings file:
    ///
    ///     /* A comment, or // one to the end of the line. */
    ///     "key" = "value";
    ///
    /// Quoted text may go over several lines and has the escapes \" \' \\ \a \b \f \n \r \t \v, an
    /// octal code of up to three digits and \U with the four hexadecimal digits of a UTF-16 unit; a
    /// key or value of letters, digits and _ . - / needs no quotes. A line that says none of this
    /// is skipped, and the lines after it are read all the same. Of equal keys the last counts.
    ///
    /// The encoding is UTF-8, or UTF-16 of either order, with or without a byte-order mark. A
    /// binary property list is taken too: a dictionary, of which the entries that are strings
    /// count.
    [[nodiscard]] static StringTable fromBytes(std::span<const std::byte> bytes);

    /// Points into the table.
    [[nodiscard]] std::optional<std::string_view> string(std::string_view key) const;

    [[nodiscard]] std::size_t size() const { return m_strings.size(); }
    [[nodiscard]] auto begin() const { return m_strings.begin(); }
    [[nodiscard]] auto end() const { return m_strings.end(); }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };

    std::unordered_map<std::string, std::string, Hash, std::equal_to<>> m_strings;
};

} // namespace plenzo
