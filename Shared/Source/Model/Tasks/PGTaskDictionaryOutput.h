#pragma once

#include <map>
#include <string>

namespace purgo {

class PGTask;

/// Reads a task's output as key/value output: a record a line, made of the key, "=" and the value.
///
/// The first "=" of a line counts, and nothing is trimmed or unquoted. A line without "=", or with
/// nothing behind it, is no record; the key may be empty. The last record of a key wins. A task
/// without output has no records.
///
/// Threads: any, once the task has ended.
std::map<std::string, std::string> dictionaryFromOutput(const PGTask& task);

} // namespace purgo
