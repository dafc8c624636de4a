#include "Simulator/Supervisor/Session.h"

#include "Simulator/Picture/PhoneScreen.h"
#include "Simulator/Supervisor/LineFrontEnds.h"
#include "Simulator/Supervisor/Recording.h"
#include "Simulator/Supervisor/Replay.h"
#include "Simulator/Supervisor/ScreenWatcher.h"
#include "Simulator/Supervisor/Supervisor.h"
#include "Simulator/Terminal/TerminalFrontEnd.h"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace simulator {

namespace {

using platform::ClockKind;
using platform::FileDescriptor;

FileDescriptor openInput(const std::optional<std::string>& script) {
    const bool isFile = script && *script != "-";
    FileDescriptor input(isFile ? open(script->c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY)
                                : fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
    struct stat status {};
    if (input.isOpen() && isFile && fstat(input.get(), &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        input.close();
    }
    if (!input.isOpen())
        throw UsageError(script.value_or("-") + ": " + std::strerror(errno));
    return input;
}

Recording readRecording(int input, const std::string& name) {
    try {
        return Recording::read(input);
    } catch (const std::runtime_error& error) {
        throw UsageError(name + ": " + error.what());
    }
}

/// Takes the device over that the recording was made with, as far as nobody asked for another one.
void adopt(Options& options, const Recording& recording) {
    if (options.clock == ClockKind::real)
        throw UsageError("a recording is done again on the virtual clock only");
    if (recording.lines.empty() || !recording.lines.front().has("recording"))
        return;
    const auto& header = recording.lines.front().content;
    const auto text = [&header](const char* member) {
        const auto found = header.find(member);
        return found != header.end() && found->is_string() ? found->get<std::string>() : "";
    };
    if (const auto version = platform::SystemVersion::parse(text("system"));
        version && !options.isGiven("--system"))
        options.systemVersion = *version;
    if (!options.isGiven("--idiom"))
        options.idiom = text("idiom") == "pad" ? platform::UserInterfaceIdiom::pad
                                               : platform::UserInterfaceIdiom::phone;
    if (!options.isGiven("--unlocked"))
        options.isUnlocked = header.contains("unlocked") && header.at("unlocked") == true;
}

platform::DeviceConfiguration configurationOf(const Options& options) {
    platform::DeviceConfiguration configuration;
    configuration.root = options.device;
    configuration.systemVersion = options.systemVersion;
    configuration.idiom = options.idiom;
    configuration.clock =
        options.clock.value_or(options.script ? ClockKind::virtualTime : ClockKind::real);
    configuration.isUnlocked = options.isUnlocked;
    return configuration;
}

/// Whoever uses the device, with the layers in between.
class Session {
public:
    Session(Options options, const Signals& endingSignals)
        : options_(std::move(options)), endingSignals_(endingSignals),
          output_(endingSignals.descriptor()),
          printer_(output_, options_.json ? EventFormat::json : EventFormat::words) {}

    int run() {
        makeFrontEnd();
        const auto configuration = configurationOf(options_);
        screen_.system = configuration.systemVersion;
        screen_.idiom = configuration.idiom;
        screen_.isUnlocked = configuration.isUnlocked;
        FrontEnd* outermost = frontEnd_.get();
        if (options_.record)
            outermost = &record(configuration);
        ScreenWatcher watcher(*outermost, screen_, options_.device, time_,
                              isFullScreen_ ? Listing::atEachStart : Listing::forPictures);
        supervisor_.emplace(configuration, watcher, endingSignals_);
        supervisor_->run();
        if (recorder_)
            recorder_->finish();
        return (recorder_ ? *recorder_ : *frontEnd_).exitStatus();
    }

private:
    void makeFrontEnd() {
        auto input = openInput(options_.script);
        const bool isTyped = !options_.script && isatty(STDIN_FILENO);
        if (options_.script && Recording::isIn(input.get()))
            frontEnd_ = makeReplay(input.get());
        else if (!options_.prompt && !isTyped)
            frontEnd_ = std::make_unique<ScriptFrontEnd>(LineInput(std::move(input)), printer_);
        else
            makeInteractive(LineInput(std::move(input)), isTyped);
    }

    std::unique_ptr<FrontEnd> makeReplay(int input) {
        auto recording = readRecording(input, *options_.script);
        adopt(options_, recording);
        return std::make_unique<ReplayFrontEnd>(std::move(recording), printer_, time_);
    }

    void makeInteractive(LineInput input, bool isTyped) {
        const bool hasTerminal =
            isTyped && isatty(STDOUT_FILENO) && printer_.format() == EventFormat::words;
        if (hasTerminal && !options_.prompt) {
            std::string reason;
            frontEnd_ = TerminalFrontEnd::make(screen_, time_, reason);
            isFullScreen_ = frontEnd_ != nullptr;
            if (!isFullScreen_)
                std::cerr << "purgo-simulator: " << reason << ", so here is a prompt" << std::endl;
        }
        if (!frontEnd_)
            frontEnd_ = std::make_unique<PromptFrontEnd>(std::move(input), printer_, hasTerminal);
    }

    Recorder& record(const platform::DeviceConfiguration& configuration) {
        try {
            return recorder_.emplace(*frontEnd_, *options_.record, configuration, time_);
        } catch (const std::system_error& error) {
            throw UsageError(error.what());
        }
    }

    Options options_;
    const Signals& endingSignals_;
    Output output_;
    EventPrinter printer_;
    PhoneScreen screen_;
    std::optional<Supervisor> supervisor_;
    DeviceTime time_ = [this] {
        return supervisor_ ? supervisor_->now() : std::chrono::nanoseconds::zero();
    };
    std::unique_ptr<FrontEnd> frontEnd_;
    bool isFullScreen_ = false;
    std::optional<Recorder> recorder_;
};

} // namespace

int runSession(Options options, const Signals& endingSignals) {
    return Session(std::move(options), endingSignals).run();
}

} // namespace simulator
