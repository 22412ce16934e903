# Peer of the drawing: pixman, from a Debian package.
find_path(PIXMAN_INCLUDE pixman.h PATH_SUFFIXES pixman-1)
find_library(PIXMAN_LIBRARY pixman-1)
if(PIXMAN_INCLUDE AND PIXMAN_LIBRARY)
  target_include_directories(image_list_bench SYSTEM PRIVATE ${PIXMAN_INCLUDE})
  target_link_libraries(image_list_bench PRIVATE ${PIXMAN_LIBRARY})
  target_compile_definitions(image_list_bench PRIVATE KESTRELON_PIXMAN)
endif()
