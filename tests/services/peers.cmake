# The database services are tested against a real MariaDB server through its own client library.
find_path(MARIADB_INCLUDE mysql.h PATH_SUFFIXES mariadb REQUIRED)
find_library(MARIADB_LIBRARY mariadb REQUIRED)
target_sources(services_tests PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/mariadb/mariadb_connection.cpp
  ${CMAKE_CURRENT_LIST_DIR}/mariadb/mariadb_server.cpp)
target_include_directories(services_tests SYSTEM PRIVATE ${MARIADB_INCLUDE})
target_link_libraries(services_tests PRIVATE ${MARIADB_LIBRARY})
