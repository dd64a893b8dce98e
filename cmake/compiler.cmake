set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Positions are composed bit for bit the same everywhere: no contraction, no reordering.
add_compile_options(-ffp-contract=off -fno-fast-math)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
                    -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Sees overlaps and overruns in the copies inside std::string that are none (its bugs 105651, 105329).
  add_compile_options(-Wno-restrict -Wno-array-bounds -Wno-stringop-overflow)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
  # The compiler's cache keeps a precompiled header only when it is preprocessed as one.
  add_compile_options(-fpch-preprocess)
endif()

if(WIN32)
  # What is built twice is the same to the byte: no time of its making, and no symbols, whose names are partly drawn
  # by lot.
  add_link_options(-s -Wl,--no-insert-timestamp)
endif()

if(QUINTARA_SANITIZE)
  add_compile_options(-fsanitize=${QUINTARA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUINTARA_SANITIZE})
endif()
if(QUINTARA_LIBFUZZER)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

find_program(QUINTARA_CCACHE ccache)
if(QUINTARA_CCACHE)
  # Without this laxity nothing that uses a precompiled header is kept.
  set(quintara_sloppiness CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env ${quintara_sloppiness} ${QUINTARA_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

# quintara_library(NAME SOURCES ... LINKS ... PRIVATE_LINKS ...): one target a folder, with these
# links and no others.
function(quintara_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS})
endfunction()

# quintara_list_programs(FOLDER): writes the paths of the programs that FOLDER builds, one a line, to
# programs.txt in its build folder, for scripts that run them all.
function(quintara_list_programs folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  set(programs "")
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
      string(APPEND programs "$<TARGET_FILE:${target}>\n")
    endif()
  endforeach()
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/${folder}/programs.txt CONTENT "${programs}")
endfunction()
