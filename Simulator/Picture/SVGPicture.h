#pragma once

#include "Simulator/Picture/PhoneScreen.h"

#include <string>

namespace simulator {

/// Draws what a person sees of the device as an SVG document, in the look of its system's version.
///
/// The document needs nothing beside itself: icons are embedded, and every text is drawn in the
/// viewer's sans-serif face. The same screen always gives the same document.
///
/// `deviceRoot` is the folder that stands for the device's "/". A toggle whose icon cannot be read
/// from there gets a neutral one.
///
/// Threads: any. Blocks for the reading of the icons.
std::string svgPicture(const PhoneScreen& screen, const std::string& deviceRoot);

} // namespace simulator
