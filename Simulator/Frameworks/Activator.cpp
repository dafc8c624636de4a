#include "Platform/Linux/Device.h"
#include "Simulator/Frameworks/EventActivator.h"
#include "Simulator/Frameworks/Registrations.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace simulator {
namespace {

class Activator : public EventActivator {
public:
    void registerListener(std::shared_ptr<platform::LAListener> listener,
                          const std::string& forName) override {
        listeners_.add(forName, std::move(listener));
        platform::Device::current().observer().listenerRegistered(forName);
    }

    std::vector<std::string> names() const override { return listeners_.names(); }

    std::shared_ptr<platform::LAListener> listener(const std::string& name) const override {
        return listeners_.named(name);
    }

private:
    Registrations<platform::LAListener> listeners_;
};

// A framework's classes are known from the moment in which its image has been loaded.
[[gnu::constructor]] void addClass() {
    platform::Device::current().classes().add("LAActivator", std::make_shared<Activator>());
}

} // namespace
} // namespace simulator
