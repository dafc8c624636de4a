#pragma once

#include "PGAlertController/Source/PGAlertContracts.h"
#include "Platform/UIKit/AlertController.h"

namespace purgo {

/// A system action in the terms of the library's own contract.
///
/// Platform: part of 64-bit builds only.
class PGAlertActionConformance : public PGAlertActionProtocol {
public:
    /// Whether the system has actions of its own.
    static bool isSupported();

    /// Makes a system action. The system runs the handler when it is chosen.
    static std::shared_ptr<PGAlertActionConformance>
    actionWithTitle(std::optional<std::string> title, std::intptr_t style, Handler handler);

    explicit PGAlertActionConformance(std::shared_ptr<platform::UIAlertAction> action);

    std::optional<std::string> title() const override { return action_->title(); }
    std::intptr_t style() const override { return action_->style(); }

    const std::shared_ptr<platform::UIAlertAction>& action() const { return action_; }

private:
    std::shared_ptr<platform::UIAlertAction> action_;
};

} // namespace purgo
