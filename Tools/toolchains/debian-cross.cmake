# Debian's cross compilers, and user-mode emulation for what they build.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${PURGO_TARGET}-gcc)
set(CMAKE_CXX_COMPILER ${PURGO_TARGET}-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR ${PURGO_QEMU};-L;/usr/${PURGO_TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
