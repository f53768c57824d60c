// What a test adds to the small library of a visit. Keys follow the highest there is.
#pragma once

#include "data/Databases.h"
#include "support/Shell.h"

namespace inspector::tests {

using device::Text;

// As a value of a statement.
inline std::string Quoted(const Text& text) {
  return "'" + device::ToUtf8(device::ReplaceAll(text, u"'", u"''")) + "'";
}

struct LibraryAdditions {
  data::Databases& databases;

  void AddMaterial(int step, const Text& material) {
    Add("MaterialTemplate (StepID, Material, MaterialOrder, ID)",
        std::to_string(step) + ", " + Quoted(material) + ", count(*) + 1");
  }
  // The new comment's key.
  std::int32_t AddCommentToStep(int step, const Text& comment, const Text& group = u"") {
    Add("Comments (Comments, GroupName, ID)", Quoted(comment) + ", " + Quoted(group));
    const std::string key = Shell(databases.Template().File()).Ask("SELECT max(ID) FROM Comments");
    const std::string link = std::to_string(step) + ", " + key;
    Run("INSERT INTO StepComment VALUES (" + link + ", replace('" + link + "', ', ', '-'))");
    return std::stoi(key);
  }
  void AddPicker(const Text& list, const Text& choice) {
    Add("Pickers (PickerName, PickerChoice, ID)", Quoted(list) + ", " + Quoted(choice));
  }
  void AddShortcut(const Text& shortCut, const Text& expanded) {
    Add("ExpandedText (ShortCut, Expanded, ID)", Quoted(shortCut) + ", " + Quoted(expanded));
  }

private:
  // `table` with its columns, the key last; the rows have no gaps in a test.
  void Add(const std::string& table, const std::string& values) {
    const std::string name = table.substr(0, table.find(' '));
    Run("INSERT INTO " + table + " SELECT " + values + ", count(*) + 1 FROM " + name);
  }
  void Run(const std::string& sql) { EXPECT_TRUE(databases.Template().ExecuteNative(sql)) << sql; }
};

}  // namespace inspector::tests
