# Builds for 32-bit x86 against the unpacked Debian; all but the C library is linked statically, and
# in the image that, too. Allegro's library is for programs that can be moved as well.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)

cmake_path(SET root NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../build-image/root)
set(CMAKE_SYSROOT ${root})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

set(ENV{PKG_CONFIG_SYSROOT_DIR} ${root})
set(ENV{PKG_CONFIG_LIBDIR}
  ${root}/usr/local/lib/pkgconfig:${root}/usr/lib/i386-linux-gnu/pkgconfig)
set(PKG_CONFIG_ARGN --static)

# Small: nothing unused, no tables for exceptions, of which there are none, and few for addresses.
# Files may be larger than 2 GiB, later than 2038, and have inodes of 64 bits; Allegro's headers pass
# times on, so that it takes the same flags.
include(${CMAKE_CURRENT_LIST_DIR}/../hardening.cmake)
list(JOIN ZEL_HARDENED_CODE " " flags)
list(JOIN ZEL_CHECKED_CALLS " " calls)
list(JOIN ZEL_HARDENED_LINK " " link)
string(APPEND flags " ${calls} -fPIE")
string(APPEND flags " -ffunction-sections -fdata-sections -fno-asynchronous-unwind-tables")
string(APPEND flags " -D_FILE_OFFSET_BITS=64 -D_TIME_BITS=64")
set(CMAKE_C_FLAGS_INIT "${flags}")
set(CMAKE_C_FLAGS_RELEASE "-O2")
set(CMAKE_CXX_FLAGS_INIT "${flags}")
string(APPEND link " -Wl,-z,text,-z,pack-relative-relocs")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -Wl,--gc-sections ${link}")
