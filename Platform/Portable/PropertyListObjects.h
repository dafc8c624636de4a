#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// Requires: one to eight bytes.
std::uint64_t bigEndianNumber(std::string_view bytes);

/// The kinds of objects in a binary property list: the upper half of an object's marker.
enum class PropertyListObjectType : std::uint8_t {
    boolean = 0x0,
    integer = 0x1,
    real = 0x2,
    date = 0x3,
    data = 0x4,
    asciiString = 0x5,
    utf16String = 0x6,
    uid = 0x8,
    array = 0xA,
    set = 0xC,
    dictionary = 0xD,
};

/// An object as it lies in the file, from its marker at `begin` to `end`.
struct PropertyListObject {
    PropertyListObjectType type = PropertyListObjectType::boolean;
    unsigned detail = 0; // the lower half of the marker
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string_view contents; // what stands behind the marker and the count

    bool isString() const;
    bool isContainer() const;
};

/// The objects of a binary property list by their numbers. Nothing that the file says about sizes
/// and places is believed unchecked.
///
/// Ownership: refers to the bytes of the file.
class PropertyListObjects {
public:
    /// Nothing unless the bytes are a header, objects, a table of offsets that lead to them and a
    /// trailer, with nothing between or behind.
    static std::optional<PropertyListObjects> of(std::string_view bytes);

    std::size_t count() const { return count_; }
    std::size_t root() const { return root_; }

    /// Where the objects end: no object has a byte there or behind.
    std::size_t end() const { return end_; }

    /// Nothing when there is no such object or what lies at its place is none.
    std::optional<PropertyListObject> object(std::size_t number) const;

    /// Requires: a container. The references of a dictionary's values follow those of its keys.
    std::size_t referenceCount(const PropertyListObject& container) const;

    /// The number of an object that need not exist.
    std::size_t reference(const PropertyListObject& container, std::size_t position) const;

private:
    PropertyListObjects() = default;
    std::uint64_t offset(std::size_t number) const;
    bool areOffsetsSound() const;
    std::size_t unitLength(PropertyListObjectType type) const;

    std::string_view bytes_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::size_t count_ = 0;
    std::size_t root_ = 0;
    std::size_t end_ = 0;
};

} // namespace platform
