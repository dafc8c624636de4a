// Fills the cache folders of a device, so that there is something to clean.

#include "Simulator/Device/Litter.h"

#include <charconv>
#include <cstddef>
#include <iostream>
#include <string_view>

int main(int argumentCount, char** arguments) {
    const std::string_view text = argumentCount == 3 ? arguments[2] : "";
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size()) {
        std::cerr << "usage: purgo-make-litter DEVICE COUNT\n";
        return 2;
    }
    const simulator::Litter litter = simulator::makeLitter(arguments[1], count);
    std::cout << litter.files << " files, " << litter.bytes << " bytes\n";
    if (litter.error.empty())
        return 0;
    std::cerr << litter.error << '\n';
    return 1;
}
