// For builds without the terminal library: there is no terminal that could show the interface.

#include "Simulator/Terminal/TerminalScreen.h"

#include <stdexcept>

namespace simulator {

std::string TerminalScreen::obstacle() {
    return "this build has no full-screen interface";
}

TerminalScreen::TerminalScreen() {
    throw std::runtime_error(obstacle());
}

TerminalScreen::~TerminalScreen() = default;

void TerminalScreen::Deleter::operator()(void* /*screen*/) const {}

Size TerminalScreen::size() const {
    return {};
}

void TerminalScreen::show(const Frame& /*frame*/) {}

std::optional<Key> TerminalScreen::takeKey() {
    return std::nullopt;
}

bool TerminalScreen::isHungUp() const {
    return true;
}

void TerminalScreen::resize() {}

void TerminalScreen::forgetContents() {}

void TerminalScreen::suspend() {}

} // namespace simulator
