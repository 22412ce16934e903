# The peer is the server's own dump tool; both read through its client library.
find_path(MARIADB_INCLUDE mysql.h PATH_SUFFIXES mariadb REQUIRED)
find_library(MARIADB_LIBRARY mariadb REQUIRED)
target_sources(dump_bench PRIVATE
  ${CMAKE_SOURCE_DIR}/tests/services/mariadb/mariadb_connection.cpp
  ${CMAKE_SOURCE_DIR}/tests/services/mariadb/mariadb_server.cpp)
target_include_directories(dump_bench SYSTEM PRIVATE ${MARIADB_INCLUDE})
target_link_libraries(dump_bench PRIVATE ${MARIADB_LIBRARY})
