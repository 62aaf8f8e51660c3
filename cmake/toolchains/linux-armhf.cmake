# 32 bits, ARM with its processor for numbers. Debian: g++-arm-linux-gnueabihf, qemu-user.
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(triplet arm-linux-gnueabihf)
set(emulator qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/linux.cmake)
