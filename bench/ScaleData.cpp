#include "ScaleData.h"

#include <QColor>
#include <QImage>
#include <QImageWriter>
#include <random>

#include "editing/Defaults.h"

namespace inspector::bench {
namespace {

constexpr int kPictureWidth = 4000;
constexpr int kPictureHeight = 3000;
// Keys of the large library begin here, out of the way of the starter library's.
const std::string kBase = "1000000";

std::string Numbers(int count) {
  return "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
         std::to_string(count - 1) + ") ";
}

// Words that differ from row to row, so that a filter finds some and not others.
std::string Words(const std::string& number) {
  return "'The step flashing at the ' || substr('chimneydormerskylightparapetvalleyswallsides', 1 + " +
         number + " % 37, 8) || ' of slope ' || " + number +
         " || ' has come loose.  Water can enter behind it; have a roofer refasten and seal it before the "
         "next "
         "heavy rain.'";
}

void MakeLibrary(Engine& templates) {
  const std::string categories = std::to_string(kCategories);
  const std::string steps = std::to_string(kCategories * kStepsInCategory);
  const std::string each = std::to_string(kStepsInCategory);
  templates.Run("BEGIN; INSERT INTO InspectionType (ID, InspectionType, Description, Layout) VALUES (" +
                kBase + ", 'Large', '', '4 Column')");
  templates.Run(
      Numbers(kCategories) +
      "INSERT INTO CategoryTemplate (ID, Title, CategoryNumber, Description, DefComments, FormType, "
      "ExcludeFromApplyDefault) SELECT " +
      kBase + " + i, 'Room ' || (i + 1), i + 1, '', '', 0, 0 FROM n");
  templates.Run(Numbers(kCategories) + "INSERT INTO InspectionTypeCategory SELECT " + kBase + ", " + kBase +
                " + i FROM n");
  templates.Run(
      Numbers(kCategories * kStepsInCategory) +
      "INSERT INTO StepTemplate (ID, Title, StepNumber, RatingTypeID, StepInfo, Keyword) SELECT " + kBase +
      " + i, 'Flashing, penetrations and chimney ' || i, printf('%d.%03d', 1 + i / " + each + ", i % " +
      each +
      "), (SELECT ID FROM RatingType WHERE RatingType = 'Condition'), 'Look at it from the ladder.', "
      "'Roof' FROM n");
  templates.Run(Numbers(kCategories * kStepsInCategory) + "INSERT INTO CategoryStep SELECT " + kBase +
                " + i / " + each + ", " + kBase + " + i FROM n");
  const std::string materials = std::to_string(kMaterialsInStep);
  templates.Run(Numbers(kCategories * kStepsInCategory * kMaterialsInStep) +
                "INSERT INTO MaterialTemplate (ID, StepID, Material, MaterialOrder, CommentsExist, "
                "DefaultMaterial, PicturePath) SELECT " +
                kBase + " + i, " + kBase + " + i / " + materials + ", 'Material ' || (i % " + materials +
                "), i % " + materials + ", 0, i % " + materials + " = 0, '' FROM n");
  templates.Run("COMMIT");
  AddComments(templates, kComments);
  templates.Run("PRAGMA wal_checkpoint(TRUNCATE)");
}

// A third of the steps is not rated yet, the others have comments; the last categories were not opened.
LargeVisit FinishVisit(Engine& engine, std::int32_t inspectionID) {
  const std::string mine =
      "(SELECT CategoryID FROM Category WHERE InspectionID = " + std::to_string(inspectionID) + ")";
  const std::string unopened =
      "(SELECT CategoryID FROM Category WHERE InspectionID = " + std::to_string(inspectionID) +
      " ORDER BY CategoryNumber DESC LIMIT " + std::to_string(kUnopenedCategories) + ")";
  engine.Run("BEGIN; DELETE FROM Step WHERE CategoryID IN " + unopened);
  engine.Run("UPDATE Step SET InspectResult = '' WHERE StepID % 3 = 0 AND CategoryID IN " + mine);
  engine.Run("UPDATE Step SET Comments = " + Words("StepID") + " WHERE StepID % 3 = 1 AND CategoryID IN " +
             mine);
  engine.Run("UPDATE Category SET CompleteFlag = 0 WHERE InspectionID = " + std::to_string(inspectionID));
  const int category = engine.Number("SELECT min(CategoryID) FROM Category WHERE InspectionID = " +
                                     std::to_string(inspectionID));
  const int step = engine.Number("SELECT StepID FROM Step WHERE CategoryID = " + std::to_string(category) +
                                 " ORDER BY StepNumber LIMIT 1");
  // Lines of a hundred characters.
  engine.Run(
      Numbers(kLongComment / 100) +
      "UPDATE Step SET Comments = (SELECT group_concat(substr(replace(hex(zeroblob(40)), '00', 'roof '), "
      "1, 96), char(13) || char(10)) FROM n) WHERE StepID = " +
      std::to_string(step));
  engine.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
  return {inspectionID, category, step};
}

std::int32_t MakeOrdinaryInspection(Tablet& tablet, TextView type) {
  MustBe(tablet.Document()
             .CreateInspection(
                 [](data::InspectionTable& row) {
                   row.m_ClientName = u"Ana Ruiz";
                   row.m_DwellingAddress = u"418 Juniper Lane";
                   row.m_CityStateZip = u"Brindlecove, OR 97000";
                   row.m_InspectionNum = u"2026-1000";
                 },
                 type)
             .has_value(),
         "a new inspection");
  return tablet.Document().Inspection().m_InspectionID;
}

// A soft picture with grain, as a camera sees a wall.
QImage Photograph() {
  QImage picture(kPictureWidth, kPictureHeight, QImage::Format_RGB32);
  std::minstd_rand random(1);
  for (int y = 0; y < picture.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
      const int grain = static_cast<int>(random() % 16);
      line[x] = qRgb(x * 230 / kPictureWidth + grain, y * 230 / kPictureHeight + grain, 100 + grain);
    }
  }
  return picture;
}

}  // namespace

LargeVisit FillToScale(Tablet& tablet) {
  {
    Engine templates(tablet.TemplateFile());
    MakeLibrary(templates);
  }
  data::Databases& databases = tablet.GetWorkspace().GetDatabases();
  const std::int32_t first = MakeOrdinaryInspection(tablet, u"Full House Inspection");
  MustBe(editing::ApplyDefaultsSilently(databases, first) == inspection::RunResult::Done, "the defaults");
  Engine engine(tablet.InspectionFile());
  CopyInspection(engine, first, kInspections - 2);  // beside the first and the large one
  // The copies took their keys behind the back of the counters.
  engine.Run("UPDATE UniqueID SET NextID = 1000 * " + std::to_string(kInspections + 10) +
             "; UPDATE Inspection SET InspectionNum = '2026-' || InspectionID");

  MustBe(tablet.Document()
             .CreateInspection([](data::InspectionTable& row) { row.m_DwellingAddress = kLargeAddress; },
                               u"Large")
             .has_value(),
         "the large visit");
  const std::int32_t large = tablet.Document().Inspection().m_InspectionID;
  MustBe(editing::ApplyDefaultsSilently(databases, large) == inspection::RunResult::Done,
         "the defaults of the large visit");
  return FinishVisit(engine, large);
}

void FillWithHeaders(Tablet& tablet) {
  const std::int32_t first = MakeOrdinaryInspection(tablet, {});
  Engine engine(tablet.InspectionFile());
  CopyInspection(engine, first, kInspections - 1);
}

void AddComments(Engine& templates, int count) {
  const int present = templates.Number("SELECT count(*) FROM Comments WHERE ID >= " + kBase);
  const std::string isNew = " FROM n WHERE i >= " + std::to_string(present);
  templates.Run(
      "BEGIN; " + Numbers(count) +
      "INSERT INTO Comments (ID, OwnerID, Comments, Rating, GroupName, PicturePath, VoidFlag) SELECT " +
      kBase + " + i, 0, " + Words("i") + ", '', 'Group ' || (i % 20), '', 0" + isNew);
  templates.Run(Numbers(count) + "INSERT INTO StepComment SELECT " + kBase + ", " + kBase + " + i, " + kBase +
                " || '-' || (" + kBase + " + i)" + isNew);
  templates.Run("COMMIT");
}

void AddPictures(Tablet& tablet, const LargeVisit& visit) {
  QImage picture = Photograph();
  Engine engine(tablet.InspectionFile());
  for (int n = 0; n < kPictures; ++n) {
    const std::string name = "p" + std::to_string(n) + ".jpg";
    picture.setPixel(n, 0, qRgb(0, 0, 0));  // no two files are the same
    QImageWriter writer(QString::fromStdString((tablet.Folder() / name).string()), "jpg");
    writer.setQuality(90);
    writer.setProgressiveScanWrite(n % 5 == 4);
    if (!writer.write(picture)) Fail("a picture cannot be written");
    engine.Run("UPDATE Step SET BitmapPath = '\\" + name + "', Comments = 'Loose. ***Path=\\" + name +
               ";Scaling=50***' WHERE StepID = (SELECT StepID FROM Step WHERE CategoryID = " +
               std::to_string(visit.categoryID) + " ORDER BY StepNumber LIMIT 1 OFFSET " + std::to_string(n) +
               ")");
  }
}

}  // namespace inspector::bench
