#pragma once

#include "PGAlertController/Source/PGAlertContracts.h"

#include <utility>

namespace purgo {

/// The library's own action: a title and a style. The handler stays with the action that wraps it.
class PGAlertActionConcrete : public PGAlertActionProtocol {
public:
    /// Keeps title and style as they are, whatever the style; drops the handler.
    static std::shared_ptr<PGAlertActionConcrete>
    actionWithTitle(std::optional<std::string> title, std::intptr_t style, const Handler& handler);

    PGAlertActionConcrete(std::optional<std::string> title, std::intptr_t style)
        : style_(style), title_(std::move(title)) {}

    std::optional<std::string> title() const override { return title_; }
    std::intptr_t style() const override { return style_; }

private:
    std::intptr_t style_;
    std::optional<std::string> title_;
};

} // namespace purgo
