# The image's compiler and libraries for the toolkit's library, with the headers of Debian's own Allegro,
# which are the same for every architecture: the image's Allegro knows no window system.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
cmake_path(SET CMAKE_SYSROOT NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../build-image/root)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR}
  ${CMAKE_SYSROOT}/usr/local/lib/pkgconfig:${CMAKE_SYSROOT}/usr/lib/i386-linux-gnu/pkgconfig)

set(own ${CMAKE_BINARY_DIR}/headers)
file(COPY /usr/include/allegro /usr/include/allegro.h /usr/include/xalleg.h /usr/include/X11
  DESTINATION ${own})
set(CMAKE_CXX_FLAGS_INIT -I${own})
