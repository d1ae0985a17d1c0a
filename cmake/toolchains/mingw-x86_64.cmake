# 64-bit Windows with mingw-w64: the build that runs under wine64 here.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(_kx_triple x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
