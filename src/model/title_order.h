#pragma once

#include <compare>
#include <memory>
#include <string>
#include <string_view>

namespace plenzo {

/// The order of titles in one language: localized and regardless of case (Unicode Collation
/// Algorithm, secondary strength).
class TitleOrder {
public:
    /// `locale` is an ICU or BCP 47 name such as "de_DE"; an unknown one gives the root order.
    explicit TitleOrder(const std::string& locale);
    TitleOrder(const TitleOrder&) = delete;
    TitleOrder& operator=(const TitleOrder&) = delete;
    ~TitleOrder();

    /// Of two texts in UTF-8; invalid sequences order as U+FFFD.
    [[nodiscard]] std::weak_ordering compare(std::string_view left, std::string_view right) const;

private:
    struct Collator;
    std::unique_ptr<Collator> m_collator;
};

} // namespace plenzo
