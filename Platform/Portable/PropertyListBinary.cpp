#include "Platform/Portable/PropertyListForms.h"
#include "Platform/Portable/PropertyListObjects.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <limits>
#include <numeric>

namespace platform {

namespace {

using ObjectType = PropertyListObjectType;

/// The upper bytes of 16 only tell whether the lower eight hold the number.
std::int64_t signedNumber(std::string_view bytes) {
    constexpr std::size_t width = sizeof(std::uint64_t);
    const std::uint64_t low =
        bigEndianNumber(bytes.substr(bytes.size() - std::min(width, bytes.size())));
    const auto value = static_cast<std::int64_t>(low);
    if (bytes.size() <= width)
        return value;
    const std::uint64_t high = bigEndianNumber(bytes.substr(0, width));
    const bool isNegative = high >> 63 != 0;
    if (high == (value < 0 ? ~std::uint64_t{0} : 0))
        return value;
    return isNegative ? std::numeric_limits<std::int64_t>::min()
                      : std::numeric_limits<std::int64_t>::max();
}

double realValue(std::string_view bytes) {
    const std::uint64_t bits = bigEndianNumber(bytes);
    if (bytes.size() == sizeof(float))
        return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    return std::bit_cast<double>(bits);
}

PropertyListPointer makeUID(std::string_view bytes) {
    const std::uint64_t number = bigEndianNumber(bytes);
    if (number > std::numeric_limits<std::uint32_t>::max())
        return nullptr;
    return makePropertyList(PropertyListUID{static_cast<std::uint32_t>(number)});
}

PropertyListPointer makeASCIIString(std::string_view bytes) {
    const bool isASCII = std::all_of(bytes.begin(), bytes.end(), [](char byte) {
        return static_cast<unsigned char>(byte) < 0x80;
    });
    return isASCII ? makePropertyList(std::string(bytes)) : nullptr;
}

PropertyListPointer makeUTF16String(std::string_view bytes) {
    std::string text;
    UTF16Appender units(text);
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        units.append(static_cast<char16_t>(bigEndianNumber(bytes.substr(at, 2))));
    units.finish();
    return makePropertyList(std::move(text));
}

PropertyListPointer makeScalar(const PropertyListObject& object) {
    switch (object.type) {
    case ObjectType::boolean:
        return makePropertyList(object.detail == 9);
    case ObjectType::integer:
        return makePropertyList(signedNumber(object.contents));
    case ObjectType::real:
        return makePropertyList(realValue(object.contents));
    case ObjectType::date:
        return makePropertyList(PropertyListDate{realValue(object.contents)});
    case ObjectType::data:
        return makePropertyList(PropertyListData(object.contents.begin(), object.contents.end()));
    case ObjectType::asciiString:
        return makeASCIIString(object.contents);
    case ObjectType::utf16String:
        return makeUTF16String(object.contents);
    case ObjectType::uid:
        return makeUID(object.contents);
    default:
        return nullptr;
    }
}

/// Reads each object that can be reached from the root, once, however many others refer to it:
/// first puts all in an order in which contents come before their containers, then builds them.
class BinaryReader {
public:
    explicit BinaryReader(const PropertyListObjects& objects)
        : objects_(objects), states_(objects.count()), taken_(objects.end()) {}

    PropertyListPointer read();

private:
    enum class Progress : std::uint8_t { unseen, open, ordered };

    struct State {
        PropertyListPointer value;
        std::size_t keyRank = 0;  // equal for equal keys
        std::uint16_t height = 0; // containers inside each other, from this one down
        Progress progress = Progress::unseen;
        bool isKey = false;
    };

    struct OpenContainer {
        std::size_t number;
        PropertyListObject object;
        std::size_t nextReference = 0;
        int innerHeight = 0;
    };

    bool orderObjects();
    bool orderNextReference();
    bool enter(std::size_t number);
    void leave();
    void finish(std::size_t number, int height);
    bool markKey(std::size_t number);
    bool take(const PropertyListObject& object);

    bool makeScalars();
    void rankKeys();
    void makeContainers();
    PropertyListPointer makeContainer(const PropertyListObject& object) const;
    PropertyListPointer makeDictionary(const PropertyListObject& object) const;
    const State& referredState(const PropertyListObject& container, std::size_t position) const {
        return states_[objects_.reference(container, position)];
    }

    const PropertyListObjects& objects_;
    std::vector<State> states_;
    std::vector<bool> taken_; // the bytes of the file that belong to an object already
    std::vector<OpenContainer> open_;
    std::vector<std::size_t> order_;
};

PropertyListPointer BinaryReader::read() {
    if (!orderObjects() || !makeScalars())
        return nullptr;
    rankKeys();
    makeContainers();
    return states_[objects_.root()].value;
}

bool BinaryReader::orderObjects() {
    if (!enter(objects_.root()))
        return false;
    while (!open_.empty()) {
        const OpenContainer& container = open_.back();
        if (container.nextReference == objects_.referenceCount(container.object))
            leave();
        else if (!orderNextReference())
            return false;
    }
    return true;
}

bool BinaryReader::orderNextReference() {
    OpenContainer& container = open_.back();
    const std::size_t position = container.nextReference++;
    const std::size_t number = objects_.reference(container.object, position);
    const bool isKey = container.object.type == ObjectType::dictionary &&
                       position < objects_.referenceCount(container.object) / 2;
    // The container may have moved once its content is entered.
    return enter(number) && (!isKey || markKey(number));
}

bool BinaryReader::enter(std::size_t number) {
    if (number >= states_.size() || states_[number].progress == Progress::open)
        return false;
    const int nesting = static_cast<int>(open_.size());
    if (states_[number].progress == Progress::ordered) {
        open_.back().innerHeight = std::max<int>(open_.back().innerHeight, states_[number].height);
        return nesting + states_[number].height <= maximumPropertyListNesting;
    }
    const std::optional<PropertyListObject> object = objects_.object(number);
    if (!object || !take(*object))
        return false;
    if (!object->isContainer()) {
        finish(number, 0);
        return true;
    }
    states_[number].progress = Progress::open;
    open_.push_back({number, *object});
    return nesting < maximumPropertyListNesting;
}

void BinaryReader::leave() {
    const OpenContainer container = open_.back();
    open_.pop_back();
    const int height = container.innerHeight + 1;
    finish(container.number, height);
    if (!open_.empty())
        open_.back().innerHeight = std::max(open_.back().innerHeight, height);
}

void BinaryReader::finish(std::size_t number, int height) {
    states_[number].progress = Progress::ordered;
    states_[number].height = static_cast<std::uint16_t>(height);
    order_.push_back(number);
}

bool BinaryReader::markKey(std::size_t number) {
    states_[number].isKey = true;
    const std::optional<PropertyListObject> object = objects_.object(number);
    return object && object->isString();
}

/// False when another object has one of the bytes. Objects inside each other would let a small
/// file stand for an enormous value.
bool BinaryReader::take(const PropertyListObject& object) {
    for (std::size_t at = object.begin; at < object.end; ++at) {
        if (taken_[at])
            return false;
        taken_[at] = true;
    }
    return true;
}

bool BinaryReader::makeScalars() {
    for (const std::size_t number : order_) {
        const std::optional<PropertyListObject> object = objects_.object(number);
        if (!object)
            return false;
        if (object->isContainer())
            continue;
        states_[number].value = makeScalar(*object);
        if (!states_[number].value)
            return false;
    }
    return true;
}

/// Compares the keys of the whole file once. A dictionary then compares numbers: thousands of them
/// may share two long keys that differ in their last characters.
void BinaryReader::rankKeys() {
    std::vector<std::size_t> keys;
    std::copy_if(order_.begin(), order_.end(), std::back_inserter(keys),
                 [this](std::size_t number) { return states_[number].isKey; });
    const auto text = [this](std::size_t number) -> const std::string& {
        return *states_[number].value->string();
    };
    std::sort(keys.begin(), keys.end(),
              [&text](std::size_t left, std::size_t right) { return text(left) < text(right); });
    std::size_t rank = 0;
    for (std::size_t at = 0; at < keys.size(); ++at) {
        if (at > 0 && text(keys[at]) != text(keys[at - 1]))
            ++rank;
        states_[keys[at]].keyRank = rank;
    }
}

void BinaryReader::makeContainers() {
    for (const std::size_t number : order_) {
        const std::optional<PropertyListObject> object = objects_.object(number);
        if (object && object->isContainer())
            states_[number].value = makeContainer(*object);
    }
}

PropertyListPointer BinaryReader::makeContainer(const PropertyListObject& object) const {
    if (object.type == ObjectType::dictionary)
        return makeDictionary(object);
    const std::size_t count = objects_.referenceCount(object);
    PropertyListArray elements;
    elements.reserve(count);
    for (std::size_t position = 0; position < count; ++position)
        elements.push_back(referredState(object, position).value);
    return object.type == ObjectType::set ? makePropertyList(PropertyListSet{std::move(elements)})
                                          : makePropertyList(std::move(elements));
}

PropertyListPointer BinaryReader::makeDictionary(const PropertyListObject& object) const {
    const std::size_t count = objects_.referenceCount(object) / 2;
    std::vector<std::size_t> positions(count);
    std::iota(positions.begin(), positions.end(), std::size_t{0});
    const auto rank = [&](std::size_t position) {
        return referredState(object, position).keyRank;
    };
    // Stable, because the first of equal keys holds.
    std::stable_sort(
        positions.begin(), positions.end(),
        [&rank](std::size_t left, std::size_t right) { return rank(left) < rank(right); });
    const auto end = std::unique(
        positions.begin(), positions.end(),
        [&rank](std::size_t left, std::size_t right) { return rank(left) == rank(right); });
    positions.erase(end, positions.end());

    std::vector<PropertyListDictionary::Entry> entries;
    entries.reserve(positions.size());
    for (const std::size_t position : positions)
        entries.push_back({textOf(referredState(object, position).value),
                           referredState(object, count + position).value});
    return makePropertyList(PropertyListDictionary(std::move(entries)));
}

} // namespace

PropertyListPointer readBinaryPropertyList(const PropertyListObjects& objects) {
    return BinaryReader(objects).read();
}

} // namespace platform
