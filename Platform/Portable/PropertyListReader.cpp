#include "Platform/Portable/PropertyListReader.h"

#include "Platform/Portable/PropertyListForms.h"
#include "Platform/Portable/PropertyListObjects.h"
#include "Platform/Text.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16BigEndianMark = "\xFE\xFF";
constexpr std::string_view utf16LittleEndianMark = "\xFF\xFE";

bool consumeMark(std::string_view& bytes, std::string_view mark) {
    if (bytes.substr(0, mark.size()) != mark)
        return false;
    bytes.remove_prefix(mark.size());
    return true;
}

enum class ByteOrder { bigEndian, littleEndian };

std::optional<std::string> utf8FromUTF16(std::string_view bytes, ByteOrder order) {
    if (bytes.size() % 2 != 0)
        return std::nullopt;
    const std::size_t high = order == ByteOrder::bigEndian ? 0 : 1;
    std::string text;
    UTF16Appender appender(text);
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        const auto upper = static_cast<unsigned char>(bytes[at + high]);
        const auto lower = static_cast<unsigned char>(bytes[at + 1 - high]);
        appender.append(static_cast<char16_t>(upper << 8 | lower));
    }
    appender.finish();
    return text;
}

PropertyListPointer readText(std::string_view text, PropertyListEncoding encoding) {
    return isXMLPropertyList(text) ? readXMLPropertyList(text, encoding)
                                   : readTextPropertyList(text);
}

PropertyListPointer readUTF16(std::string_view bytes, ByteOrder order) {
    const std::optional<std::string> text = utf8FromUTF16(bytes, order);
    return text ? readText(*text, PropertyListEncoding::utf16) : nullptr;
}

} // namespace

PropertyListPointer makePropertyList(PropertyList::Content content) {
    return std::make_shared<const PropertyList>(std::move(content));
}

std::shared_ptr<const std::string> textOf(const PropertyListPointer& string) {
    return {string, string->string()};
}

PropertyListPointer makeDictionary(std::vector<PropertyListDictionary::Entry> pairs) {
    using Entry = PropertyListDictionary::Entry;
    std::stable_sort(pairs.begin(), pairs.end(),
                     [](const Entry& left, const Entry& right) { return *left.key < *right.key; });
    // Taken backwards, the first of equal neighbours is the last one of the file.
    const auto kept =
        std::unique(pairs.rbegin(), pairs.rend(),
                    [](const Entry& left, const Entry& right) { return *left.key == *right.key; });
    pairs.erase(pairs.begin(), kept.base());
    return makePropertyList(PropertyListDictionary(std::move(pairs)));
}

void UTF16Appender::append(char16_t unit) {
    const bool isLowSurrogate = unit >= 0xDC00 && unit <= 0xDFFF;
    if (waitingHighSurrogate_ != 0 && isLowSurrogate) {
        const char32_t upperBits = static_cast<char32_t>(waitingHighSurrogate_ - 0xD800) << 10;
        appendUTF8(to_, 0x10000 + upperBits + static_cast<char32_t>(unit - 0xDC00));
        waitingHighSurrogate_ = 0;
        return;
    }
    finish();
    if (unit >= 0xD800 && unit <= 0xDBFF)
        waitingHighSurrogate_ = unit;
    else
        appendUTF8(to_, isLowSurrogate ? U'\uFFFD' : static_cast<char32_t>(unit));
}

void UTF16Appender::finish() {
    if (waitingHighSurrogate_ != 0)
        appendUTF8(to_, U'\uFFFD');
    waitingHighSurrogate_ = 0;
}

PropertyListPointer PropertyListDictionary::value(std::string_view key) const {
    const auto entry = std::lower_bound(
        entries_.begin(), entries_.end(), key,
        [](const Entry& each, std::string_view wanted) { return *each.key < wanted; });
    return entry != entries_.end() && *entry->key == key ? entry->value : nullptr;
}

PropertyListPointer readPropertyList(std::string_view bytes) {
    if (bytes.empty())
        return nullptr;
    if (const auto objects = PropertyListObjects::of(bytes))
        return readBinaryPropertyList(*objects);
    if (consumeMark(bytes, utf16BigEndianMark))
        return readUTF16(bytes, ByteOrder::bigEndian);
    if (consumeMark(bytes, utf16LittleEndianMark))
        return readUTF16(bytes, ByteOrder::littleEndian);
    consumeMark(bytes, utf8Mark);
    return isValidUTF8(bytes) ? readText(bytes, PropertyListEncoding::utf8) : nullptr;
}

} // namespace platform
