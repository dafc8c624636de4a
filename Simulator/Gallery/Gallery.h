#pragma once

#include "Platform/Object.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace simulator {

/// The device's path of the gallery.
inline constexpr const char* galleryPath = "/Library/Gallery/Gallery.dylib";

/// The class whose shared object is the gallery, once the library has been opened.
inline constexpr const char* galleryClassName = "PurgoGallery";

/// What draws an exhibit: the older alert controls, or the system's alert controller.
enum class AlertBackend { view, controller };

/// A collection of alerts and action sheets, one of each kind.
///
/// The home screen never links it. It opens the library when it is asked for the gallery, looks
/// its class up and finds that the shared object is one of these.
///
/// Threads: main thread only.
class Gallery : public platform::Object {
public:
    struct Listing {
        std::string name;
        std::string description;
        /// How many objects live that were made to show it: alerts, actions, controls, windows.
        std::size_t alive;
    };

    /// Called with the title of an action when its handler runs.
    using Chosen = std::function<void(const std::string& action)>;

    /// The exhibits, in the order of the tour.
    virtual std::vector<Listing> exhibits() const = 0;

    /// Whether this build and the device's system have the backend.
    virtual bool isAvailable(AlertBackend backend) const = 0;

    /// Shows an exhibit; false when there is none of this name.
    ///
    /// Ownership:  nobody needs to keep anything; `chosen` is kept until the alert has gone.
    /// Requires:   an available backend.
    virtual bool show(const std::string& name, AlertBackend backend, const Chosen& chosen) = 0;
};

} // namespace simulator
