# Shared part of the Debian cross toolchain files; VQ27_TRIPLET, VQ27_DEB_ARCH,
# VQ27_QEMU and CMAKE_SYSTEM_PROCESSOR are set by the including file.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${VQ27_TRIPLET}-gcc)
set(CMAKE_CXX_COMPILER ${VQ27_TRIPLET}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${VQ27_TRIPLET})

# Multiarch: the target's libraries live under /usr/lib/<triplet> of the host's own
# root, headers under /usr/include; host programs (node, ninja) stay usable.
set(CMAKE_FIND_ROOT_PATH /usr/${VQ27_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY BOTH)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE BOTH)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# pkg-config must see only the target's .pc files, never the host's. Debian 12's
# libwebsockets-dev cannot be installed for a second architecture, so
# scripts/install-deps.sh --target unpacks the target's into .cross/ of the tree.
get_filename_component(VQ27_CROSS ${CMAKE_CURRENT_LIST_DIR}/../.cross/${VQ27_DEB_ARCH} ABSOLUTE)
set(ENV{PKG_CONFIG_LIBDIR}
  ${VQ27_CROSS}/usr/lib/${VQ27_TRIPLET}/pkgconfig:/usr/lib/${VQ27_TRIPLET}/pkgconfig:/usr/share/pkgconfig)
set(ENV{PKG_CONFIG_PATH} "")

# Test programs run under qemu-user; no binfmt registration is needed. "-L /": the
# target's loader is the multiarch one (libc6:ARCH), the very version of the libc it
# loads. The cross toolchain's own copy under /usr/<triplet> is older, and with the
# newer libc every pthread_create crashes.
set(CMAKE_CROSSCOMPILING_EMULATOR ${VQ27_QEMU} -L /)

# Debian's multiarch library folder (lib/<triplet>): GNUInstallDirs picks it for
# native builds only, and the target's packages must install there.
set(CMAKE_INSTALL_LIBDIR lib/${VQ27_TRIPLET} CACHE PATH "Object code libraries (multiarch)")
