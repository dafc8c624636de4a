#pragma once

#include "Simulator/Picture/AlertLayout.h"
#include "Simulator/Picture/Geometry.h"
#include "Simulator/Picture/PhoneScreen.h"
#include "Simulator/Picture/Typesetting.h"

#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// An icon with its name below.
struct IconLayout {
    Box box;
    Box icon;
    TextBlock title;
    bool isEnabled = true;
    /// The device's path of the bundle that holds the icon; missing for none.
    std::optional<std::string> bundle;
};

struct StatusBarLayout {
    Box box;
    Box signal;
    Box lock;
    TextBlock clock;
    Box battery;
};

/// The bar below the status bar: with the button that sheets of this kind point at, or with the
/// title of an application.
struct BarLayout {
    Box box;
    std::optional<Box> button;
    TextBlock title;
};

/// The host application's page, as it is after a hand-over.
struct HostPageLayout {
    Box box;
    Box icon;
    Box panel;
    TextBlock url;
};

/// Where everything on the screen goes. All boxes are in points of the screen, whose upper left
/// corner is the origin.
struct PictureLayout {
    Look look = Look::glossy;
    Box screen;
    StatusBarLayout statusBar;
    std::optional<BarLayout> bar;
    std::vector<IconLayout> toggles;
    /// What is said about toggles that are not shown, or that there are none because of a crash.
    std::optional<TextBlock> note;
    Box dock;
    IconLayout hostApplication;
    /// Covers the home screen.
    std::optional<HostPageLayout> hostPage;
    /// The parts of the screen that popovers beside them point at.
    std::vector<Box> anchors;
    /// Back to front.
    std::vector<AlertLayout> alerts;
};

/// The device's path of the host application.
inline constexpr const char* hostApplicationBundle = "/Applications/Purgo.app";

PictureLayout pictureLayout(const PhoneScreen& screen);

/// What a popover may cover of a pad's screen, and what it points at.
struct PopoverPlacement {
    Box area;
    Box anchor;
};

/// Lays a popover out beside its anchor: below it where there is room, otherwise above it, on its
/// right or on its left.
AlertLayout popoverLayout(const ShownAlert& alert, Look look, PopoverPlacement placement);

} // namespace simulator
