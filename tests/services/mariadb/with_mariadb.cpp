// with_mariadb PROGRAM [ARGUMENT...]: runs a program beside a MariaDB server of its own, whose
// loopback port it finds in KESTRELON_DB_PORT. Answers the program's exit status.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "tests/services/mariadb/mariadb_server.h"

int main(int count, char** arguments) {
  if (count < 2) return 2;
  try {
    kestrelon::testing::MariaDbServer server;
    setenv("KESTRELON_DB_PORT", std::to_string(server.port()).c_str(), 1);
    const pid_t child = fork();
    if (child == 0) {
      execvp(arguments[1], arguments + 1);
      _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
