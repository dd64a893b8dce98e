set(CMAKE_SYSTEM_PROCESSOR x86)
set(quintara_triplet i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)

# The x87 unit rounds when it leaves a register; SSE2 rounds alike everywhere. Other programs call in with a stack
# that is aligned to four bytes only.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
set(CMAKE_CXX_FLAGS_INIT ${CMAKE_C_FLAGS_INIT})

# Module definition files name exports without what the calling convention adds.
string(APPEND CMAKE_SHARED_LINKER_FLAGS_INIT " -Wl,--enable-stdcall-fixup")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine32_run)
