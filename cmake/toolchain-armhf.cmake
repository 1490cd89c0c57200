# 32-bit ARM (armhf), the usual userland of a set: Debian's cross compiler and the
# multiarch development packages (libwebsockets-dev:armhf, ...).
#   cmake -S . -B build-armhf -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-armhf.cmake
set(VQ27_TRIPLET arm-linux-gnueabihf)
set(VQ27_DEB_ARCH armhf)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(VQ27_QEMU qemu-arm)
set(VQ27_TARGET_LOADER /lib/ld-linux-armhf.so.3)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-debian-cross.cmake)
