#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tests {

/// A folder of a test's own, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        auto name = (std::filesystem::temp_directory_path() / "purgo-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no temporary folder");
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

    /// The path of something in the folder; `inside` may begin with "/", as a device's paths do.
    std::filesystem::path at(std::string_view inside) const {
        return path_ / std::filesystem::path(inside).relative_path();
    }

    /// Writes a file and the folders that it needs.
    void write(std::string_view inside, std::string_view content) const {
        std::filesystem::create_directories(at(inside).parent_path());
        std::ofstream(at(inside), std::ios::binary) << content;
    }

    /// Writes a shell script that can be run.
    void writeScript(std::string_view inside, std::string_view commands) const {
        write(inside, "#!/bin/sh\n" + std::string(commands) + "\n");
        std::filesystem::permissions(at(inside), std::filesystem::perms::owner_all);
    }

private:
    std::filesystem::path path_;
};

} // namespace tests
