#include "Tests/Support/TestDevice.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <set>
#include <string>

#include <dlfcn.h>

// The library as it is delivered: loaded, never linked.
namespace {

/// The names that an image defines for others, as the system's own tool lists them.
std::set<std::string> exportedNames(const std::string& image) {
    const std::string command = "nm --dynamic --defined-only --format=posix '" + image + "'";
    const std::unique_ptr<FILE, int (*)(FILE*)> listing(popen(command.c_str(), "r"), pclose);
    std::set<std::string> names;
    std::array<char, 512> line{};
    while (fgets(line.data(), line.size(), listing.get())) {
        const std::string text = line.data();
        names.insert(text.substr(0, text.find(' ')));
    }
    return names;
}

TEST(Library, ExportsItsConstantsAndNothingElse) {
    EXPECT_EQ(exportedNames(PURGO_LIBRARY),
              (std::set<std::string>{
                  "PGTaskDidTerminateNotification", "PGTaskError", "kActivatorDylibPath",
                  "kPGACInvalidRect", "kPGFSSwitchClean", "kPGFSSwitchCleanNoPopup",
                  "kPGFSSwitchPluginIdentifier", "kPGFlipswitchDylibPath", "kPGLAListenerClean",
                  "kPGLAListenerCleanNoPopup", "kPGLAListenerPluginIdentifier"}));
}

TEST(Library, StaysInertWhereThereIsNothingForIt) {
    const tests::TestDevice phone;
    void* const library = dlopen(PURGO_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_EQ(*static_cast<const std::intptr_t*>(dlsym(library, "PGTaskError")),
              std::numeric_limits<std::intptr_t>::min());
    EXPECT_STREQ(*static_cast<const char* const*>(dlsym(library, "kPGLAListenerClean")),
                 "com.norvane.purgo.activator.clean");
    const auto* const rect =
        static_cast<const platform::CGRect*>(dlsym(library, "kPGACInvalidRect"));
    const auto farthest = std::numeric_limits<platform::CGFloat>::max();
    EXPECT_EQ(*rect, (platform::CGRect{farthest, farthest, 0, 0}));
    // All that start-up leaves behind is the end of the settings query, which nobody observes.
    phone.device().mainLoop().drain();
    EXPECT_TRUE(phone.screen().alerts().empty());
}

} // namespace
