#pragma once

#include "Platform/Object.h"
#include "Platform/System.h"
#include "Platform/Text.h"

#include <memory>
#include <optional>
#include <string>

namespace platform {

/// The states that a quick toggle can have.
enum class FSSwitchState { off = 0, on = 1, indeterminate = -1 };

/// What the toggle framework asks of the provider of a switch.
///
/// Threads: the framework calls on the main thread.
class FSSwitchDataSource {
public:
    virtual ~FSSwitchDataSource() = default;

    virtual FSSwitchState stateForSwitchIdentifier(const std::string& identifier) = 0;
    virtual bool switchWithIdentifierIsSimpleAction(const std::string& identifier) = 0;
    virtual bool switchWithIdentifierIsEnabled(const std::string& identifier) = 0;
    virtual LocalizedText titleForSwitchIdentifier(const std::string& identifier) = 0;
    virtual std::optional<Bundle> bundleForSwitchIdentifier(const std::string& identifier) = 0;
    virtual void applyActionForSwitchIdentifier(const std::string& identifier) = 0;
};

/// The toggle framework's panel.
class FSSwitchPanel : public Object {
public:
    /// The one panel of the class "FSSwitchPanel".
    static std::shared_ptr<FSSwitchPanel> sharedPanel(const Class& ofClass);

    /// Registers a provider for a switch, in the place of an earlier one.
    ///
    /// Ownership: the panel owns the provider from then on.
    virtual void registerDataSource(std::shared_ptr<FSSwitchDataSource> dataSource,
                                    const std::string& forSwitchIdentifier) = 0;
};

/// An event on its way to a listener.
class LAEvent {
public:
    bool isHandled() const { return handled_; }
    void setHandled(bool handled) { handled_ = handled; }

private:
    bool handled_ = false;
};

class LAActivator;

/// What the event framework asks of a listener.
///
/// Threads: the framework calls on the main thread.
class LAListener {
public:
    virtual ~LAListener() = default;

    virtual void receiveEvent(LAActivator& activator, LAEvent& event,
                              const std::string& forListenerName) = 0;
    virtual void abortEvent(LAActivator& activator, LAEvent& event) = 0;
    virtual void otherListenerDidHandleEvent(LAActivator& activator, LAEvent& event) = 0;
    virtual LocalizedText
    requiresLocalizedTitleForListenerName(LAActivator& activator,
                                          const std::string& listenerName) = 0;
    virtual LocalizedText
    requiresLocalizedDescriptionForListenerName(LAActivator& activator,
                                                const std::string& listenerName) = 0;
};

/// The event framework.
class LAActivator : public Object {
public:
    /// The one activator of the class "LAActivator".
    static std::shared_ptr<LAActivator> sharedInstance(const Class& ofClass);

    /// Registers a listener under a name, in the place of an earlier one.
    ///
    /// Ownership: the activator owns the listener from then on.
    virtual void registerListener(std::shared_ptr<LAListener> listener,
                                  const std::string& forName) = 0;
};

} // namespace platform
