#pragma once

#include "Simulator/Picture/PhoneScreen.h"
#include "Simulator/Terminal/Canvas.h"
#include "Simulator/Terminal/InterfaceState.h"

#include <optional>
#include <vector>

namespace simulator {

/// The smallest window that the interface is shown in.
inline constexpr Size smallestWindow{80, 24};

struct CursorPosition {
    int column = 0;
    int row = 0;
};

/// All that a terminal shows at one time.
struct Frame {
    Canvas canvas;
    /// What can be chosen, in the order in which the focus goes around.
    std::vector<Target> targets;
    /// Where typing takes place, if anywhere.
    std::optional<CursorPosition> cursor;
    Area log;
    /// The scroll positions as far as there is something to scroll to.
    int logScroll = 0;
    int textScroll = 0;
    /// Whether not all of the front alert's text is to be seen.
    bool isTextCut = false;
};

/// Draws the device, the log beside it and a line of help, or what lies over them. A window that
/// is too small only says so.
///
/// The same arguments always give the same frame.
Frame drawFrame(const PhoneScreen& screen, const InterfaceState& state, Size size);

// The parts of a frame.

/// Draws what is on the device's screen, without the alerts.
void drawHomeScreen(Frame& frame, const PhoneScreen& screen, const InterfaceState& state,
                    const Area& area);

/// Draws the alerts over the device's screen.
void drawAlerts(Frame& frame, const PhoneScreen& screen, const InterfaceState& state,
                const Area& area);

void drawLog(Frame& frame, const InterfaceState& state, const Area& area);
void drawHelp(Frame& frame, const Area& area);
void drawGallery(Frame& frame, const InterfaceState& state, const Area& area);

/// Draws a text that is being typed so that its cursor is to be seen, and puts the cursor there.
void drawDraft(Frame& frame, const TextDraft& draft, const Area& row, Style style);

} // namespace simulator
