# What both mingw-w64 toolchains share; the including file sets _kx_triple and CMAKE_SYSTEM_PROCESSOR.
set(CMAKE_SYSTEM_NAME Windows)
# -posix: the C++ threading support GoogleTest needs
set(CMAKE_C_COMPILER /usr/bin/${_kx_triple}-gcc-posix)
set(CMAKE_CXX_COMPILER /usr/bin/${_kx_triple}-g++-posix)
set(CMAKE_RC_COMPILER /usr/bin/${_kx_triple}-windres)
set(CMAKE_OBJDUMP /usr/bin/${_kx_triple}-objdump)
set(CMAKE_FIND_ROOT_PATH /usr/${_kx_triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# libgcc, libstdc++ and winpthread linked in: the DLLs import only system DLLs
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
