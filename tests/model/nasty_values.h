#pragma once

#include "propertylist/value.h"

#include <vector>

namespace plenzo {

/// Values of every type that no host should send under the keys of a record: numbers that are none
/// or too large, dates of the years 0 and 300000 and beyond all years, long text and text that is
/// not UTF-8, deep collections.
const std::vector<Value>& nastyValues();

} // namespace plenzo
