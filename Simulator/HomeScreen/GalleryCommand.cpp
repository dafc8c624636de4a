#include "Simulator/HomeScreen/CommandActions.h"

#include "Platform/Linux/ClassRegistry.h"
#include "Simulator/Gallery/Gallery.h"
#include "Simulator/HomeScreen/HomeScreen.h"

#include <memory>

namespace simulator {

namespace {

std::shared_ptr<Gallery> openedGallery() {
    const auto* galleryClass = platform::classNamed(galleryClassName);
    if (!galleryClass) {
        platform::openLibrary(galleryPath);
        galleryClass = platform::classNamed(galleryClassName);
    }
    auto gallery =
        galleryClass ? std::dynamic_pointer_cast<Gallery>(galleryClass->sharedObject()) : nullptr;
    if (!gallery)
        throw CommandFailure(std::string("the device has no gallery that can be opened at ") +
                             galleryPath);
    return gallery;
}

AlertBackend availableBackend(const Gallery& gallery, const std::string& name) {
    if (name != "view" && name != "controller")
        throw CommandFailure("there is no backend \"" + name + "\", only view and controller");
    const auto backend = name == "view" ? AlertBackend::view : AlertBackend::controller;
    if (!gallery.isAvailable(backend))
        throw CommandFailure(
            "there is no alert controller before system 8.0, nor in 32-bit builds");
    return backend;
}

void listExhibits(HomeScreen& homeScreen, const Gallery& gallery) {
    for (const auto& exhibit : gallery.exhibits())
        homeScreen.reporter().report(eventName::exhibitListed,
                                     {{"name", exhibit.name},
                                      {"description", exhibit.description},
                                      {"alive", exhibit.alive}});
}

} // namespace

void gallery(HomeScreen& homeScreen, const Arguments& arguments) {
    const auto opened = openedGallery();
    if (arguments.empty())
        return listExhibits(homeScreen, *opened);
    const auto& name = arguments.front();
    const auto backend = availableBackend(*opened, arguments.size() > 1 ? arguments[1] : "view");
    const auto chosen = [&reporter = homeScreen.reporter(), name](const std::string& action) {
        reporter.report(eventName::exhibitAction, {{"name", name}, {"action", action}});
    };
    if (!opened->show(name, backend, chosen))
        throw CommandFailure("there is no exhibit \"" + name + "\"");
}

} // namespace simulator
