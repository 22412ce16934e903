find_library(GIF_LIBRARY gif REQUIRED)
target_link_libraries(${name} PRIVATE ${GIF_LIBRARY})
