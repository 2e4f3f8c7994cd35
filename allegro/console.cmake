# Allegro for the bare console: a static library with the console's drivers and the framebuffer's, and
# without X11, sound and add-ons. A first cache: cmake -C allegro/console.cmake.
foreach(option IN ITEMS LINUX_CONSOLE LINUX_FBCON)
  set(WANT_${option} ON CACHE BOOL "")
endforeach()
foreach(option IN ITEMS
    MODULES ALLOW_SSE LINUX_VGA LINUX_SVGALIB LINUX_TSLIB X11 OSS ALSA JACK SGIAUDIO
    ALLEGROGL LOADPNG LOGG JPGALLEG EXAMPLES TOOLS TESTS DOCS)
  set(WANT_${option} OFF CACHE BOOL "")
endforeach()
set(SHARED OFF CACHE BOOL "")
set(ALLEGRO_USE_CONSTRUCTOR 1 CACHE BOOL "found out by a program that would have to run here")
