# Debian has no libraries for Windows, so they are built here from Debian's source packages, which
# tools/fetch_windows_sources unpacks.
set(QUINTARA_WINDOWS_SOURCES "${CMAKE_SOURCE_DIR}/build/windows-sources/unpacked"
    CACHE PATH "Folder with the sources of pugixml, SOCI, SQLite and utf8proc")

enable_language(C RC)
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

add_library(sqlite3 STATIC EXCLUDE_FROM_ALL ${QUINTARA_WINDOWS_SOURCES}/sqlite3/amalgamation/sqlite3.c)
target_include_directories(sqlite3 SYSTEM PUBLIC ${QUINTARA_WINDOWS_SOURCES}/sqlite3/amalgamation)
target_compile_definitions(sqlite3 PRIVATE SQLITE_THREADSAFE=1 SQLITE_OMIT_LOAD_EXTENSION)
quintara_foreign(sqlite3)

# Not by its own project, which is an old one that sets the flags of all others.
set(soci ${QUINTARA_WINDOWS_SOURCES}/soci)
# Written only when they change, else each configuration would make it anew.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/foreign/soci/soci/soci-config.h
     CONTENT "#define SOCI_HAVE_CXX11 1\n#define SOCI_HAVE_SQLITE3\n")
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/foreign/soci/soci_backends_config.h
     CONTENT "#define DEFAULT_BACKENDS_PATH \".\"\n")
function(quintara_soci target folder)
  list(TRANSFORM ARGN PREPEND ${soci}/src/${folder}/)
  list(TRANSFORM ARGN APPEND .cpp)
  add_library(${target} STATIC EXCLUDE_FROM_ALL ${ARGN})
endfunction()
quintara_soci(soci_core core
  backend-loader blob common connection-parameters connection-pool error into-type logger once-temp-type
  prepare-temp-type procedure ref-counted-prepare-info ref-counted-statement row rowid session statement
  transaction use-type values)
quintara_soci(soci_sqlite3 backends/sqlite3
  blob error factory row-id session standard-into-type standard-use-type statement vector-into-type
  vector-use-type)
target_include_directories(soci_core SYSTEM PUBLIC ${soci}/include ${CMAKE_BINARY_DIR}/foreign/soci
                           PRIVATE ${soci}/include/private)
target_include_directories(soci_sqlite3 SYSTEM PRIVATE ${soci}/include/private)
# It could load further backends, of which there are none.
target_compile_definitions(soci_core PRIVATE SOCI_LIB_PREFIX="" SOCI_LIB_SUFFIX=".dll")
target_link_libraries(soci_sqlite3 PUBLIC soci_core sqlite3)
quintara_foreign(soci_core soci_sqlite3)

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
