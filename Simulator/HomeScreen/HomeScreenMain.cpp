#include "Simulator/HomeScreen/HomeScreenMain.h"

#include "Platform/Linux/Device.h"
#include "Simulator/Device/Environment.h"
#include "Simulator/HomeScreen/HomeScreen.h"

#include <csignal>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace simulator {

int homeScreenMain(const HomeScreenSettings& settings) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The supervisor may have gone before it could count.
    if (getppid() != settings.supervisor)
        return 0;
    fcntl(linkDescriptor, F_SETFD, FD_CLOEXEC);
    setenv(platform::deviceRootVariable, settings.device.root.c_str(), 1);
    setenv(homeScreenVariable, std::to_string(getpid()).c_str(), 1);
    HomeScreen(settings, platform::FileDescriptor(linkDescriptor)).run();
    return 0;
}

} // namespace simulator
