#include "Source/Model/PurgoLoader.h"

namespace {

/// Starts the library up while it is being loaded, before the process goes on with its own start.
[[gnu::constructor]] void load() {
    purgo::PurgoLoader::loader().loadPlugins();
}

} // namespace
