#pragma once

#include "Source/Model/PGFSSwitch.h"
#include "Source/Model/PGLAListener.h"

#include <map>
#include <memory>
#include <string>

namespace purgo {

/// The library's start: asks the host application for its settings and registers the triggers that
/// the user has enabled and whose framework is there.
///
/// Ownership:  lives as long as the process and owns the registered triggers, which own the
///             interface and the localization manager. When nothing is registered nothing is kept.
/// Threads:    the thread that loads the library; `loader` on any.
/// Errors:     none. What cannot be found or opened leads to less being registered.
class PurgoLoader {
public:
    /// The one loader of the process, made on first use and never destroyed.
    static PurgoLoader& loader();

    /// Starts the library up. Blocks until the settings query has been answered.
    void loadPlugins();

    /// Asks the host executable for the host application's settings. Blocks until it has ended.
    /// Empty when it is missing or prints nothing usable.
    std::map<std::string, std::string> settingsDictionary() const;

    /// The registered toggle provider, or null.
    const std::shared_ptr<PGFSSwitch>& fsDataSource() const { return fsDataSource_; }
    void setFsDataSource(std::shared_ptr<PGFSSwitch> dataSource) {
        fsDataSource_ = std::move(dataSource);
    }

    /// The registered event listener, or null.
    const std::shared_ptr<PGLAListener>& laListener() const { return laListener_; }
    void setLaListener(std::shared_ptr<PGLAListener> listener) {
        laListener_ = std::move(listener);
    }

private:
    PurgoLoader() = default;

    void registerSwitches(const std::shared_ptr<PurgoInterface>& purgo);
    void registerListeners(const std::shared_ptr<PurgoInterface>& purgo);

    std::shared_ptr<PGFSSwitch> fsDataSource_;
    std::shared_ptr<PGLAListener> laListener_;
};

} // namespace purgo
