#include "Platform/Portable/PropertyListObjects.h"

namespace platform {

namespace {

using ObjectType = PropertyListObjectType;

constexpr std::string_view magic = "bplist00";
constexpr std::size_t trailerSize = 32;

/// How many bytes follow the marker of an object that has no count; nothing when it has one.
std::optional<std::size_t> fixedLength(ObjectType type, unsigned detail) {
    const bool isFixed = (type == ObjectType::boolean && (detail == 8 || detail == 9)) ||
                         (type == ObjectType::integer && detail <= 4) ||
                         (type == ObjectType::real && (detail == 2 || detail == 3)) ||
                         (type == ObjectType::date && detail == 3) ||
                         (type == ObjectType::uid && detail < 8);
    if (!isFixed)
        return std::nullopt;
    if (type == ObjectType::boolean)
        return 0;
    return type == ObjectType::uid ? detail + 1 : std::size_t{1} << detail;
}

/// Takes the count of an object: in its marker, or as an integer behind it when 15 says so.
std::optional<std::uint64_t> takeCount(std::string_view& area, unsigned detail) {
    if (detail < 15)
        return detail;
    if (area.empty())
        return std::nullopt;
    const auto marker = static_cast<unsigned char>(area.front());
    const std::size_t length = std::size_t{1} << (marker & 0xF);
    area.remove_prefix(1);
    if (marker < 0x10 || marker > 0x13 || length > area.size())
        return std::nullopt;
    const std::uint64_t count = bigEndianNumber(area.substr(0, length));
    area.remove_prefix(length);
    return count;
}

} // namespace

std::uint64_t bigEndianNumber(std::string_view bytes) {
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

bool PropertyListObject::isString() const {
    return type == ObjectType::asciiString || type == ObjectType::utf16String;
}

bool PropertyListObject::isContainer() const {
    return type == ObjectType::array || type == ObjectType::set || type == ObjectType::dictionary;
}

std::optional<PropertyListObjects> PropertyListObjects::of(std::string_view bytes) {
    if (bytes.substr(0, magic.size()) != magic || bytes.size() < magic.size() + trailerSize)
        return std::nullopt;
    const std::size_t tableEnd = bytes.size() - trailerSize;
    // Five unused bytes and a version of the sorting, which the phone does not look at either.
    const std::string_view trailer = bytes.substr(tableEnd + 6);
    const std::uint64_t offsetSize = bigEndianNumber(trailer.substr(0, 1));
    const std::uint64_t referenceSize = bigEndianNumber(trailer.substr(1, 1));
    const std::uint64_t count = bigEndianNumber(trailer.substr(2, 8));
    const std::uint64_t root = bigEndianNumber(trailer.substr(10, 8));
    const std::uint64_t table = bigEndianNumber(trailer.substr(18, 8));
    if (offsetSize < 1 || offsetSize > 8 || referenceSize < 1 || referenceSize > 8)
        return std::nullopt;
    // An object takes a byte at least, so its place bounds what the count makes us allocate.
    if (table < magic.size() || table > tableEnd || count > table - magic.size() || root >= count)
        return std::nullopt;
    // The product fits: both factors are smaller than a file can be long, one of them 8 at most.
    if (count > (tableEnd - table) / offsetSize || count * offsetSize != tableEnd - table)
        return std::nullopt;

    PropertyListObjects objects;
    objects.bytes_ = bytes;
    objects.offsetSize_ = static_cast<std::size_t>(offsetSize);
    objects.referenceSize_ = static_cast<std::size_t>(referenceSize);
    objects.count_ = static_cast<std::size_t>(count);
    objects.root_ = static_cast<std::size_t>(root);
    objects.end_ = static_cast<std::size_t>(table);
    if (!objects.areOffsetsSound())
        return std::nullopt;
    return objects;
}

bool PropertyListObjects::areOffsetsSound() const {
    for (std::size_t number = 0; number < count_; ++number) {
        if (offset(number) < magic.size() || offset(number) >= end_)
            return false;
    }
    return true;
}

std::uint64_t PropertyListObjects::offset(std::size_t number) const {
    return bigEndianNumber(bytes_.substr(end_ + number * offsetSize_, offsetSize_));
}

std::optional<PropertyListObject> PropertyListObjects::object(std::size_t number) const {
    if (number >= count_)
        return std::nullopt;
    PropertyListObject object;
    object.begin = static_cast<std::size_t>(offset(number));
    std::string_view area = bytes_.substr(object.begin, end_ - object.begin);
    const auto marker = static_cast<unsigned char>(area.front());
    area.remove_prefix(1);
    object.type = static_cast<ObjectType>(marker >> 4);
    object.detail = marker & 0xF;
    std::optional<std::size_t> length = fixedLength(object.type, object.detail);
    if (!length) {
        const std::size_t unit = unitLength(object.type);
        const std::optional<std::uint64_t> count = takeCount(area, object.detail);
        if (unit == 0 || !count || *count > area.size() / unit)
            return std::nullopt;
        length = static_cast<std::size_t>(*count) * unit;
    }
    if (*length > area.size())
        return std::nullopt;
    object.contents = area.substr(0, *length);
    object.end = end_ - (area.size() - *length);
    return object;
}

/// The bytes that one of a counted object's parts takes; 0 for every other marker.
std::size_t PropertyListObjects::unitLength(ObjectType type) const {
    switch (type) {
    case ObjectType::data:
    case ObjectType::asciiString:
        return 1;
    case ObjectType::utf16String:
        return 2;
    case ObjectType::array:
    case ObjectType::set:
        return referenceSize_;
    case ObjectType::dictionary:
        return 2 * referenceSize_;
    default:
        return 0;
    }
}

std::size_t PropertyListObjects::referenceCount(const PropertyListObject& container) const {
    return container.contents.size() / referenceSize_;
}

std::size_t PropertyListObjects::reference(const PropertyListObject& container,
                                           std::size_t position) const {
    const std::uint64_t number =
        bigEndianNumber(container.contents.substr(position * referenceSize_, referenceSize_));
    // A number that a size does not hold must not become that of an object by being cut.
    return number < count_ ? static_cast<std::size_t>(number) : count_;
}

} // namespace platform
