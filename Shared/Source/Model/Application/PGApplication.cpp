#include "Shared/Source/Model/Application/PGApplication.h"

#include "Platform/System.h"

namespace purgo {
namespace {

// The numbers of the Foundation framework that came with versions 6.0 and 5.0 of the system.
constexpr double foundationVersion6 = 992.0;
constexpr double foundationVersion5 = 881.0;

const char* executableName() {
    const double version = platform::foundationVersionNumber();
    if (version >= foundationVersion6)
        return "iOS6_Purgo";
    return version >= foundationVersion5 ? "iOS5_Purgo" : "iOS4_Purgo";
}

} // namespace

std::string PGApplication::bundlePath() {
    return "/Applications/Purgo.app";
}

std::string PGApplication::executablePath(const std::string& bundle) {
    return bundle + "/" + executableName();
}

} // namespace purgo
