set(PURGO_TARGET arm-linux-gnueabihf)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(PURGO_QEMU qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
# A note on how older compilers passed some types, which concerns nobody here.
set(CMAKE_CXX_FLAGS_INIT "-Wno-psabi")
