# Debian has no libraries for Windows, so they are built here from Debian's source packages, which
# tools/fetch_windows_sources unpacks.
set(QUINTARA_WINDOWS_SOURCES "${CMAKE_SOURCE_DIR}/build/windows-sources/unpacked"
    CACHE PATH "Folder with the sources of pugixml and utf8proc")

enable_language(C)
set(BUILD_SHARED_LIBS OFF)

# Our warnings are not theirs.
function(quintara_foreign)
  foreach(target IN LISTS ARGN)
    set_target_properties(${target} PROPERTIES COMPILE_OPTIONS -w)
  endforeach()
endfunction()

add_subdirectory(${QUINTARA_WINDOWS_SOURCES}/pugixml ${CMAKE_BINARY_DIR}/foreign/pugixml EXCLUDE_FROM_ALL SYSTEM)
quintara_foreign(pugixml-static)

add_library(utf8proc STATIC EXCLUDE_FROM_ALL ${QUINTARA_WINDOWS_SOURCES}/utf8proc/utf8proc.c)
target_include_directories(utf8proc SYSTEM INTERFACE ${QUINTARA_WINDOWS_SOURCES}/utf8proc)
target_compile_definitions(utf8proc PUBLIC UTF8PROC_STATIC)
quintara_foreign(utf8proc)

# Header-only, so the host's package serves; its folder alone, since the rest of the host's headers
# are not for Windows.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/foreign/include)
file(CREATE_LINK /usr/include/nlohmann ${CMAKE_BINARY_DIR}/foreign/include/nlohmann SYMBOLIC)
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${CMAKE_BINARY_DIR}/foreign/include)

if(QUINTARA_TESTS)
  set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/foreign/googletest EXCLUDE_FROM_ALL SYSTEM)
  quintara_foreign(gtest gtest_main gmock gmock_main)
endif()
