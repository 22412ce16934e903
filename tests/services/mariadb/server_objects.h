// Every object of a database as the server tells it, for comparisons.
#pragma once

#include <map>
#include <string>

#include "tests/services/mariadb/dump_fixture.h"

namespace kestrelon::testing {

/// Kind and name with the text of SHOW CREATE and, for tables, the checksum of the rows. Times of
/// making and the names of databases are none of it.
inline std::map<std::string, std::string> server_objects(unsigned port,
                                                         const std::string& database) {
  std::map<std::string, std::string> objects;
  MariaDbConnection connection(port, database);
  const auto quoted = [](const std::string& name) {
    std::string out = "`";
    for (const char c : name) out.append(c == '`' ? 2 : 1, c);
    return out + "`";
  };
  const auto shown = [&](const std::string& what) {
    std::string text;
    const Rows rows = read_rows(connection, "SHOW CREATE " + what);
    for (size_t i = 0; i < rows.at(0).size(); ++i)
      if (!(what.starts_with("TRIGGER") && i == 6)) text += rows[0][i].value_or("NULL") + "\n";
    return text;
  };
  for (const auto& row : read_rows(connection, "SHOW FULL TABLES")) {
    const std::string name = *row[0];
    const std::string kind = row[1] == "VIEW"       ? "VIEW"
                             : row[1] == "SEQUENCE" ? "SEQUENCE"
                                                    : "TABLE";
    std::string& text = objects[kind + " " + quoted(name)];
    text = shown(kind + " " + quoted(name));
    if (kind == "TABLE")
      text += read_rows(connection, "CHECKSUM TABLE " + quoted(name) + " EXTENDED")[0][1].value_or(
          "none");
    if (kind == "SEQUENCE")
      text += read_rows(connection,
                        "SELECT next_not_cached_value, cycle_count FROM " + quoted(name))[0][0]
                  .value_or("none");
  }
  const std::string own = " WHERE Db = '" + database + "'";
  for (const auto& [kind, list, field] :
       {std::tuple("PROCEDURE", "SHOW PROCEDURE STATUS" + own, 1),
        std::tuple("FUNCTION", "SHOW FUNCTION STATUS" + own, 1),
        std::tuple("PACKAGE", "SHOW PACKAGE STATUS" + own, 1),
        std::tuple("PACKAGE BODY", "SHOW PACKAGE BODY STATUS" + own, 1),
        std::tuple("TRIGGER", std::string("SHOW TRIGGERS"), 0),
        std::tuple("EVENT", std::string("SHOW EVENTS"), 1)}) {
    size_t order = 0;
    for (const auto& row : read_rows(connection, list)) {
      const std::string name = std::string(kind) + " " + quoted(*row[static_cast<size_t>(field)]);
      objects[name] = shown(name);
      if (std::string(kind) == "TRIGGER") objects[name] += std::to_string(order++);
    }
  }
  return objects;
}

}  // namespace kestrelon::testing
