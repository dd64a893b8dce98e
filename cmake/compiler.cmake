set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Positions are composed bit for bit the same everywhere: no contraction, no reordering.
add_compile_options(-ffp-contract=off -fno-fast-math)
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
                    -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # The compiler's cache keeps a precompiled header only when it is preprocessed as one.
  add_compile_options(-fpch-preprocess)
endif()

if(QUINTARA_SANITIZE)
  add_compile_options(-fsanitize=${QUINTARA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUINTARA_SANITIZE})
endif()

find_program(QUINTARA_CCACHE ccache)
if(QUINTARA_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${QUINTARA_CCACHE})
endif()

# quintara_library(NAME SOURCES ... LINKS ... PRIVATE_LINKS ...): one target a folder, with these
# links and no others.
function(quintara_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS})
endfunction()
