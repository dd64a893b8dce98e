# The target uno_office: LibreOffice's own headers and libraries for those who talk to it. Its types come
# as a database; the headers of those that hosts/office and its tests include, named here, are made of it.
find_path(quintara_uno_headers cppuhelper/bootstrap.hxx PATH_SUFFIXES libreoffice REQUIRED)
get_filename_component(quintara_uno_sdk ${QUINTARA_CPPUMAKER} DIRECTORY)
get_filename_component(quintara_uno_sdk ${quintara_uno_sdk} DIRECTORY)
get_filename_component(quintara_office_program ${quintara_uno_sdk}/../program ABSOLUTE)

set(quintara_uno_types
  uno.* lang.*
  beans.NamedValue beans.PropertyValue beans.XPropertySet bridge.UnoUrlResolver connection.NoConnectException
  container.XIndexAccess document.MacroExecMode document.UpdateDocMode
  frame.Desktop frame.XDesktop2 frame.XStorable sheet.CellFlags sheet.XCellRangeData
  sheet.XCellRangeFormula sheet.XCellRangesQuery sheet.XSheetCellRangeContainer
  sheet.XSheetCellRanges sheet.XSpreadsheetDocument sheet.XUniqueCellFormatRangesSupplier
  table.CellRangeAddress table.XCellRange task.XInteractionAbort task.XInteractionHandler
  util.NumberFormat util.XCloseable util.XNumberFormats util.XNumberFormatsSupplier)
list(TRANSFORM quintara_uno_types PREPEND com.sun.star.)

set(quintara_uno_made ${CMAKE_BINARY_DIR}/foreign/uno)
file(MAKE_DIRECTORY ${quintara_uno_made})
execute_process(
  COMMAND ${QUINTARA_CPPUMAKER} -Gc -O${quintara_uno_made} "-T${quintara_uno_types}"
    ${quintara_office_program}/types.rdb ${quintara_office_program}/types/offapi.rdb
  COMMAND_ERROR_IS_FATAL ANY)

add_library(uno_office INTERFACE)
target_include_directories(uno_office SYSTEM INTERFACE ${quintara_uno_made} ${quintara_uno_headers})
target_compile_definitions(uno_office INTERFACE LINUX UNX CPPU_ENV=gcc3)
target_link_directories(uno_office INTERFACE ${quintara_uno_sdk}/lib)
target_link_options(uno_office INTERFACE
  LINKER:-rpath,${quintara_office_program} LINKER:-rpath-link,${quintara_office_program})
target_link_libraries(uno_office INTERFACE uno_cppu uno_cppuhelpergcc3 uno_sal uno_salhelpergcc3)
if(QUINTARA_SANITIZE MATCHES undefined)
  # The objects that stand for those of the other process are made at run time, without type information.
  target_compile_options(uno_office INTERFACE -fno-sanitize=vptr)
endif()
