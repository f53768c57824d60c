#include "kill/Tablet.h"

#include <cstdio>
#include <cstdlib>

namespace inspector::tests {

Tablet::Tablet(std::string program, std::filesystem::path home, unsigned seed)
    : m_Program(std::move(program)), m_Home(std::move(home)), m_Seed(seed), m_Random(seed) {
  Run({"init", "--sample"});
}

std::vector<std::string> Tablet::Words(const std::string& program,
                                       const std::vector<std::string>& command) const {
  std::vector<std::string> words = {program, "--home", m_Home.string()};
  words.insert(words.end(), command.begin(), command.end());
  return words;
}

std::string Tablet::Run(const std::vector<std::string>& command) {
  m_Last = command.front();
  const Ending ending = RunProgram(Words(m_Program, command), m_Home.string() + ".err", std::nullopt);
  if (ending.exit != 0) Fail("it ended with " + std::to_string(ending.exit));
  return ending.out;
}

std::string Tablet::New(const std::string& type) {
  std::string key = Run({"new", "--type", type});
  key.pop_back();  // the end of the line
  return key;
}

Ending Tablet::RunAndKill(const std::vector<std::string>& command, Duration after,
                          const std::string& program) {
  m_Last.clear();
  for (const std::string& word : command) m_Last += word + " ";
  m_Last += "(killed after " + std::to_string(after.count()) + " us)";
  const Ending ending =
      RunProgram(Words(program.empty() ? m_Program : program, command), m_Home.string() + ".err", after);
  if (!ending.killed && ending.exit != 0) Fail("it ended with " + std::to_string(ending.exit));
  return ending;
}

void Tablet::Fail(const std::string& what) {
  std::fprintf(stderr, "%s: %s\nSeed %u. The tablet is kept in %s, its last messages in %s.err\n",
               m_Last.c_str(), what.c_str(), m_Seed, m_Home.c_str(), m_Home.c_str());
  std::exit(1);
}

std::string Tablet::AskFile(const std::filesystem::path& file, const std::string& sql) {
  sqlite3* database = nullptr;
  std::string answer;
  char* problem = nullptr;
  int code = sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
  if (code == SQLITE_OK) {
    code = sqlite3_exec(
        database, sql.c_str(),
        [](void* rows, int count, char** values, char**) {
          auto& text = *static_cast<std::string*>(rows);
          for (int i = 0; i < count; ++i) {
            if (!text.empty()) text += i > 0 ? '|' : '\n';
            text += values[i] ? values[i] : "NULL";
          }
          return 0;
        },
        &answer, &problem);
  }
  if (code != SQLITE_OK)
    Fail(file.string() + ": " + sql + ": " + (problem ? problem : sqlite3_errmsg(database)));
  sqlite3_close(database);
  return answer;
}

std::string Tablet::Ask(const std::string& sql) {
  return AskFile(File("Inspection_Data.cdb"), sql);
}

std::string Tablet::AskTemplates(const std::string& sql) {
  return AskFile(File("Template_Data.cdb"), sql);
}

void Tablet::CheckDatabases() {
  Expect(AskTemplates("PRAGMA integrity_check") == "ok", "the Template database is damaged");
  Expect(Ask("PRAGMA integrity_check") == "ok", "the Inspection database is damaged");
  Expect(Ask("SELECT count(*) FROM Step WHERE CategoryID NOT IN (SELECT CategoryID FROM Category)") == "0",
         "steps were left without their category");
  Expect(
      Ask("SELECT count(*) FROM Category WHERE InspectionID NOT IN (SELECT InspectionID FROM Inspection)") ==
          "0",
      "categories were left without their inspection");
  for (const auto& [table, key] :
       {std::pair{"Inspection", "InspectionID"}, {"Category", "CategoryID"}, {"Step", "StepID"}})
    Expect(Ask(std::string("SELECT count(*) - count(DISTINCT ") + key + ") FROM " + table) == "0",
           std::string("a key was given twice in ") + table);
}

std::string Tablet::Content(const std::string& inspectionID) {
  return Ask("SELECT DocType, InspectionTypeID, GeneralInformation FROM Inspection WHERE InspectionID = " +
             inspectionID) +
         Ask("SELECT CategoryNumber, CategoryTitle, CategoryTemplateID, Type, CompleteFlag, NotPresentFlag, "
             "CommentText FROM Category WHERE InspectionID = " +
             inspectionID + " ORDER BY CategoryNumber, CategoryTitle") +
         Ask("SELECT StepNumber, StepTitle, InspectResult, Materials, Comments, RatingType FROM Step JOIN "
             "Category USING (CategoryID) WHERE InspectionID = " +
             inspectionID + " ORDER BY CategoryNumber, StepNumber, StepID");
}

std::string Tablet::Rows(const std::string& inspectionID) {
  return Content(inspectionID) +
         Ask("SELECT CategoryID FROM Category WHERE InspectionID = " + inspectionID + " ORDER BY 1") +
         Ask("SELECT StepID FROM Step JOIN Category USING (CategoryID) WHERE InspectionID = " + inspectionID +
             " ORDER BY 1");
}

}  // namespace inspector::tests
