# Included after project(), which sets the list anew.
set(CMAKE_FIND_LIBRARY_SUFFIXES .a)
