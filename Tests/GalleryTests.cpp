#include "Tests/Support/SimulatedPhone.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

// The backend on the alert controller is part of 64-bit builds only.
constexpr bool hasController = sizeof(void*) == 8;

struct Device {
    std::string system;
    std::string idiom;
    std::string backend;
};

/// An exhibit as a person sees it: Cancel in parentheses, "!" behind the destructive button.
struct Seen {
    std::string name;
    std::string buttons;
    std::string anchorOnPhone = {};
    std::string anchorOnPad = {};
    /// How often its text changes in the 5 seconds until it closes by itself; -1 when it stays.
    int changes = -1;
};

const std::string middle = "view 384,512,1,1";

const std::vector<Seen> exhibits = {
    {"alert-none", "", "", "", 0},
    {"alert-1", "One"},
    {"alert-2", "One Two"},
    {"alert-3", "One Two Three"},
    {"alert-4", "One Two Three Four"},
    {"alert-1-cancel", "(Cancel)"},
    {"alert-2-cancel-first", "(Cancel) One"},
    {"alert-2-cancel-last", "(Cancel) One"},
    {"alert-3-cancel-first", "One Two (Cancel)"},
    {"alert-3-cancel-middle", "One Two (Cancel)"},
    {"alert-2-destructive", "(Cancel) Erase!"},
    {"alert-4-destructive", "One Erase! Two (Cancel)"},
    {"alert-view-controller", "(Cancel) One"},
    {"alert-text-field", "(Cancel) One"},
    {"countdown", "(Cancel) Save", "", "", 5},
    {"countdown-without-placeholder", "(Cancel) Save", "", "", 0},
    {"sheet-none", "", "view", middle, 0},
    {"sheet-1", "One", "view", middle},
    {"sheet-2", "One (Cancel)", "view", middle},
    {"sheet-3", "One Two (Cancel)", "view", middle},
    {"sheet-4", "One Erase! Two (Cancel)", "view", middle},
    {"sheet-destructive", "Erase! One (Cancel)", "view", middle},
    {"sheet-countdown", "Save", "view", middle, 5},
    {"sheet-view", "One (Cancel)", "view", "view 60,20,1,1"},
    {"sheet-rect", "One (Cancel)", "view", "view 40,60,80,20"},
    {"sheet-bar-button", "One (Cancel)", "barButtonItem", "barButtonItem"},
    {"sheet-toolbar", "One (Cancel)", "toolbar", "view 384,22,1,1"},
    {"sheet-tab-bar", "One (Cancel)", "tabBar", "view 384,24.5,1,1"},
};

std::string without(std::string text, const std::string& marks) {
    std::erase_if(text, [&](char c) { return marks.find(c) != std::string::npos; });
    return text;
}

/// What is to be told of an exhibit: how it looks, and how it goes.
std::string expected(const Seen& seen, const Device& device) {
    const bool isSheet = seen.name.starts_with("sheet");
    const bool isOlder = device.backend == "view";
    const bool isPad = device.idiom == "pad";
    std::ostringstream told;
    told << "\n" << (!isOlder ? "UIAlertController " : isSheet ? "UIActionSheet " : "UIAlertView ");
    // An alert view knows no destructive button.
    told << seen.name << ": " << (isOlder && !isSheet ? without(seen.buttons, "!") : seen.buttons);
    // An alert controller on a phone needs nothing to point at, but always a window.
    if (isSheet && (isOlder || isPad))
        told << " at " << (isPad ? seen.anchorOnPad : seen.anchorOnPhone);
    if (!isOlder)
        told << " level " << (isSheet || seen.name == "alert-view-controller" ? 0 : 2001);
    if (seen.changes < 0)
        told << ", dismissed 0, ran "
             << without(seen.buttons.substr(0, seen.buttons.find(' ')), "()!");
    for (int change = 0; change < seen.changes; ++change)
        told << ", changed";
    if (seen.changes >= 0)
        told << ", dismissed -1" << (seen.buttons.ends_with("Save") ? ", ran Save" : "");
    return told.str();
}

void tellAlert(std::ostream& told, const Json& alert) {
    const auto title = alert.at("title").get<std::string>();
    told << "\n" << alert.at("control").get<std::string>() << " ";
    told << title.substr(0, title.find('\n')) << ":" << (alert.at("buttons").empty() ? " " : "");
    for (std::size_t index = 0; index < alert.at("buttons").size(); ++index) {
        const auto button = alert.at("buttons")[index].get<std::string>();
        told << " " << (alert.at("cancelButtonIndex") == index ? "(" + button + ")" : button)
             << (alert.at("destructiveButtonIndex") == index ? "!" : "");
    }
    if (alert.contains("anchor")) {
        told << " at " << alert.at("anchor").at("kind").get<std::string>();
        if (alert.at("anchor").contains("rect"))
            for (const char* member : {"x", "y", "width", "height"})
                told << (*member == 'x' ? " " : ",")
                     << alert.at("anchor").at("rect").at(member).get<double>();
    }
    if (alert.contains("windowLevel"))
        told << " level " << alert.at("windowLevel").get<double>();
}

std::string retold(const std::string& output) {
    std::ostringstream told;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        const auto event = Json::parse(line);
        const auto& name = event.at("event");
        if (name == "alert-shown")
            tellAlert(told, event);
        else if (name == "alert-changed")
            told << ", changed";
        else if (name == "alert-dismissed")
            told << ", dismissed " << event.at("buttonIndex");
        else if (name == "exhibit-action")
            told << ", ran " << event.at("action").get<std::string>();
        else if (name == "exhibit")
            told << "\n" << event.at("name").get<std::string>() << " " << event.at("alive");
    }
    return told.str();
}

class Gallery : public testing::Test {
protected:
    Gallery() {
        fs::remove_all(phone.files.at("/Library"));
        fs::create_directory(phone.files.at("/Library"));
        fs::create_symlink(std::string(PURGO_STAGED_DEVICE) + "/Library/Gallery",
                           phone.files.at("/Library/Gallery"));
    }

    const tests::SimulatedPhone phone;
};

TEST_F(Gallery, EveryExhibitLooksAndGoesAsOnItsDeviceAndLeavesNothingAlive) {
    std::vector<Device> devices;
    for (const char* idiom : {"phone", "pad"}) {
        for (const char* system : {"5.1", "7.1", "8.4"})
            devices.push_back({system, idiom, "view"});
        if (hasController)
            devices.push_back({"8.4", idiom, "controller"});
    }
    for (const auto& device : devices) {
        std::string script, story, afterwards;
        for (const auto& seen : exhibits) {
            script += "gallery " + seen.name + " " + device.backend +
                      (seen.changes < 0 ? "\npress #0\n" : "\nwait 5\n");
            story += expected(seen, device);
            afterwards += "\n" + seen.name + " 0";
        }
        const auto result = phone.run(
            script + "gallery", {"--json", "--system", device.system, "--idiom", device.idiom});
        EXPECT_EQ(retold(result.output) + result.errors, story + afterwards)
            << device.system << " " << device.idiom << " " << device.backend;
    }
}

TEST_F(Gallery, PeopleReadWhereAnExhibitIsAndWhatTheyTyped) {
    const auto words = phone
                           .run("gallery sheet-toolbar\ngallery alert-text-field\n"
                                "type Ann # by hand\npress One\npress #1\ngallery alert-1",
                                {"--system=4.3", "--idiom=pad"})
                           .output;
    EXPECT_EQ(words.substr(std::min(words.find("points"), words.size())),
              R"(points at a view, at 384, 22, size 1 × 1
[   0.000] alert 2, UIAlertView: “alert-text-field”
           With a text field
           text field: “”, placeholder “Name”
           [0] Cancel (cancel)  [1] One
[   0.000] alert 2: text field: “Ann”, placeholder “Name”
[   0.000] alert 2 dismissed with “One”
[   0.000] the action of “One” ran: exhibit alert-text-field
[   0.000] alert 1 dismissed with “Cancel”
[   0.000] the action of “Cancel” ran: exhibit sheet-toolbar
[   0.000] alert 3, UIAlertView: “alert-1”
           One button
           [0] One
)");
    // An alert, its action and its control.
    EXPECT_NE(
        phone.run("gallery alert-1\ngallery", {}).output.find("“One button”, 3 objects alive"),
        std::string::npos);
}

TEST_F(Gallery, WhatCannotBeShownOrWrittenIsRefused) {
    const std::string noController = hasController ? "7.1" : "8.4";
    const std::vector<std::string> cases[] = {
        {"gallery alert", "there is no exhibit \"alert\""},
        {"gallery alert-1 sheet", "there is no backend \"sheet\", only view and controller"},
        {"gallery alert-1 controller",
         "there is no alert controller before system 8.0, nor in 32-bit builds"},
        {"type a", "no alert is on the screen"},
        {"gallery alert-1\ntype a", "the front alert has no text field"},
    };
    for (const auto& each : cases)
        EXPECT_NE(phone.run(each[0], {"--system", noController}).errors.find(": " + each[1] + "\n"),
                  std::string::npos)
            << each[0];
    fs::remove(phone.files.at("/Library/Gallery"));
    EXPECT_EQ(phone.run("gallery").errors, "1: the device has no gallery that can be opened at "
                                           "/Library/Gallery/Gallery.dylib\n");
}

} // namespace
