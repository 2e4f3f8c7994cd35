# Included after project(), which sets the list anew: prefer static libraries, but not of what
# belongs to the C library.
set(CMAKE_FIND_LIBRARY_SUFFIXES .a)
foreach(name IN ITEMS ALLEGRO_m ALLEGRO_rt PNG_m)
  string(REGEX REPLACE ".*_" "" library ${name})
  set(pkgcfg_lib_${name} ${library} CACHE STRING "the shared one")
endforeach()
