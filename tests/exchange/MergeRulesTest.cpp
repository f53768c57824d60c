// Merges of random inspections, beside the rules carried out word for word on a copy of the databases: every
// row looked for anew, and everything new done twice.
#include <random>

#include "ExchangeFixture.h"
#include "exchange/InspectionMerge.h"

namespace inspector::exchange {
namespace {

class WordForWord {
public:
  explicit WordForWord(const std::filesystem::path& file) : m_Shell(file) {}

  void Merge(int target, int staged) {
    m_Shell.Run("PRAGMA synchronous = OFF; BEGIN");
    for (const std::string& category : Keys("SELECT CategoryID FROM MERGE_Category WHERE InspectionID = %1 "
                                            "ORDER BY CategoryNumber, CategoryTitle, rowid",
                                            staged)) {
      const std::string found =
          One("SELECT CategoryID FROM Category WHERE InspectionID = %1 AND CategoryTitle = (SELECT "
              "CategoryTitle FROM "
              "MERGE_Category WHERE CategoryID = %2) ORDER BY CategoryNumber, CategoryTitle, rowid LIMIT 1",
              target, category);
      if (!found.empty()) {
        MergeContent(found, category);
        continue;
      }
      const std::string key = Next("InspectionCategory");
      Do("INSERT INTO Category SELECT %1, CategoryTitle, '', '', '', 0, 0, %2, 0, 0 FROM MERGE_Category "
         "WHERE CategoryID "
         "= %3",
         key, target, category);
      MergeContent(key, category);
      MergeContent(key, category);
    }
    Do("DELETE FROM MERGE_Category WHERE InspectionID = %1; DELETE FROM MERGE_Inspection WHERE InspectionID "
       "= %1",
       staged);
    m_Shell.Run("COMMIT");
  }

private:
  void MergeContent(const std::string& target, const std::string& staged) {
    constexpr const char* kTaken =
        "(CategoryTitle, CategoryNumber, Remarks, CommentText, CompleteFlag, NotPresentFlag, "
        "CategoryTemplateID, Type)";
    Do(std::string("UPDATE Category SET ") + kTaken + " = (SELECT " + Inner(kTaken) +
           " FROM MERGE_Category WHERE CategoryID = %2) WHERE CategoryID = %1 AND CompleteFlag = 0",
       target, staged);
    for (const std::string& step :
         Keys("SELECT StepID FROM MERGE_Step WHERE CategoryID = %1 ORDER BY StepNumber, rowid", staged)) {
      const std::string found =
          One("SELECT StepID FROM Step WHERE CategoryID = %1 AND StepTitle = (SELECT StepTitle FROM "
              "MERGE_Step WHERE StepID "
              "= %2) ORDER BY StepNumber, rowid LIMIT 1",
              target, step);
      if (!found.empty()) {
        MergeStep(found, step);
        continue;
      }
      const std::string key = Next("Step");
      Do("INSERT INTO Step VALUES (%1, '', '', %2, '', '', '', '', '', '', 0, 0, '', 0, '', '', 0)", key,
         target);
      MergeStep(key, step);
      MergeStep(key, step);
    }
    Do("DELETE FROM MERGE_Step WHERE CategoryID = %1", staged);
  }
  void MergeStep(const std::string& target, const std::string& staged) {
    constexpr const char* kTaken =
        "(StepNumber, StepTitle, InspectResult, Comments, Materials, RatingType, Reserve8, MaterialNote, "
        "StepTemplateID, "
        "Reserve11, MajorSystem, StepInfoExists, SummaryComment, BitmapPath, PictureBefore)";
    Do(std::string("UPDATE Step SET ") + kTaken + " = (SELECT " + Inner(kTaken) +
           " FROM MERGE_Step WHERE StepID = %2) WHERE StepID = %1 AND InspectResult = '' AND Comments = '' "
           "AND Materials = ''",
       target, staged);
  }

  static std::string Inner(const std::string& columns) { return columns.substr(1, columns.size() - 2); }
  static std::string Worded(int number) { return std::to_string(number); }
  static std::string Worded(const std::string& text) { return text; }
  template <typename... Values>
  std::vector<std::string> Keys(std::string sql, const Values&... values) {
    int place = 0;
    for (const std::string& value : {Worded(values)...}) {
      const std::string name = "%" + std::to_string(++place);
      for (std::size_t at = 0; (at = sql.find(name, at)) != std::string::npos;)
        sql.replace(at, name.size(), value);
    }
    return m_Shell.Rows(sql);
  }
  template <typename... Values>
  void Do(const std::string& sql, const Values&... values) {
    Keys(sql, values...);
  }
  template <typename... Values>
  std::string One(const std::string& sql, const Values&... values) {
    const auto found = Keys(sql, values...);
    return found.empty() ? "" : found.front();
  }
  std::string Next(const std::string& sequence) {
    Do("UPDATE UniqueID SET NextID = NextID + 1 WHERE TableName = '%1'", sequence);
    return One("SELECT NextID FROM UniqueID WHERE TableName = '%1'", sequence);
  }

  Shell m_Shell;
};

class MergeRulesTest : public ExchangeTest {
protected:
  int Random(int below) { return std::uniform_int_distribution(0, below - 1)(m_Random); }
  std::string OneOf(const std::vector<std::string>& words) {
    return "'" + words[static_cast<std::size_t>(Random(static_cast<int>(words.size())))] + "'";
  }
  // Few titles and numbers, so that they meet.
  std::string Rows(const std::string& prefix, int inspection) {
    std::string sql;
    for (int category = Random(7); category > 0; --category) {
      const std::string owner = std::to_string(++m_Key);
      sql += "INSERT INTO " + prefix + "Category VALUES (" + owner + ", " +
             OneOf({"Roof", "roof", "Roof ", "", "Attic"}) + ", " + OneOf({"9", "20", "10", "20", ""}) +
             ", 'r" + owner + "', '', " + std::to_string(Random(4) == 0) + ", 0, " +
             std::to_string(inspection) + ", " + owner + ", 0);";
      for (int step = Random(9); step > 0; --step) {
        const std::string key = std::to_string(++m_Key);
        sql += "INSERT INTO " + prefix + "Step VALUES (" + key + ", " +
               OneOf({"2", "10", "1", "1", "\xEF\xBF\xBD", "\xF0\x9F\x8F\xA0"}) + ", " +
               OneOf({"A", "B", "a", ""}) + ", " + owner + ", " + OneOf({"", "", "Poor"}) + ", " +
               OneOf({"", "", "", "c"}) + ", " + OneOf({"", "", "", "Tin;"}) + ", 'Condition', '', 'note " +
               key + "', 1, 0, '', 1, '', '', 1);";
      }
    }
    return sql;
  }
  static std::string Everything(Shell shell) {
    std::string all;
    for (const char* table :
         {"Category", "Step", "MERGE_Category", "MERGE_Step", "MERGE_Inspection", "UniqueID"}) {
      all += std::string(table) + "\n";
      for (const std::string& row :
           shell.Rows(std::string("SELECT rowid, * FROM ") + table + " ORDER BY rowid"))
        all += row + "\n";
    }
    return all;
  }

  std::mt19937 m_Random{20261126};
  int m_Key = 5000;
};

TEST_F(MergeRulesTest, OnePassGivesWhatTheRulesGive) {
  constexpr int kRounds = 40;
  m_Device.RunInVisits(
      "INSERT INTO Inspection (InspectionID) VALUES (72);"
      "INSERT INTO UniqueID VALUES ('InspectionCategory', 20000), ('Step', 30000)");
  for (int round = 0; round < kRounds; ++round) {
    m_Device.RunInVisits(
        "BEGIN; DELETE FROM Category; DELETE FROM Step; INSERT INTO MERGE_Inspection (InspectionID) VALUES "
        "(5);" +
        Rows("", 72) + Rows("MERGE_", 5) + Rows("MERGE_", 6) + "COMMIT");
    const std::filesystem::path copy = m_Device.Root() / ("copy" + std::to_string(round));
    m_Device.Visits().Run("VACUUM INTO '" + copy.string() + "'");
    WordForWord(copy).Merge(72, 5);
    ASSERT_EQ(MergeInspection(Document(), 72, 5).result, MergeResult::Merged);
    ASSERT_EQ(Everything(m_Device.Visits()), Everything(Shell(copy))) << "round " << round;
  }
}

}  // namespace
}  // namespace inspector::exchange
