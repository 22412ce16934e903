# The database services are tested against a real MariaDB server: natively through its own client library,
# and on Windows through the COM class and an ADO-shaped connection of the tests' own.
set(mariadb ${CMAKE_CURRENT_LIST_DIR}/mariadb)
if(WIN32)
  # Needs a server beside it, which tests/system/database_over_com.sh starts; not one of the *_tests.
  file(GLOB ado_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/ado/*.cpp)
  kestrelon_tests(database_over_com "${ado_sources}" kestrelon_host kestrelon_windows)
else()
  find_path(MARIADB_INCLUDE mysql.h PATH_SUFFIXES mariadb REQUIRED)
  find_library(MARIADB_LIBRARY mariadb REQUIRED)
  target_sources(services_tests PRIVATE ${mariadb}/mariadb_connection.cpp ${mariadb}/mariadb_server.cpp)
  target_include_directories(services_tests SYSTEM PRIVATE ${MARIADB_INCLUDE})
  target_link_libraries(services_tests PRIVATE ${MARIADB_LIBRARY})

  add_executable(with_mariadb ${mariadb}/with_mariadb.cpp ${mariadb}/mariadb_server.cpp)
  kestrelon_target(with_mariadb)
endif()
