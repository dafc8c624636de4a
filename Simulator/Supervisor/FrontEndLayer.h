#pragma once

#include "Simulator/Supervisor/FrontEnd.h"

namespace simulator {

/// Lies between the supervisor and a front end. It passes everything on; a derived class does
/// something about some of it.
///
/// Ownership: the front end is not owned.
class FrontEndLayer : public FrontEnd {
public:
    explicit FrontEndLayer(FrontEnd& inner) : inner_(inner) {}

    std::optional<std::string> nextCommand() override { return inner_.nextCommand(); }
    void commandBegun(std::chrono::nanoseconds time) override { inner_.commandBegun(time); }
    void commandDone() override { inner_.commandDone(); }
    void commandFailed(const std::string& reason) override { inner_.commandFailed(reason); }
    void commandInterrupted() override { inner_.commandInterrupted(); }
    void eventHappened(const Event& event) override { inner_.eventHappened(event); }
    void listed(const Event& event) override { inner_.listed(event); }
    void homeScreenEnded(int signal) override { inner_.homeScreenEnded(signal); }
    std::vector<int> descriptors() const override { return inner_.descriptors(); }
    void descriptorReady(int descriptor) override { inner_.descriptorReady(descriptor); }
    std::optional<std::chrono::seconds> commandLimit() const override {
        return inner_.commandLimit();
    }
    bool isFinished() const override { return inner_.isFinished(); }
    int exitStatus() const override { return inner_.exitStatus(); }

protected:
    FrontEnd& inner() { return inner_; }

private:
    FrontEnd& inner_;
};

} // namespace simulator
