#pragma once

#include "Platform/PropertyLists.h"

#include <string_view>

namespace platform {

/// Reads a property list of any form, told by its content. Null when the bytes are none.
///
/// The root may be of any kind in the XML and binary forms and is a dictionary in the text form.
/// Time is linear in the number of bytes, but for the ordering of dictionary keys. Memory is a few
/// times that number for usual files, and below thirty times for those of nothing but the shortest
/// values.
///
/// Ownership: the result refers to nothing of `bytes`.
/// Threads:   Any.
PropertyListPointer readPropertyList(std::string_view bytes);

} // namespace platform
