#pragma once

#include "Platform/PropertyLists.h"

#include <string_view>

namespace platform {

/// Parses the text inside an XML element that stands for one value: `integer`, `real`, `true`,
/// `false`, `date` or `data`. Null when there is no such element or the text is none of its values.
///
/// Numbers may have white space before them, and none behind them, as on the phone.
PropertyListPointer parsePropertyListScalar(std::string_view element, std::string_view text);

} // namespace platform
