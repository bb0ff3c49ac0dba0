# Cross build for the gateway: 32-bit ARM, little-endian, soft-float EABI.
#
#   cmake -S . -B build-arm -DCMAKE_TOOLCHAIN_FILE=cmake/arm-linux-gnueabi.cmake
#
# Test programs run under qemu-arm (CTest and test discovery alike). libpcre
# for the target comes from the sysroot folder that 'scripts/setup --arm'
# unpacks, build-arm-sysroot/ at the top of the source tree by default
# (-DCFGPARSER_ARM_SYSROOT=DIR for another one).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CFGPARSER_ARM_TRIPLE arm-linux-gnueabi)
set(CMAKE_C_COMPILER ${CFGPARSER_ARM_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${CFGPARSER_ARM_TRIPLE}-g++)

# The C and C++ runtime of the cross toolchain, for the emulator's loader.
set(CFGPARSER_ARM_RUNTIME /usr/${CFGPARSER_ARM_TRIPLE})

if(NOT CFGPARSER_ARM_SYSROOT)
  get_filename_component(CFGPARSER_ARM_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build-arm-sysroot ABSOLUTE)
endif()
set(CFGPARSER_ARM_SYSROOT ${CFGPARSER_ARM_SYSROOT} CACHE PATH "Folder holding the target's libpcre (usr/lib/${CFGPARSER_ARM_TRIPLE})")
# try_compile projects read this file again: hand them the folder too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CFGPARSER_ARM_SYSROOT)

find_program(CFGPARSER_QEMU_ARM qemu-arm REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CFGPARSER_QEMU_ARM} -L ${CFGPARSER_ARM_RUNTIME})

# pkg-config reads only the target's .pc files and prefixes their paths
# with the sysroot folder.
set(ENV{PKG_CONFIG_LIBDIR} ${CFGPARSER_ARM_SYSROOT}/usr/lib/${CFGPARSER_ARM_TRIPLE}/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CFGPARSER_ARM_SYSROOT})
set(ENV{PKG_CONFIG_PATH} "")

# libpcre.so.3 lies in lib/, beside usr/lib/ with the link libpcre.so: the
# linker resolves libcfgparser.so's need of it there, and so does the
# loader of the programs run in the build tree.
set(CFGPARSER_ARM_SYSROOT_LIB ${CFGPARSER_ARM_SYSROOT}/lib/${CFGPARSER_ARM_TRIPLE})
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-rpath-link,${CFGPARSER_ARM_SYSROOT_LIB}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-Wl,-rpath-link,${CFGPARSER_ARM_SYSROOT_LIB}")
set(CMAKE_BUILD_RPATH ${CFGPARSER_ARM_SYSROOT_LIB})

# Every object here is built by this one compiler: GCC's notes on the
# argument passing changed in GCC 7.1 for the ARM ABI do not apply.
set(CMAKE_C_FLAGS_INIT "-Wno-psabi")
set(CMAKE_CXX_FLAGS_INIT "-Wno-psabi")

# Libraries and headers from the target folders only; programs from the host.
set(CMAKE_FIND_ROOT_PATH ${CFGPARSER_ARM_SYSROOT} ${CFGPARSER_ARM_RUNTIME})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
