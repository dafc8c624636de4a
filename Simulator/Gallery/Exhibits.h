#pragma once

#include "Platform/UIKit/AlertStyles.h"

#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

struct ExhibitAction {
    std::string title;
    std::intptr_t style = platform::UIAlertActionStyleDefault;
    /// Whether it runs when the countdown ends.
    bool autoDismissFlag = false;
};

/// From what an exhibit is shown. All but the first are in a window of the exhibit's own.
enum class ShownFrom { nothing, viewController, view, rectangle, barButtonItem, toolbar, tabBar };

/// The text that shows the seconds left, in the description of an exhibit that counts down.
inline constexpr const char* exhibitPlaceholder = "<countdown>";

/// How to build an alert or action sheet. Its title is the name, its message the description.
struct Exhibit {
    std::string name;
    std::string description;
    std::intptr_t style;
    ShownFrom from;
    /// In the order in which they are added.
    std::vector<ExhibitAction> actions;
    /// Until it closes by itself; 0 for never.
    std::uintptr_t seconds = 0;
    bool hasTextField = false;
};

/// All exhibits, in the order of the tour.
const std::vector<Exhibit>& allExhibits();

} // namespace simulator
