#pragma once

#include <string>

namespace simulator {

/// The icon of a bundle as a "data:" URI, so that no content of the file can touch the document
/// around it. Empty when the bundle has none that can be shown: an SVG or PNG file of an ordinary
/// size, named in its Info.plist or called "icon".
///
/// Threads: any. Blocks for the time of the reading.
std::string iconURI(const std::string& deviceRoot, const std::string& bundle);

} // namespace simulator
