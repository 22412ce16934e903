# The Windows half: type library and headers from IDL, kestrelon_windows (all code but the entry points, for
# the tests to link), kestrelon2012.ocx and zlibwapi.dll.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(WIDL ${KESTRELON_TRIPLE}-widl REQUIRED)

set(GENERATED ${CMAKE_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${GENERATED}/contract)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(WIDL_SYSTEM --win64)
  set(KESTRELON_ARCHITECTURE amd64)
else()
  set(WIDL_SYSTEM --win32)
  set(KESTRELON_ARCHITECTURE x86)
endif()

# --- contract ------------------------------------------------------------------------------------------
file(GLOB_RECURSE class_idls CONFIGURE_DEPENDS
  ${CMAKE_SOURCE_DIR}/frame/*.idl ${CMAKE_SOURCE_DIR}/controls/*.idl ${CMAKE_SOURCE_DIR}/services/*.idl
  ${CMAKE_SOURCE_DIR}/imaging/*.idl ${CMAKE_SOURCE_DIR}/grid/*.idl ${CMAKE_SOURCE_DIR}/chrome/*.idl)
set(typelib_tool ${CMAKE_SOURCE_DIR}/tools/typelib.py)
set(idl_dir ${CMAKE_SOURCE_DIR}/server/idl)

add_custom_command(OUTPUT ${GENERATED}/stdole2.tlb
  COMMAND ${WIDL} ${WIDL_SYSTEM} -I${idl_dir} -t -T ${GENERATED}/stdole2.tlb ${idl_dir}/stdole2.idl
  DEPENDS ${idl_dir}/stdole2.idl ${idl_dir}/automation.idl VERBATIM)

set(gathered ${GENERATED}/kestrelon2012.idl)
set(widl ${WIDL} ${WIDL_SYSTEM} -L${GENERATED} -I${idl_dir})
set(headers_tool ${CMAKE_SOURCE_DIR}/tools/contract_headers.py)
set(contract_headers)
foreach(idl ${class_idls})
  get_filename_component(name ${idl} NAME_WE)
  list(APPEND contract_headers ${GENERATED}/contract/${name}.h)
endforeach()
add_custom_command(
  OUTPUT ${GENERATED}/kestrelon2012.tlb ${GENERATED}/kestrelon2012_i.c ${contract_headers}
  COMMAND ${Python3_EXECUTABLE} ${typelib_tool} gather ${gathered}
          ${CMAKE_SOURCE_DIR}/server/kestrelon2012.idl ${CMAKE_SOURCE_DIR}
  COMMAND ${widl} -t -T ${GENERATED}/kestrelon2012.tlb ${gathered}
  COMMAND ${widl} -h -H ${GENERATED}/all_contracts.h ${gathered}
  COMMAND ${Python3_EXECUTABLE} ${headers_tool} ${GENERATED}/all_contracts.h ${GENERATED}/contract ${class_idls}
  COMMAND ${widl} -u -U ${GENERATED}/kestrelon2012_i.c ${gathered}
  COMMAND ${Python3_EXECUTABLE} ${typelib_tool} finish ${GENERATED}/kestrelon2012.tlb
  DEPENDS ${typelib_tool} ${headers_tool} ${CMAKE_SOURCE_DIR}/server/kestrelon2012.idl ${class_idls}
          ${idl_dir}/automation.idl ${GENERATED}/stdole2.tlb
  VERBATIM)

set(glue_tool ${CMAKE_SOURCE_DIR}/tools/idl_glue.py)
set(glue_headers)
foreach(idl ${class_idls})
  get_filename_component(name ${idl} NAME_WE)
  if(name STREQUAL "frame_types")
    continue()
  endif()
  add_custom_command(OUTPUT ${GENERATED}/${name}_glue.h
    COMMAND ${Python3_EXECUTABLE} ${glue_tool} ${idl} ${GENERATED}/${name}_glue.h
            ${CMAKE_SOURCE_DIR}/frame/control_frame.h
    DEPENDS ${glue_tool} ${idl} ${CMAKE_SOURCE_DIR}/frame/control_frame.h VERBATIM)
  list(APPEND glue_headers ${GENERATED}/${name}_glue.h)
endforeach()
add_custom_target(contract DEPENDS ${contract_headers} ${glue_headers})

# The identifiers as a library of their own: widl writes C.
enable_language(C)
add_library(kestrelon_ids STATIC ${GENERATED}/kestrelon2012_i.c)
target_include_directories(kestrelon_ids SYSTEM PUBLIC ${GENERATED} ${idl_dir})

# --- code ----------------------------------------------------------------------------------------------
kestrelon_glob(windows_sources WINDOWS base imaging services grid lists frame controls chrome server)
list(REMOVE_ITEM windows_sources ${portable_sources} ${CMAKE_SOURCE_DIR}/server/dll_main.cpp
  ${CMAKE_SOURCE_DIR}/server/terminate.cpp)
add_library(kestrelon_windows STATIC ${windows_sources})
kestrelon_optimize_size(${windows_sources}) # pixels are the portable half's
kestrelon_target(kestrelon_windows)
add_dependencies(kestrelon_windows contract)
target_link_libraries(kestrelon_windows PUBLIC kestrelon_portable kestrelon_ids
  ole32 oleaut32 uuid gdi32 msimg32 uxtheme comctl32 comdlg32 shell32 shlwapi advapi32 version ws2_32 imm32)

# --- resources and manifest ------------------------------------------------------------------------------
string(REPLACE "." "," version_numbers ${PROJECT_VERSION},0)
configure_file(${CMAKE_SOURCE_DIR}/server/version.h.in ${GENERATED}/version.h @ONLY)
add_custom_command(OUTPUT ${GENERATED}/kestrelon2012.manifest
  COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/manifest.py ${CMAKE_SOURCE_DIR}
          ${PROJECT_VERSION}.0 ${KESTRELON_ARCHITECTURE} ${GENERATED}/kestrelon2012.manifest
  DEPENDS ${CMAKE_SOURCE_DIR}/tools/manifest.py ${class_idls} ${CMAKE_SOURCE_DIR}/server/kestrelon2012.idl
  VERBATIM)
file(GLOB_RECURSE resource_files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/*.bmp
  ${CMAKE_SOURCE_DIR}/resources/*.png ${CMAKE_SOURCE_DIR}/resources/*.ico
  ${CMAKE_SOURCE_DIR}/resources/*.wav)
set(kestrelon_rc ${CMAKE_SOURCE_DIR}/server/kestrelon2012.rc)
set_source_files_properties(${kestrelon_rc} PROPERTIES
  COMPILE_OPTIONS "-I${GENERATED};-I${CMAKE_SOURCE_DIR}"
  OBJECT_DEPENDS "${GENERATED}/kestrelon2012.tlb;${GENERATED}/kestrelon2012.manifest;${resource_files}")
enable_language(RC)

# --- the product -----------------------------------------------------------------------------------------
add_library(kestrelon2012 MODULE server/dll_main.cpp server/terminate.cpp ${kestrelon_rc}
  server/kestrelon2012.def)
kestrelon_target(kestrelon2012)
target_link_libraries(kestrelon2012 PRIVATE kestrelon_windows)
target_link_options(kestrelon2012 PRIVATE -s -Wl,--enable-stdcall-fixup -Wl,--gc-sections
  -Wl,-Map,${CMAKE_BINARY_DIR}/kestrelon2012.map) # read by `make size`
set_target_properties(kestrelon2012 PROPERTIES PREFIX "" SUFFIX ".ocx"
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
add_custom_command(TARGET kestrelon2012 POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${GENERATED}/kestrelon2012.manifest
          ${CMAKE_BINARY_DIR}/Kestrelon2012.manifest VERBATIM)

# zlib as the image readers look for it: stdcall exports by their plain names.
add_library(zlibwapi MODULE server/zlibwapi/zlibwapi.c server/zlibwapi/zlibwapi.def)
target_link_libraries(zlibwapi PRIVATE z)
target_link_options(zlibwapi PRIVATE -static -s -Wl,--enable-stdcall-fixup)
set_target_properties(zlibwapi PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
