#include "Simulator/Device/Litter.h"

#include "Simulator/Device/CacheFolders.h"
#include "Simulator/Device/Folders.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace simulator {

using platform::FileDescriptor;

namespace {

// Relative to a cache folder; the empty one is the cache folder itself.
constexpr std::array<const char*, 6> subfolders = {"",
                                                   "/com.example.weather",
                                                   "/com.example.maps/tiles/12",
                                                   "/com.example.maps/tiles/13",
                                                   "/com.example.news/images/small",
                                                   "/com.example.camera/Thumbnails"};

// Numbers without order, the same ones in every run and on every machine.
class Numbers {
public:
    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15;
        std::uint64_t number = state_;
        number = (number ^ number >> 30) * 0xBF58476D1CE4E5B9;
        number = (number ^ number >> 27) * 0x94D049BB133111EB;
        return number ^ number >> 31;
    }

    // From 0 to 512 KB, small ones far more often than large ones, as in any cache.
    std::size_t nextSize() {
        const auto magnitude = next() % 20;
        return static_cast<std::size_t>(next() % (std::uint64_t{1} << magnitude));
    }

private:
    std::uint64_t state_ = 0;
};

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool fillFile(int file, std::size_t size, std::string_view pattern) {
    while (size > 0) {
        const std::size_t length = std::min(size, pattern.size());
        if (!writeAll(file, pattern.substr(0, length)))
            return false;
        size -= length;
    }
    return true;
}

// A file under the first free name of this and the following numbers.
FileDescriptor createFile(int folder, std::size_t& number) {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    for (;; ++number) {
        const std::string name = "item-" + std::to_string(number) + ".cache";
        FileDescriptor file(openat(folder, name.c_str(), flags, 0644));
        if (file.isOpen() || errno != EEXIST)
            return file;
    }
}

} // namespace

Litter makeLitter(const std::string& deviceRoot, std::size_t count) {
    Litter litter;
    const auto failed = [&litter](const std::string& path) {
        litter.error = path + ": " + std::strerror(errno);
        return litter;
    };
    const FileDescriptor root = openDeviceRoot(deviceRoot);
    if (!root.isOpen())
        return failed(deviceRoot);

    Numbers numbers;
    std::array<char, 4096> pattern{};
    std::generate(pattern.begin(), pattern.end(),
                  [&numbers] { return static_cast<char>(numbers.next()); });
    std::size_t number = 1;
    for (; litter.files < count; ++litter.files, ++number) {
        const std::string path =
            std::string(defaultCacheFolders[number % defaultCacheFolders.size()]) +
            subfolders[number / defaultCacheFolders.size() % subfolders.size()];
        const FileDescriptor folder = openFolder(root.get(), path, IfMissing::make);
        const FileDescriptor file =
            folder.isOpen() ? createFile(folder.get(), number) : FileDescriptor();
        const std::size_t size = numbers.nextSize();
        if (!file.isOpen() || !fillFile(file.get(), size, {pattern.data(), pattern.size()}))
            return failed(path);
        litter.bytes += size;
    }
    return litter;
}

} // namespace simulator
