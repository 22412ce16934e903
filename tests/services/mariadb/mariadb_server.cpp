#include "tests/services/mariadb/mariadb_server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <pwd.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

namespace kestrelon::testing {
namespace {

sockaddr_in loopback(unsigned port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<uint16_t>(port));
  return address;
}

unsigned free_port() {
  const int probe = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  bind(probe, reinterpret_cast<sockaddr*>(&address), size);
  getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size);
  close(probe);
  return ntohs(address.sin_port);
}

bool answers(unsigned port) {
  const int probe = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in address = loopback(port);
  const bool connected =
      connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(probe);
  return connected;
}

pid_t start(std::vector<std::string> arguments, const std::filesystem::path& log) {
  const pid_t child = fork();
  if (child != 0) return child;
  const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  dup2(out, STDOUT_FILENO);
  dup2(out, STDERR_FILENO);
  std::vector<char*> raw;
  for (std::string& argument : arguments) raw.push_back(argument.data());
  raw.push_back(nullptr);
  execvp(raw[0], raw.data());
  _exit(127);
}

}  // namespace

MariaDbServer::MariaDbServer() {
  std::string pattern = (std::filesystem::temp_directory_path() / "kestrelon-db-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  folder_ = pattern;
  port_ = free_port();
  const std::string user = std::string("--user=") + getpwuid(getuid())->pw_name;
  const std::string data = "--datadir=" + (folder_ / "data").string();
  const std::filesystem::path log = folder_ / "log";

  int status = 0;
  waitpid(start({"mariadb-install-db", "--no-defaults", user, data, "--skip-test-db",
                 "--auth-root-authentication-method=normal"},
                log),
          &status, 0);
  if (status != 0) throw std::runtime_error("mariadb-install-db failed: is mariadb-server here?");
  process_ = start(
      {"mariadbd", "--no-defaults", user, data, "--bind-address=127.0.0.1",
       "--socket=" + (folder_ / "socket").string(), "--pid-file=" + (folder_ / "pid").string(),
       "--port=" + std::to_string(port_), "--skip-name-resolve",
       "--innodb-flush-log-at-trx-commit=0", "--debug-no-sync", "--max-allowed-packet=64M"},
      log);
  for (int tries = 0; tries < 600 && !answers(port_); ++tries)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  if (!answers(port_)) throw std::runtime_error("mariadbd does not answer");
}

MariaDbServer::~MariaDbServer() {
  stop(SIGTERM);
  std::error_code error;
  std::filesystem::remove_all(folder_, error);
}

MariaDbServer& MariaDbServer::shared() {
  static MariaDbServer server;
  return server;
}

void MariaDbServer::kill() {
  stop(SIGKILL);
}

void MariaDbServer::stop(int signal) {
  if (process_ <= 0) return;
  ::kill(process_, signal);
  waitpid(process_, nullptr, 0);
  process_ = -1;
}

}  // namespace kestrelon::testing
