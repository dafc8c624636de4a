#pragma once

#include <cstdint>
#include <string>

namespace simulator {

/// Prints a line for somebody who watches, at once. It is no record whatever the text holds.
void printProgress(const std::string& text);

/// Prints a record: a key and its value on a line of its own. An empty value is no record and is
/// left out; a value of several lines becomes one.
void printRecord(const std::string& key, const std::string& value);

/// A size as people read it: "0 bytes", "512 bytes", "12.5 MB". Units: 1 KB is 1024 bytes.
std::string sizeText(std::uint64_t bytes);

} // namespace simulator
