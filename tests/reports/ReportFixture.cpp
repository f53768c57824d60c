#include "ReportFixture.h"

#include <algorithm>
#include <map>
#include <set>

#include "data/CategoryTable.h"
#include "data/FreshDatabase.h"
#include "data/InspectionTable.h"
#include "data/InspectionTypeTable.h"
#include "data/RatingChoicesTable.h"
#include "data/RatingTypeTable.h"
#include "data/StartUp.h"
#include "device/OwnerRecord.h"

namespace inspector::tests {

using device::Text;
using nlohmann::json;

namespace {

const json& VisitFile() {
  static const json visit = json::parse(ContentOf(ExpectedFolder() / "small-inspection.json"));
  return visit;
}

std::string BytesOfHex(const std::string& digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes.push_back(static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

void PutEntries(ReportDevice& device, const json& folder) {
  const std::filesystem::path path = device.GetMachine().paths.Resolve(TextOf(folder["folder"]));
  std::filesystem::create_directories(path);
  for (const json& entry : folder["entries"]) {
    const std::filesystem::path name =
        std::filesystem::relative(path, device.Home()) / entry["name"].get<std::string>();
    if (entry.contains("folder")) {
      std::filesystem::create_directories(device.Home() / name);
    } else if (entry.contains("hex")) {
      device.folder.Put(name, BytesOfHex(entry["hex"]));
    } else {
      device.folder.Put(name, ContentOf(ExpectedFolder() / entry["file"].get<std::string>()));
    }
  }
}

void StoreOptions(data::Workspace& workspace, const json& options) {
  data::OptionsTable table(workspace.GetDatabases());
  table.Open();
  if (!table.GetRecord(0)) table.PrepareNew();
  table.m_ReportFontName = TextOf(options["ReportFontName"]);
  table.m_ReportFontSize = options["ReportFontSize"];
  for (std::size_t i = 0; i < 5; ++i) table.m_ColumnWidth[i] = options["ColumnWidths"][i];
  table.m_StepSpacing = options["StepSpacing"];
  table.m_HideRatings = options["HideRatings"].get<bool>() ? -1 : 0;
  table.m_OmitPictures = options["LeavePicturesOut"].get<bool>() ? -1 : 0;
  table.m_DefaultPictCardPath = TextOf(options["DefaultPictCardPath"]);
  table.m_FinePrint = TextOf(options["FinePrint"]);
  table.m_DefinitionOfTerms = TextOf(options["DefinitionOfTerms"]);
  table.m_FooterText = TextOf(options["FooterText"]);
  table.m_InspectorEntry = TextOf(options["Inspector"]);
  for (std::size_t i = 0; i < 8; ++i) table.m_HeaderLabel[i] = TextOf(options["HeaderLabels"][i]);
  ASSERT_TRUE(table.Write());
  workspace.ForgetOptions();
}

void StoreTemplates(data::Workspace& workspace, const json& visit) {
  data::InspectionTypeTable types(workspace.GetDatabases());
  types.PrepareNew();
  types.m_Layout = TextOf(visit["firstTypeLayout"]);
  ASSERT_TRUE(types.Write());
  data::RatingTypeTable ratingTypes(workspace.GetDatabases());
  data::RatingChoicesTable choices(workspace.GetDatabases());
  std::map<Text, std::int32_t> ids;
  for (const json& choice : visit["ratingChoices"]) {
    const auto [id, isNew] =
        ids.emplace(TextOf(choice["ratingType"]), static_cast<std::int32_t>(ids.size()) + 1);
    if (isNew) {
      ratingTypes.PrepareNew();
      ratingTypes.m_ID = id->second;
      ratingTypes.m_RatingType = id->first;
      ASSERT_TRUE(ratingTypes.Write());
    }
    choices.PrepareNew();
    choices.m_RatingTypeID = id->second;
    choices.m_ChoiceName = TextOf(choice["choice"]);
    choices.m_BoldFlag = choice["bold"].get<bool>() ? -1 : 0;
    choices.m_RedFlag = choice["red"].get<bool>() ? -1 : 0;
    ASSERT_TRUE(choices.Write());
  }
}

void StoreOwner(const device::Machine& machine, const json& owner) {
  const device::OwnerRecord record{
      TextOf(owner["name"]), TextOf(owner["company"]), TextOf(owner["address"]), {}};
  ASSERT_TRUE(machine.registry.WriteBinary(Text(data::kOwnerKey), u"Owner", record.Encode()));
}

void StoreHeader(data::InspectionTable& inspection, const json& header) {
  inspection.m_InspectionNum = TextOf(header["documentNumber"]);
  inspection.m_InspectionDate =
      device::FromIso(header["date"].get<std::string>()).value_or(device::CalendarTime{});
  inspection.m_DwellingAddress = TextOf(header["dwellingAddress"]);
  inspection.m_CityStateZip = TextOf(header["dwellingCityStateZip"]);
  inspection.m_ClientName = TextOf(header["clientName"]);
  inspection.m_ClientAddress = TextOf(header["clientAddress"]);
  inspection.m_ClientCityStateZip = TextOf(header["clientCityStateZip"]);
  inspection.m_ClientAgent = TextOf(header["clientAgent"]);
  inspection.m_RealEstateCompany = TextOf(header["realEstateCompany"]);
}

void StoreSteps(data::Workspace& workspace, std::int32_t categoryID, const json& steps) {
  data::StepTable table(workspace.GetDatabases());
  for (const json& step : steps) {
    table.PrepareNew();
    table.m_CategoryID = categoryID;
    table.m_StepNumber = TextOf(step["number"]);
    table.m_StepTitle = TextOf(step["title"]);
    table.m_RatingType = TextOf(step["ratingType"]);
    table.m_InspectResult = TextOf(step["rating"]);
    table.m_Materials = TextOf(step["materials"]);
    table.m_Comments = TextOf(step["comments"]);
    ASSERT_TRUE(table.Write());
  }
}

void StoreCategories(data::Workspace& workspace, std::int32_t inspectionID, const json& categories) {
  data::CategoryTable table(workspace.GetDatabases());
  std::int32_t categoryID = 2000;
  for (const json& category : categories) {
    table.PrepareNew();
    table.m_CategoryID = ++categoryID;
    table.m_InspectionID = inspectionID;
    table.m_CategoryNumber = TextOf(category["number"]);
    table.m_CategoryTitle = TextOf(category["title"]);
    table.m_NotPresentFlag = category["notPresent"].get<bool>() ? -1 : 0;
    ASSERT_TRUE(table.Write());
    StoreSteps(workspace, categoryID, category["steps"]);
  }
}

}  // namespace

ReportDevice::ReportDevice()
    : m_Paths(folder.Path()),
      m_Registry(files, folder / "registry.toml"),
      m_Faults(prompts, m_Clock, folder / "faults.log"),
      m_Machine{m_Paths, files, m_Registry, prompts, m_Clock, m_Faults} {
  const device::DatabasePaths paths{Text(data::kDefaultTemplatePath), Text(data::kDefaultInspectionPath)};
  std::filesystem::create_directories(folder / "My Documents");
  for (const auto& [path, kind] : {std::pair{paths.templatePath, data::DatabaseKind::Template},
                                   std::pair{paths.inspectionPath, data::DatabaseKind::Inspection}}) {
    EXPECT_EQ(data::CreateFreshDatabase(m_Paths.Resolve(path), kind, m_Faults), Text());
  }
  m_Workspace = std::make_unique<data::Workspace>(m_Machine, paths);
  EXPECT_EQ(m_Workspace->GetDatabases().Open(), Text());
}

std::int32_t ReportDevice::AddInspection(const Text& documentNumber) {
  data::InspectionTable table(m_Workspace->GetDatabases());
  table.PrepareNew();
  table.m_InspectionID = ++m_LastID;
  table.m_InspectionNum = documentNumber;
  EXPECT_TRUE(table.Write());
  return m_LastID;
}

std::int32_t ReportDevice::AddCategory(std::int32_t inspectionID, const Text& number, const Text& title) {
  data::CategoryTable table(m_Workspace->GetDatabases());
  table.PrepareNew();
  table.m_CategoryID = ++m_LastID;
  table.m_InspectionID = inspectionID;
  table.m_CategoryNumber = number;
  table.m_CategoryTitle = title;
  EXPECT_TRUE(table.Write());
  return m_LastID;
}

void ReportDevice::AddStep(std::int32_t categoryID, const Text& number, const Text& rating,
                           const Text& comments) {
  data::StepTable table(m_Workspace->GetDatabases());
  table.PrepareNew();
  table.m_CategoryID = categoryID;
  table.m_StepNumber = number;
  table.m_StepTitle = u"Step " + number;
  table.m_InspectResult = rating;
  table.m_Comments = comments;
  EXPECT_TRUE(table.Write());
}

std::filesystem::path ExpectedFolder() {
  return std::filesystem::path(INSPECTOR_SOURCE_DIR) / "tests" / "reports" / "expected";
}

Text TextOf(const json& value) {
  return device::FromUtf8(value.get<std::string>());
}

json ReadVisit(const json& variant) {
  json visit = VisitFile();
  const std::set<std::string> mergedByKey = {"header", "options", "owner"};
  for (const auto& [key, value] : variant.items()) {
    if (key == "name" || key == "layouts") continue;
    if (key == "device") {
      for (const json& folder : value) {
        auto& folders = visit["device"];
        const auto known = std::find_if(folders.begin(), folders.end(), [&](const json& other) {
          return other["folder"] == folder["folder"];
        });
        if (known == folders.end()) {
          folders.push_back(folder);
        } else {
          *known = folder;
        }
      }
    } else if (mergedByKey.contains(key)) {
      visit[key].update(value);
    } else {
      visit[key] = value;
    }
  }
  return visit;
}

std::int32_t StoreVisit(ReportDevice& device, const json& visit) {
  for (const json& folder : visit["device"]) PutEntries(device, folder);
  data::Workspace& workspace = device.GetWorkspace();
  data::Transaction templates(workspace.TemplateConnection());
  data::Transaction inspections(workspace.InspectionConnection());
  StoreOptions(workspace, visit["options"]);
  StoreTemplates(workspace, visit);
  StoreOwner(device.GetMachine(), visit["owner"]);
  data::InspectionTable inspection(workspace.GetDatabases());
  inspection.PrepareNew();
  inspection.m_InspectionID = 1001;
  StoreHeader(inspection, visit["header"]);
  inspection.m_GeneralInformation = TextOf(visit["generalInformation"]);
  EXPECT_TRUE(inspection.Write());
  StoreCategories(workspace, 1001, visit["categories"]);
  EXPECT_TRUE(templates.Commit());
  EXPECT_TRUE(inspections.Commit());
  return 1001;
}

}  // namespace inspector::tests
