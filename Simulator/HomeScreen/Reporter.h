#pragma once

#include "Platform/Linux/Device.h"
#include "Simulator/Link/LineChannel.h"
#include "Simulator/Link/Messages.h"

#include <cstdint>
#include <string>

namespace simulator {

/// Tells the supervisor what happens in the home screen: events, and the answers to its commands.
///
/// Threads:  main thread only.
/// Errors:   when the supervisor is gone the process ends at once, since nobody is left for whom
///           it could go on.
class Reporter : public platform::DeviceObserver {
public:
    explicit Reporter(LineChannel& channel) : channel_(channel) {}

    /// Reports an event; `members` follow the time and the name.
    void report(const char* eventName, const Event& members);

    /// What is reported from now on is sent as a message of this kind.
    void reportAs(Message::Kind kind) { kind_ = kind; }

    void send(Message::Kind kind, nlohmann::ordered_json content = nullptr);

    void alertShown(const platform::ScreenAlert& alert) override;
    void alertChanged(const platform::ScreenAlert& alert) override;
    void alertDismissed(const platform::ScreenAlert& alert, std::intptr_t buttonIndex) override;
    void urlOpened(const std::string& url, const std::string& through) override;
    void switchRegistered(const std::string& identifier) override;
    void listenerRegistered(const std::string& name) override;

private:
    LineChannel& channel_;
    Message::Kind kind_ = Message::Kind::event;
};

/// An optional value as a member of an event: null when it is missing.
template <typename Value>
Event orNull(const std::optional<Value>& value) {
    return value ? Event(*value) : Event(nullptr);
}

/// All that an event tells of an alert.
Event describe(const platform::ScreenAlert& alert);

} // namespace simulator
