#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

/// What is registered by name, in the order in which the names came. A later registration takes
/// the place of an earlier one of its name.
///
/// Ownership: keeps what is registered alive.
template <typename Registered>
class Registrations {
public:
    void add(const std::string& name, std::shared_ptr<Registered> object) {
        for (auto& entry : entries_)
            if (entry.first == name) {
                entry.second = std::move(object);
                return;
            }
        entries_.emplace_back(name, std::move(object));
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : entries_)
            names.push_back(entry.first);
        return names;
    }

    /// Null when nothing is registered under this name.
    std::shared_ptr<Registered> named(const std::string& name) const {
        for (const auto& entry : entries_)
            if (entry.first == name)
                return entry.second;
        return nullptr;
    }

private:
    std::vector<std::pair<std::string, std::shared_ptr<Registered>>> entries_;
};

} // namespace simulator
