#include "Platform/Portable/PropertyListCursor.h"
#include "Platform/Portable/PropertyListForms.h"
#include "Platform/Portable/PropertyListScalars.h"
#include "Platform/Text.h"

namespace platform {

namespace {

using Pairs = std::vector<PropertyListDictionary::Entry>;

bool isNameCharacter(char character) {
    return isLetter(character) || isDecimalDigit(character) ||
           std::string_view("_:.-").find(character) != std::string_view::npos;
}

bool isCharacterData(char character) {
    return character != '<' && character != '&';
}

bool isSurrogate(unsigned scalar) {
    return scalar >= 0xD800 && scalar <= 0xDFFF;
}

struct Attribute {
    std::string_view name;
    std::string_view value;
};

struct StartTag {
    std::string_view name;
    bool isEmptyElement = false;
};

/// Reads XML by recursive descent. A null pointer, nothing or false refuses the file at every
/// level.
class XMLReader {
public:
    XMLReader(std::string_view text, PropertyListEncoding encoding)
        : cursor_(text), encoding_(encoding) {}

    PropertyListPointer readDocument();

private:
    bool readProlog();
    bool isAtDeclaration() const;
    bool readDeclaration();
    bool isTrueEncoding(std::string_view declared) const;
    bool readDocumentType();
    void skipMiscellany();

    std::optional<StartTag> readStartTag();
    bool readEndTag(std::string_view name);
    std::optional<Attribute> readAttribute();
    std::optional<std::string_view> readLiteral();
    bool skipSpace() { return !cursor_.takeWhile(isXMLSpace).empty(); }

    PropertyListPointer readValue(int nesting);
    PropertyListPointer readElement(const StartTag& tag, int nesting);
    PropertyListPointer readDictionary(const StartTag& tag, int nesting);
    PropertyListPointer readKey();
    PropertyListPointer readArray(const StartTag& tag, int nesting);
    PropertyListPointer readString(const StartTag& tag);
    PropertyListPointer readScalar(const StartTag& tag);
    bool readCharacters(std::string& to);
    bool readReference(std::string& to);
    bool readCharacterReference(std::string& to);

    PropertyListCursor cursor_;
    PropertyListEncoding encoding_;
};

PropertyListPointer XMLReader::readDocument() {
    if (!readProlog())
        return nullptr;
    const std::optional<StartTag> tag = readStartTag();
    if (!tag)
        return nullptr;
    // The phone does without the outermost element when a declaration says that the text is XML.
    if (tag->name != "plist")
        return readElement(*tag, 1);
    if (tag->isEmptyElement)
        return nullptr;
    PropertyListPointer root = readValue(1);
    skipMiscellany();
    return readEndTag(tag->name) ? root : nullptr;
}

bool XMLReader::readProlog() {
    skipSpace();
    if (isAtDeclaration() && !readDeclaration())
        return false;
    skipMiscellany();
    if (cursor_.consume("<!DOCTYPE") && !readDocumentType())
        return false;
    skipMiscellany();
    return true;
}

bool XMLReader::isAtDeclaration() const {
    PropertyListCursor ahead = cursor_;
    return ahead.consume("<?xml") && (ahead.isAt(isXMLSpace) || ahead.isAt('?'));
}

bool XMLReader::readDeclaration() {
    cursor_.consume("<?xml");
    for (;;) {
        const bool isSpaced = skipSpace();
        if (cursor_.consume("?>"))
            return true;
        const std::optional<Attribute> attribute = readAttribute();
        if (!isSpaced || !attribute)
            return false;
        if (attribute->name == "encoding" && !isTrueEncoding(attribute->value))
            return false;
    }
}

/// A byte-order mark tells more than the declaration, which often outlives a conversion of the
/// file; but UTF-16 without its mark is none.
bool XMLReader::isTrueEncoding(std::string_view declared) const {
    return isEqualIgnoringCase(declared, "utf-8") ||
           (isEqualIgnoringCase(declared, "utf-16") && encoding_ == PropertyListEncoding::utf16);
}

/// Reads what follows "<!DOCTYPE". Definitions inside the file are refused: they can do nothing
/// good for a property list, and entities that expand each other can do much harm.
bool XMLReader::readDocumentType() {
    if (!skipSpace() || cursor_.takeWhile(isNameCharacter) != "plist")
        return false;
    const bool isSpaced = skipSpace();
    const bool isPublic = cursor_.consume("PUBLIC");
    if (isPublic && !(isSpaced && skipSpace() && readLiteral()))
        return false;
    const bool hasAddress = isPublic || cursor_.consume("SYSTEM");
    if (hasAddress && !(isSpaced && skipSpace() && readLiteral()))
        return false;
    skipSpace();
    return cursor_.consume('>');
}

/// Skips what may stand between elements. A comment that is left open takes the rest of the text,
/// which is then refused for the end tags that it lacks.
void XMLReader::skipMiscellany() {
    for (;;) {
        skipSpace();
        if (cursor_.consume("<!--"))
            cursor_.takeUntil("-->");
        else if (cursor_.consume("<?"))
            cursor_.takeUntil("?>");
        else
            return;
    }
}

/// Attributes mean nothing here, but have to be whole.
std::optional<StartTag> XMLReader::readStartTag() {
    if (!cursor_.consume('<'))
        return std::nullopt;
    const std::string_view name = cursor_.takeWhile(isNameCharacter);
    for (;;) {
        const bool isSpaced = skipSpace();
        if (cursor_.consume('>'))
            return StartTag{name, false};
        if (cursor_.consume("/>"))
            return StartTag{name, true};
        if (!isSpaced || !readAttribute())
            return std::nullopt;
    }
}

bool XMLReader::readEndTag(std::string_view name) {
    if (!cursor_.consume("</") || !cursor_.consume(name))
        return false;
    skipSpace();
    return cursor_.consume('>');
}

std::optional<Attribute> XMLReader::readAttribute() {
    const std::string_view name = cursor_.takeWhile(isNameCharacter);
    skipSpace();
    if (name.empty() || !cursor_.consume('='))
        return std::nullopt;
    skipSpace();
    const std::optional<std::string_view> value = readLiteral();
    if (!value || value->find('<') != std::string_view::npos)
        return std::nullopt;
    return Attribute{name, *value};
}

std::optional<std::string_view> XMLReader::readLiteral() {
    if (cursor_.consume('"'))
        return cursor_.takeUntil("\"");
    if (cursor_.consume('\''))
        return cursor_.takeUntil("'");
    return std::nullopt;
}

PropertyListPointer XMLReader::readValue(int nesting) {
    skipMiscellany();
    const std::optional<StartTag> tag = readStartTag();
    return tag ? readElement(*tag, nesting) : nullptr;
}

PropertyListPointer XMLReader::readElement(const StartTag& tag, int nesting) {
    if (tag.name == "dict")
        return readDictionary(tag, nesting);
    if (tag.name == "array")
        return readArray(tag, nesting);
    return tag.name == "string" ? readString(tag) : readScalar(tag);
}

PropertyListPointer XMLReader::readDictionary(const StartTag& tag, int nesting) {
    if (nesting > maximumPropertyListNesting)
        return nullptr;
    Pairs pairs;
    if (tag.isEmptyElement)
        return makeDictionary(std::move(pairs));
    for (skipMiscellany(); !cursor_.isAt("</"); skipMiscellany()) {
        const PropertyListPointer key = readKey();
        if (!key)
            return nullptr;
        PropertyListPointer value = readValue(nesting + 1);
        if (!value)
            return nullptr;
        pairs.push_back({textOf(key), std::move(value)});
    }
    return readEndTag(tag.name) ? makeDictionary(std::move(pairs)) : nullptr;
}

PropertyListPointer XMLReader::readKey() {
    const std::optional<StartTag> tag = readStartTag();
    return tag && tag->name == "key" ? readString(*tag) : nullptr;
}

PropertyListPointer XMLReader::readArray(const StartTag& tag, int nesting) {
    if (nesting > maximumPropertyListNesting)
        return nullptr;
    PropertyListArray elements;
    if (tag.isEmptyElement)
        return makePropertyList(std::move(elements));
    for (skipMiscellany(); !cursor_.isAt("</"); skipMiscellany()) {
        PropertyListPointer element = readValue(nesting + 1);
        if (!element)
            return nullptr;
        elements.push_back(std::move(element));
    }
    return readEndTag(tag.name) ? makePropertyList(std::move(elements)) : nullptr;
}

PropertyListPointer XMLReader::readString(const StartTag& tag) {
    std::string text;
    if (!tag.isEmptyElement && !(readCharacters(text) && readEndTag(tag.name)))
        return nullptr;
    return makePropertyList(std::move(text));
}

/// Reads an element that holds neither elements nor markup.
PropertyListPointer XMLReader::readScalar(const StartTag& tag) {
    std::string_view text;
    if (!tag.isEmptyElement) {
        text = cursor_.takeWhile(isCharacterData);
        if (!readEndTag(tag.name))
            return nullptr;
    }
    return parsePropertyListScalar(tag.name, text);
}

/// Reads up to a tag. Control characters and "]]>" are taken as they stand, as on the phone.
bool XMLReader::readCharacters(std::string& to) {
    for (;;) {
        to += cursor_.takeWhile(isCharacterData);
        if (cursor_.consume('&')) {
            if (!readReference(to))
                return false;
        } else if (cursor_.consume("<![CDATA[")) {
            const std::optional<std::string_view> section = cursor_.takeUntil("]]>");
            if (!section)
                return false;
            to += *section;
        } else {
            return true;
        }
    }
}

bool XMLReader::readReference(std::string& to) {
    if (cursor_.consume('#'))
        return readCharacterReference(to);
    constexpr struct {
        std::string_view name;
        char character;
    } entities[] = {{"amp;", '&'}, {"lt;", '<'}, {"gt;", '>'}, {"quot;", '"'}, {"apos;", '\''}};
    for (const auto& entity : entities) {
        if (cursor_.consume(entity.name)) {
            to += entity.character;
            return true;
        }
    }
    return false;
}

bool XMLReader::readCharacterReference(std::string& to) {
    const unsigned base = cursor_.consume('x') ? 16 : 10;
    unsigned scalar = 0;
    bool hasDigits = false;
    while (!cursor_.isAtEnd() && !cursor_.isAt(';')) {
        const int digit = hexadecimalDigit(cursor_.take());
        if (digit < 0 || static_cast<unsigned>(digit) >= base)
            return false;
        scalar = scalar * base + static_cast<unsigned>(digit);
        if (scalar > 0x10FFFF)
            return false;
        hasDigits = true;
    }
    if (!hasDigits || isSurrogate(scalar) || !cursor_.consume(';'))
        return false;
    appendUTF8(to, scalar);
    return true;
}

} // namespace

bool isXMLPropertyList(std::string_view text) {
    PropertyListCursor cursor(text);
    cursor.takeWhile(isXMLSpace);
    return cursor.isAt("<?xml") || cursor.isAt("<!DOCTYPE plist") || cursor.isAt("<plist");
}

PropertyListPointer readXMLPropertyList(std::string_view text, PropertyListEncoding encoding) {
    return XMLReader(text, encoding).readDocument();
}

} // namespace platform
