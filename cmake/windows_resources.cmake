# What every shipped file of Windows holds besides its code.

# quintara_version(TARGET DESCRIPTION): the resource from which the system shows what a file is. A program gets the
# icon too.
function(quintara_version target version_description)
  get_target_property(type ${target} TYPE)
  get_target_property(version_name ${target} OUTPUT_NAME)
  if(NOT version_name)
    set(version_name ${target})
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  if(type STREQUAL "EXECUTABLE")
    set(version_type VFT_APP)
    set(version_file ${version_name}.exe)
    set(version_icon "1 ICON \"${target}.ico\"")
    set(icon ${CMAKE_CURRENT_BINARY_DIR}/${target}.ico)
    add_custom_command(
      OUTPUT ${icon} COMMAND ${QUINTARA_PYTHON} ${CMAKE_SOURCE_DIR}/packaging/draw_icon ${icon}
      DEPENDS ${CMAKE_SOURCE_DIR}/packaging/draw_icon COMMENT "Drawing ${target}.ico" VERBATIM)
    set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS ${icon})
  else()
    set(version_type VFT_DLL)
    set(version_file ${version_name}.dll)
    set(version_icon "")
  endif()
  configure_file(${CMAKE_SOURCE_DIR}/packaging/version.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
  set_source_files_properties(${resource} PROPERTIES INCLUDE_DIRECTORIES ${CMAKE_CURRENT_BINARY_DIR})
endfunction()

find_program(QUINTARA_PYTHON python3 REQUIRED)
enable_language(RC)
