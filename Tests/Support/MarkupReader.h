#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tests {

/// Reads a document of elements, attributes and texts to its end, as strictly as any reader of XML
/// does, and keeps what stands in it.
class MarkupReader {
public:
    explicit MarkupReader(std::string_view document) : rest_(document) { read(); }

    /// What is wrong with the document; empty when it is well-formed.
    const std::string& fault() const { return fault_; }
    /// The texts between the tags, blank ones left out, with their entities resolved.
    const std::vector<std::string>& texts() const { return texts_; }
    /// The values of the attributes of this name.
    std::vector<std::string> values(std::string_view name) const {
        std::vector<std::string> result;
        for (const auto& [itsName, value] : attributes_)
            if (itsName == name)
                result.push_back(value);
        return result;
    }

private:
    void read() {
        if (rest_.substr(0, 5) == "<?xml")
            rest_.remove_prefix(rest_.find("?>") + 2);
        while (fault_.empty() && !rest_.empty())
            rest_.front() == '<' ? readTag() : readText();
        if (fault_.empty() && (!open_.empty() || roots_ != 1))
            fault_ = "not one root element, closed";
    }

    void readText() {
        const std::string text = resolved(take(rest_.find('<')));
        if (text.find_first_not_of(" \n") == std::string::npos)
            return;
        texts_.push_back(text);
        if (open_.empty())
            fault_ = "text outside the root: " + text;
    }

    void readTag() {
        rest_.remove_prefix(1);
        if (rest_.substr(0, 1) == "/")
            return readEndTag();
        const std::string name(takeName());
        roots_ += open_.empty() ? 1 : 0;
        std::vector<std::string> seen;
        while (fault_.empty() && rest_.substr(0, 1) == " ")
            readAttribute(seen);
        if (rest_.substr(0, 2) == "/>") {
            rest_.remove_prefix(2);
        } else if (rest_.substr(0, 1) == ">") {
            rest_.remove_prefix(1);
            open_.push_back(name);
        } else if (fault_.empty()) {
            fault_ = "a tag without an end: " + name;
        }
    }

    void readEndTag() {
        rest_.remove_prefix(1);
        const std::string name(takeName());
        if (open_.empty() || open_.back() != name || rest_.substr(0, 1) != ">") {
            fault_ = "an end without a beginning: " + name;
            return;
        }
        open_.pop_back();
        rest_.remove_prefix(1);
    }

    void readAttribute(std::vector<std::string>& seen) {
        rest_.remove_prefix(1);
        const std::string name(takeName());
        if (rest_.substr(0, 2) != "=\"") {
            fault_ = "an attribute without a value: " + name;
            return;
        }
        for (const auto& other : seen)
            if (other == name)
                fault_ = "an attribute twice: " + name;
        seen.push_back(name);
        rest_.remove_prefix(2);
        attributes_.emplace_back(name, resolved(take(rest_.find('"'))));
        if (rest_.empty())
            fault_ = "an attribute without an end: " + name;
        else
            rest_.remove_prefix(1);
    }

    std::string_view take(std::size_t length) {
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view takeName() {
        const auto name = take(rest_.find_first_of(" =/><\"\n"));
        if (name.empty())
            fault_ = "a name is missing";
        return name;
    }

    std::string resolved(std::string_view raw) {
        std::string text;
        while (!raw.empty()) {
            const auto byte = static_cast<unsigned char>(raw.front());
            if (raw.front() == '<' || (byte < 0x20 && byte != '\n'))
                fault_ = "a character that may not stand there";
            if (raw.front() == '&') {
                const std::string_view name = raw.substr(0, raw.find(';') + 1);
                text += entity(name);
                raw.remove_prefix(name.empty() ? 1 : name.size());
                continue;
            }
            text += raw.front();
            raw.remove_prefix(1);
        }
        return text;
    }

    char entity(std::string_view name) {
        if (name == "&amp;")
            return '&';
        if (name == "&lt;")
            return '<';
        if (name == "&gt;")
            return '>';
        if (name == "&quot;")
            return '"';
        fault_ = "an unknown entity: " + std::string(name);
        return '?';
    }

    std::string_view rest_;
    std::string fault_;
    std::vector<std::string> open_;
    std::vector<std::string> texts_;
    std::vector<std::pair<std::string, std::string>> attributes_;
    int roots_ = 0;
};

} // namespace tests
