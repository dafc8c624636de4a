#pragma once

#include <string>

#include <spawn.h>

namespace purgo {

/// What a child does with its descriptors before it becomes another program, in the order in which
/// it was asked for.
///
/// Errors: the error number of the first failure is kept in `failure()`.
class FileActions {
public:
    FileActions();
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    ~FileActions();

    /// Makes `onto` another descriptor of the same open file.
    void duplicate(int descriptor, int onto);
    void close(int descriptor);

    /// Closes the descriptor and opens it again, write-only, on the file at a path.
    void reopenForWriting(int descriptor, const std::string& path);

    int failure() const { return failure_; }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    void note(int result);

    posix_spawn_file_actions_t actions_;
    bool isInitialised_;
    int failure_ = 0;
};

} // namespace purgo
