#include "Shared/Source/Model/Tasks/FileActions.h"

#include <fcntl.h>

namespace purgo {

FileActions::FileActions() {
    note(posix_spawn_file_actions_init(&actions_));
    isInitialised_ = failure_ == 0;
}

FileActions::~FileActions() {
    if (isInitialised_)
        posix_spawn_file_actions_destroy(&actions_);
}

void FileActions::duplicate(int descriptor, int onto) {
    if (isInitialised_)
        note(posix_spawn_file_actions_adddup2(&actions_, descriptor, onto));
}

void FileActions::close(int descriptor) {
    if (isInitialised_)
        note(posix_spawn_file_actions_addclose(&actions_, descriptor));
}

void FileActions::reopenForWriting(int descriptor, const std::string& path) {
    close(descriptor);
    if (isInitialised_)
        note(posix_spawn_file_actions_addopen(&actions_, descriptor, path.c_str(), O_WRONLY, 0));
}

void FileActions::note(int result) {
    if (failure_ == 0)
        failure_ = result;
}

} // namespace purgo
