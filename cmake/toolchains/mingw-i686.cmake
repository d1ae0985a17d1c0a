# 32-bit Windows with mingw-w64: the shipped build. No 32-bit Wine exists here, so its tests are
# built and linked but not run.
set(CMAKE_SYSTEM_PROCESSOR x86)
set(_kx_triple i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
