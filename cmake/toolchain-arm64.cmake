# 64-bit ARM (arm64): Debian's cross compiler and the multiarch development packages.
#   cmake -S . -B build-arm64 -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-arm64.cmake
set(VQ27_TRIPLET aarch64-linux-gnu)
set(VQ27_DEB_ARCH arm64)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(VQ27_QEMU qemu-aarch64)
set(VQ27_TARGET_LOADER /lib/ld-linux-aarch64.so.1)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-debian-cross.cmake)
