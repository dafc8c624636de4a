#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace platform {

class PropertyList;

/// How a property list holds its parts. Parts may be shared, never in a cycle.
using PropertyListPointer = std::shared_ptr<const PropertyList>;

using PropertyListData = std::vector<std::uint8_t>;
using PropertyListArray = std::vector<PropertyListPointer>;

/// The members in the order of the file; equal ones are not merged.
struct PropertyListSet {
    PropertyListArray members;
};

/// Units: seconds since the start of 2001, UTC.
struct PropertyListDate {
    double seconds = 0;
};

/// The number by which an archive refers to one of its objects.
struct PropertyListUID {
    std::uint32_t number = 0;
};

/// A dictionary: every key once, in the byte order of the keys' UTF-8.
///
/// Ownership: keys are shared, because many dictionaries of one file may refer to one long key.
class PropertyListDictionary {
public:
    /// Neither pointer is null.
    struct Entry {
        std::shared_ptr<const std::string> key;
        PropertyListPointer value;
    };

    PropertyListDictionary() = default;

    /// Requires: entries in strictly ascending order of their keys.
    explicit PropertyListDictionary(std::vector<Entry> entries) : entries_(std::move(entries)) {}

    /// The value of a key, or null when there is no such key.
    PropertyListPointer value(std::string_view key) const;

    std::size_t size() const { return entries_.size(); }
    std::vector<Entry>::const_iterator begin() const { return entries_.begin(); }
    std::vector<Entry>::const_iterator end() const { return entries_.end(); }

private:
    std::vector<Entry> entries_;
};

/// A value read from a property list: one of ten kinds, and for a container all that it holds.
///
/// Text is valid UTF-8, in which U+0000 may occur. An integer that 64 bits cannot hold is the
/// nearest one that they can.
///
/// Ownership: what an accessor points to lives as long as the value.
/// Threads:   Immutable, so any number of threads may read it.
class PropertyList {
public:
    using Content =
        std::variant<std::string, std::int64_t, double, bool, PropertyListDate, PropertyListData,
                     PropertyListUID, PropertyListArray, PropertyListSet, PropertyListDictionary>;

    explicit PropertyList(Content content) : content_(std::move(content)) {}

    /// Each is null when the value is of another kind; no kind is converted into another.
    const std::string* string() const { return std::get_if<std::string>(&content_); }
    const std::int64_t* integer() const { return std::get_if<std::int64_t>(&content_); }
    const double* real() const { return std::get_if<double>(&content_); }
    const bool* boolean() const { return std::get_if<bool>(&content_); }
    const PropertyListDate* date() const { return std::get_if<PropertyListDate>(&content_); }
    const PropertyListData* data() const { return std::get_if<PropertyListData>(&content_); }
    const PropertyListUID* uid() const { return std::get_if<PropertyListUID>(&content_); }
    const PropertyListArray* array() const { return std::get_if<PropertyListArray>(&content_); }
    const PropertyListSet* set() const { return std::get_if<PropertyListSet>(&content_); }
    const PropertyListDictionary* dictionary() const {
        return std::get_if<PropertyListDictionary>(&content_);
    }

private:
    Content content_;
};

/// Reads the property list in a file, of any form: XML, binary, or old-style text with the
/// braceless pairs of strings files. The name of the file says nothing about its form.
///
/// Null when the file is missing, no ordinary file, unreadable, not a property list from its first
/// byte to its last, or when its root is no dictionary: which of them it was cannot be told. There
/// is no partial result. An empty dictionary is a result.
///
/// Ownership: the caller shares the dictionary with nobody; it holds nothing of the file.
/// Threads:   Any. Blocks for the time of the reading, and never waits for a pipe or a device.
/// Platform:  The phone's own reader is the model where readers differ.
std::shared_ptr<const PropertyListDictionary>
dictionaryWithContentsOfFile(const std::string& devicePath);

} // namespace platform
