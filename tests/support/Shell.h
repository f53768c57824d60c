// Another program that has one of the databases open: SQLite and nothing of this project.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>
#include <vector>

namespace inspector::tests {

class Shell {
public:
  explicit Shell(const std::filesystem::path& file) { sqlite3_open(file.c_str(), &m_Database); }
  ~Shell() { sqlite3_close(m_Database); }
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;

  void Run(const std::string& sql) { Rows(sql); }
  // The fields of each row joined with '|'; fails the test when SQLite does not understand or obey.
  std::vector<std::string> Rows(const std::string& sql) {
    std::vector<std::string> rows;
    const auto collect = [](void* out, int count, char** values, char**) {
      std::string& row = static_cast<std::vector<std::string>*>(out)->emplace_back();
      for (int i = 0; i < count; ++i) row += std::string(i ? "|" : "") + (values[i] ? values[i] : "NULL");
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(m_Database, sql.c_str(), collect, &rows, nullptr), SQLITE_OK)
        << sqlite3_errmsg(m_Database) << ": " << sql;
    return rows;
  }
  // The rows joined with '\n'.
  std::string Ask(const std::string& sql) {
    std::string text;
    for (const std::string& row : Rows(sql)) text += (text.empty() ? "" : "\n") + row;
    return text;
  }

private:
  sqlite3* m_Database = nullptr;
};

}  // namespace inspector::tests
