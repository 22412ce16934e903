// The exact form of a dump against a real server: everything comes back, by our own restore and by
// the server's own client, and the server's own dumps come back by ours.
#include <algorithm>
#include <set>

#include "tests/services/mariadb/dump_fixture.h"
#include "tests/services/mariadb/every_kind.h"
#include "tests/services/mariadb/server_objects.h"

namespace kestrelon::testing {
namespace {

class ExactTest : public DumpTest {
 protected:
  void fill_everything() { fill_all(every_kind_of_object()); }
  void empty_copy() {
    admin_.run("DROP DATABASE copia");
    admin_.run("CREATE DATABASE copia CHARACTER SET latin1");
  }
  void load_by_client() {
    ASSERT_EQ(system(("mariadb --no-defaults --comments -h 127.0.0.1 -u root -P " +
                      std::to_string(port()) + " copia < '" + file_.string() + "'")
                         .c_str()),
              0);
  }
  void expect_equal() {
    const auto expected = server_objects(port(), "loja");
    const auto found = server_objects(port(), "copia");
    for (const auto& [name, text] : expected) {
      ASSERT_TRUE(found.count(name)) << name;
      EXPECT_EQ(found.at(name), text) << name;
    }
    EXPECT_EQ(found.size(), expected.size());
  }
};

TEST_F(ExactTest, EveryKindOfObjectComesBackEqual) {
  fill_everything();
  ASSERT_TRUE(backup()) << error();
  EXPECT_EQ(service_.altered_values(), 0u) << to_utf8(service_.warnings());
  empty_copy();
  ASSERT_TRUE(restore()) << error();
  expect_equal();
  ASSERT_TRUE(restore()) << "over itself: " << error();
  expect_equal();
}

TEST_F(ExactTest, TheServersOwnClientLoadsTheFile) {
  fill_everything();
  ASSERT_TRUE(backup()) << error();
  empty_copy();
  load_by_client();
  expect_equal();
}

TEST_F(ExactTest, AFileOfTheServersOwnToolIsRestored) {
  fill_everything();
  fill("DELETE FROM conferida WHERE a < 0");  // which the tool's files do not bring back
  for (const char* options : {"", " --skip-extended-insert --hex-blob --skip-comments",
                              " --default-character-set=latin1"}) {
    if (std::string(options).ends_with("latin1")) fill("DROP TABLE `ação 日本`");
    ASSERT_EQ(system(("mariadb-dump --no-defaults --routines --events --triggers" +
                      std::string(options) + " -h 127.0.0.1 -u root -P " + std::to_string(port()) +
                      " loja > '" + file_.string() + "'")
                         .c_str()),
              0);
    empty_copy();
    load_by_client();
    const auto by_client = server_objects(port(), "copia");
    empty_copy();
    ASSERT_TRUE(restore()) << options << error();
    EXPECT_EQ(server_objects(port(), "copia"), by_client) << options;
    EXPECT_GT(by_client.size(), 30u);
  }
}

}  // namespace
}  // namespace kestrelon::testing
