# What the toolchains for Windows share; quintara_triplet tells them apart.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${quintara_triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${quintara_triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${quintara_triplet}-windres)

# A user's machine has none of the compiler's libraries.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)

set(CMAKE_FIND_ROOT_PATH /usr/${quintara_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
