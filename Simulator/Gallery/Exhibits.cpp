#include "Simulator/Gallery/Exhibits.h"

namespace simulator {

namespace {

constexpr auto alert = platform::UIAlertControllerStyleAlert;
constexpr auto sheet = platform::UIAlertControllerStyleActionSheet;

std::vector<Exhibit> makeExhibits() {
    using enum ShownFrom;
    const ExhibitAction one{"One"}, two{"Two"}, three{"Three"}, four{"Four"};
    const ExhibitAction cancel{"Cancel", platform::UIAlertActionStyleCancel};
    const ExhibitAction erase{"Erase", platform::UIAlertActionStyleDestructive};
    const ExhibitAction save{"Save", platform::UIAlertActionStyleDefault, true};
    return {
        {"alert-none", "No button; it closes after 5 seconds", alert, nothing, {}, 5},
        {"alert-1", "One button", alert, nothing, {one}},
        {"alert-2", "Two buttons", alert, nothing, {one, two}},
        {"alert-3", "Three buttons", alert, nothing, {one, two, three}},
        {"alert-4", "Four buttons", alert, nothing, {one, two, three, four}},
        {"alert-1-cancel", "Nothing but Cancel", alert, nothing, {cancel}},
        {"alert-2-cancel-first", "Cancel, then another", alert, nothing, {cancel, one}},
        {"alert-2-cancel-last", "One, then Cancel", alert, nothing, {one, cancel}},
        {"alert-3-cancel-first", "Cancel, then two others", alert, nothing, {cancel, one, two}},
        {"alert-3-cancel-middle", "Cancel between two others", alert, nothing, {one, cancel, two}},
        {"alert-2-destructive", "Erase, then Cancel", alert, nothing, {erase, cancel}},
        {"alert-4-destructive", "Erase, Cancel inside", alert, nothing, {one, erase, cancel, two}},
        {"alert-view-controller", "From a view controller", alert, viewController, {one, cancel}},
        {"alert-text-field", "With a text field", alert, nothing, {one, cancel}, 0, true},
        {"countdown", "Seconds until it saves: <countdown>", alert, nothing, {cancel, save}, 5},
        {"countdown-without-placeholder", "Saves soon", alert, nothing, {cancel, save}, 5},
        {"sheet-none", "No button; it closes after 5 seconds", sheet, viewController, {}, 5},
        {"sheet-1", "One button", sheet, viewController, {one}},
        {"sheet-2", "Cancel, then another", sheet, viewController, {cancel, one}},
        {"sheet-3", "Cancel between two others", sheet, viewController, {one, cancel, two}},
        {"sheet-4", "Erase, Cancel inside", sheet, viewController, {one, erase, cancel, two}},
        {"sheet-destructive", "Erase before others", sheet, viewController, {erase, one, cancel}},
        {"sheet-countdown",
         "Seconds until it saves: <countdown>",
         sheet,
         viewController,
         {save},
         5},
        {"sheet-view", "From a view", sheet, view, {one, cancel}},
        {"sheet-rect", "From a rectangle", sheet, rectangle, {one, cancel}},
        {"sheet-bar-button", "From a bar button item", sheet, barButtonItem, {one, cancel}},
        {"sheet-toolbar", "From a tool bar", sheet, toolbar, {one, cancel}},
        {"sheet-tab-bar", "From a tab bar", sheet, tabBar, {one, cancel}},
    };
}

} // namespace

const std::vector<Exhibit>& allExhibits() {
    static const auto exhibits = makeExhibits();
    return exhibits;
}

} // namespace simulator
