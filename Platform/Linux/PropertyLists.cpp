#include "Platform/PropertyLists.h"

#include "Platform/Pipes.h"
#include "Platform/Portable/PropertyListReader.h"
#include "Platform/System.h"

#include <array>
#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

/// Far more than any property list has. It ends the reading of a file that grows all the time or
/// that the kernel makes up without end.
constexpr std::size_t maximumFileSize = std::size_t{256} << 20;

/// Opens a file without waiting for the other end of a pipe and without taking a terminal over.
FileDescriptor openForReading(const std::string& path) {
    return FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

/// Whether the descriptor is open on a file of which there is an end worth reading to.
bool isOrdinaryFile(const FileDescriptor& file) {
    struct stat status {};
    return file.isOpen() && fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_size <= static_cast<off_t>(maximumFileSize);
}

/// Reads on; negative for an error, 0 at the end of the file.
ssize_t readPiece(const FileDescriptor& file, std::array<char, 65536>& buffer) {
    ssize_t count = 0;
    do
        count = read(file.get(), buffer.data(), buffer.size());
    while (count < 0 && errno == EINTR);
    return count;
}

std::optional<std::string> contentsOfFile(const std::string& path) {
    // The system would take a path for its part before the U+0000, which is another file.
    if (path.find('\0') != std::string::npos)
        return std::nullopt;
    const FileDescriptor file = openForReading(path);
    if (!isOrdinaryFile(file))
        return std::nullopt;
    std::string contents;
    std::array<char, 65536> buffer;
    ssize_t count = 0;
    while ((count = readPiece(file, buffer)) > 0) {
        contents.append(buffer.data(), static_cast<std::size_t>(count));
        if (contents.size() > maximumFileSize)
            return std::nullopt;
    }
    if (count < 0)
        return std::nullopt;
    return contents;
}

} // namespace

std::shared_ptr<const PropertyListDictionary>
dictionaryWithContentsOfFile(const std::string& devicePath) {
    const std::optional<std::string> contents = contentsOfFile(rootedPath(devicePath));
    if (!contents)
        return nullptr;
    const PropertyListPointer root = readPropertyList(*contents);
    if (!root || !root->dictionary())
        return nullptr;
    return {root, root->dictionary()};
}

} // namespace platform
