// A MariaDB server of the tests' own on a free loopback port, its data in a temporary folder.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace kestrelon::testing {

class MariaDbServer {
 public:
  /// Makes the data folder, starts the server and waits until it answers. Throws
  /// std::runtime_error.
  MariaDbServer();
  ~MariaDbServer();
  MariaDbServer(const MariaDbServer&) = delete;
  MariaDbServer& operator=(const MariaDbServer&) = delete;

  /// The server that all tests of a program share.
  static MariaDbServer& shared();

  unsigned port() const { return port_; }
  /// Ends the server at once, as a power failure would.
  void kill();

 private:
  void stop(int signal);

  std::filesystem::path folder_;
  unsigned port_ = 0;
  pid_t process_ = -1;
};

}  // namespace kestrelon::testing
