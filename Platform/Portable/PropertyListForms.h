#pragma once

#include "Platform/PropertyLists.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class PropertyListObjects;

/// Containers inside each other, the root counted. Values are read and freed by recursion, and the
/// stack of any thread has to suffice for it.
constexpr int maximumPropertyListNesting = 512;

PropertyListPointer makePropertyList(PropertyList::Content content);

/// The text of a value, which keeps the value alive. Requires: a string.
std::shared_ptr<const std::string> textOf(const PropertyListPointer& string);

/// Makes a dictionary of the pairs of a text in their order, where the last of equal keys holds.
PropertyListPointer makeDictionary(std::vector<PropertyListDictionary::Entry> pairs);

/// Appends UTF-16 to a text; a surrogate without its partner becomes U+FFFD.
class UTF16Appender {
public:
    explicit UTF16Appender(std::string& to) : to_(to) {}
    void append(char16_t unit);

    /// Says that no low surrogate follows: another character does, or the text ends.
    void finish();

private:
    std::string& to_;
    char16_t waitingHighSurrogate_ = 0;
};

PropertyListPointer readBinaryPropertyList(const PropertyListObjects& objects);

/// How the bytes of a text stood in the file.
enum class PropertyListEncoding { utf8, utf16 };

/// Whether the first thing in a text makes it XML, of which it may still be bad.
bool isXMLPropertyList(std::string_view text);

/// Requires: valid UTF-8. `encoding` is compared with what the text declares about itself.
PropertyListPointer readXMLPropertyList(std::string_view text, PropertyListEncoding encoding);

/// Requires: valid UTF-8.
PropertyListPointer readTextPropertyList(std::string_view text);

} // namespace platform
