#include "Shared/Source/Model/Tasks/PGTaskDictionaryOutput.h"

#include "Platform/Text.h"
#include "Shared/Source/Model/Tasks/PGTask.h"

namespace purgo {

std::map<std::string, std::string> dictionaryFromOutput(const PGTask& task) {
    std::map<std::string, std::string> dictionary;
    std::string_view rest = task.output().value_or("");
    while (!rest.empty()) {
        const std::string_view line = platform::takeLine(rest);
        const auto separator = line.find('=');
        if (separator == std::string_view::npos || separator + 1 == line.size())
            continue;
        dictionary.insert_or_assign(std::string(line.substr(0, separator)),
                                    std::string(line.substr(separator + 1)));
    }
    return dictionary;
}

} // namespace purgo
