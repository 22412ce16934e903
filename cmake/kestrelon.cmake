# What every target of the project shares.

# kestrelon_glob(OUT PORTABLE|WINDOWS dir...): the sources below the folders. A file that needs Windows
# is named *_win.cpp where its folder is otherwise portable.
function(kestrelon_glob out half)
  set(found)
  foreach(dir ${ARGN})
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${dir}/*.cpp)
    list(APPEND found ${files})
  endforeach()
  list(FILTER found EXCLUDE REGEX "_posix\\.cpp$")
  if(half STREQUAL "PORTABLE")
    list(FILTER found EXCLUDE REGEX "_win\\.cpp$")
  endif()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# kestrelon_target(target): include root, warnings as errors, sanitizers, platform settings.
function(kestrelon_target target)
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Werror)
  if(KESTRELON_SANITIZE)
    target_compile_options(${target} PUBLIC
      -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
  if(WIN32)
    target_compile_definitions(${target} PUBLIC
      UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT _WIN32_WINNT=0x0601 WINVER=0x0601)
    # One floating point in both word sizes; SSE2 is the floor of the product.
    target_compile_options(${target} PUBLIC -msse2 -mfpmath=sse)
    # The platform's headers use the old casts, and COM interfaces have no destructors by design.
    target_compile_options(${target} PRIVATE -Wno-old-style-cast -Wno-non-virtual-dtor)
    target_link_options(${target} PUBLIC -static)
    # What nothing reaches is left out of the library.
    target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections)
  endif()
endfunction()

# kestrelon_optimize_size(files...): for code that runs once a call, not once a pixel.
function(kestrelon_optimize_size)
  if(WIN32)
    set_property(SOURCE ${ARGN} APPEND PROPERTY COMPILE_OPTIONS -Os)
  endif()
endfunction()
