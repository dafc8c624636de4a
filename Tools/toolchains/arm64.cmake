set(PURGO_TARGET aarch64-linux-gnu)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(PURGO_QEMU qemu-aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
