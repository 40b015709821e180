#include "model/title_order.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/stringpiece.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace plenzo {

struct TitleOrder::Collator {
    std::unique_ptr<icu::Collator> collator;
};

namespace {

/// ICU counts bytes in 32 bits with a sign; what is beyond does not count.
constexpr std::size_t longestTitleBytes = std::numeric_limits<std::int32_t>::max();

std::unique_ptr<icu::Collator> collatorFor(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status)) {
        return nullptr;
    }
    collator->setStrength(icu::Collator::SECONDARY);
    return collator;
}

} // namespace

TitleOrder::TitleOrder(const std::string& locale) : m_collator(std::make_unique<Collator>()) {
    m_collator->collator = collatorFor(icu::Locale(locale.c_str()));
    if (m_collator->collator == nullptr) {
        m_collator->collator = collatorFor(icu::Locale::getRoot());
    }
}

TitleOrder::~TitleOrder() = default;

std::weak_ordering TitleOrder::compare(std::string_view left, std::string_view right) const {
    if (m_collator->collator == nullptr) {
        return left <=> right;
    }
    UErrorCode status = U_ZERO_ERROR;
    const auto piece = [](std::string_view text) {
        const auto length = std::min(text.size(), longestTitleBytes);
        return icu::StringPiece(text.data(), static_cast<std::int32_t>(length));
    };
    const auto result = m_collator->collator->compareUTF8(piece(left), piece(right), status);
    return result <=> 0;
}

} // namespace plenzo
