#include "Platform/Linux/Device.h"
#include "Simulator/Frameworks/Registrations.h"
#include "Simulator/Frameworks/SwitchPanel.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace simulator {
namespace {

class Panel : public SwitchPanel {
public:
    void registerDataSource(std::shared_ptr<platform::FSSwitchDataSource> dataSource,
                            const std::string& forSwitchIdentifier) override {
        dataSources_.add(forSwitchIdentifier, std::move(dataSource));
        platform::Device::current().observer().switchRegistered(forSwitchIdentifier);
    }

    std::vector<std::string> identifiers() const override { return dataSources_.names(); }

    std::shared_ptr<platform::FSSwitchDataSource>
    dataSource(const std::string& identifier) const override {
        return dataSources_.named(identifier);
    }

private:
    Registrations<platform::FSSwitchDataSource> dataSources_;
};

// A framework's classes are known from the moment in which its image has been loaded.
[[gnu::constructor]] void addClass() {
    platform::Device::current().classes().add("FSSwitchPanel", std::make_shared<Panel>());
}

} // namespace
} // namespace simulator
