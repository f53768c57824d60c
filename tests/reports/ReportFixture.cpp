#include "ReportFixture.h"

#include <algorithm>
#include <map>
#include <set>

#include "data/FreshDatabase.h"
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

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char byte : text) quoted += byte == '\'' ? "''" : std::string(1, byte);
  return quoted + "'";
}

using Row = std::vector<std::pair<std::string, json>>;

std::string InsertSql(const std::string& table, const Row& row) {
  std::string names;
  std::string values;
  for (const auto& [name, value] : row) {
    names += (names.empty() ? "" : ", ") + name;
    values += (values.empty() ? "" : ", ") + (value.is_string() ? Quoted(value) : value.dump());
  }
  return "INSERT INTO " + table + " (" + names + ") VALUES (" + values + ");";
}

std::string OptionsSql(const json& options) {
  Row row = {{"DataVersion", "5.0"}};
  for (const char* name :
       {"ReportFontName", "ReportFontSize", "StepSpacing", "HideRatings", "DefaultPictCardPath",
        "SummaryDisclaimer", "FinePrint", "DefinitionOfTerms", "FooterText"})
    row.emplace_back(name, options[name]);
  row.emplace_back("OmitPictures", options["LeavePicturesOut"]);
  row.emplace_back("InspectorEntry", options["Inspector"]);
  for (std::size_t i = 0; i < 5; ++i)
    row.emplace_back("ColumnWidth" + std::to_string(i + 1), options["ColumnWidths"][i]);
  const char* const kLabels[] = {"DwellingAddress",   "ClientAddress", "ClientAgent", "DocType",
                                 "RealEstateCompany", "DocNumber",     "ClientName",  "Date"};
  for (std::size_t i = 0; i < 8; ++i)
    row.emplace_back(std::string("Label") + kLabels[i], options["HeaderLabels"][i]);
  return "DELETE FROM Options;" + InsertSql("Options", row);
}

std::string TemplatesSql(const json& visit) {
  std::string sql = InsertSql("InspectionType", {{"Layout", visit["firstTypeLayout"]}});
  std::map<std::string, std::size_t> ids;
  for (const json& choice : visit["ratingChoices"]) {
    const auto [id, isNew] = ids.emplace(choice["ratingType"], ids.size() + 1);
    if (isNew) sql += InsertSql("RatingType", {{"ID", id->second}, {"RatingType", id->first}});
    sql += InsertSql("RatingChoices", {{"RatingTypeID", id->second},
                                       {"ChoiceName", choice["choice"]},
                                       {"BoldFlag", choice["bold"]},
                                       {"RedFlag", choice["red"]},
                                       {"SummaryFlag", choice.value("summary", false)}});
  }
  return sql;
}

std::string InspectionSql(const json& visit) {
  const json& header = visit["header"];
  std::string sql = InsertSql("Inspection", {{"InspectionID", 1001},
                                             {"InspectionNum", header["documentNumber"]},
                                             {"InspectionDate", header["date"]},
                                             {"DwellingAddress", header["dwellingAddress"]},
                                             {"CityStateZip", header["dwellingCityStateZip"]},
                                             {"ClientName", header["clientName"]},
                                             {"ClientAddress", header["clientAddress"]},
                                             {"ClientCityStateZip", header["clientCityStateZip"]},
                                             {"ClientAgent", header["clientAgent"]},
                                             {"RealEstateCompany", header["realEstateCompany"]},
                                             {"GeneralInformation", visit["generalInformation"]}});
  int id = 2000;
  for (const json& category : visit["categories"]) {
    sql += InsertSql("Category", {{"CategoryID", ++id},
                                  {"InspectionID", 1001},
                                  {"CategoryNumber", category["number"]},
                                  {"CategoryTitle", category["title"]},
                                  {"NotPresentFlag", category["notPresent"]}});
    for (const json& step : category["steps"])
      sql += InsertSql("Step", {{"CategoryID", id},
                                {"StepNumber", step["number"]},
                                {"StepTitle", step["title"]},
                                {"RatingType", step["ratingType"]},
                                {"InspectResult", step["rating"]},
                                {"Materials", step["materials"]},
                                {"Comments", step["comments"]},
                                {"MajorSystem", step.value("majorSystem", "")}});
  }
  return sql;
}

}  // namespace

ReportDevice::ReportDevice() {
  for (const auto& [name, kind] :
       {std::pair{"My Documents/Template_Data.cdb", data::DatabaseKind::Template},
        std::pair{"My Documents/Inspection_Data.cdb", data::DatabaseKind::Inspection}})
    EXPECT_EQ(data::CreateFreshDatabase(folder / name, kind, m_Faults), u"");
  m_Workspace = data::StartData(m_Machine).workspace;
  if (!m_Workspace) std::abort();  // every test would go on without a database
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
  device.RunInLibrary(OptionsSql(visit["options"]) + TemplatesSql(visit));
  device.RunInVisits(InspectionSql(visit));
  device.GetWorkspace().ForgetOptions();
  const json& owner = visit["owner"];
  const device::OwnerRecord record{TextOf(owner["name"]), TextOf(owner["company"]), TextOf(owner["address"]),
                                   TextOf(owner["phone"])};
  EXPECT_TRUE(device.GetMachine().registry.WriteBinary(Text(data::kOwnerKey), u"Owner", record.Encode()));
  return 1001;
}

}  // namespace inspector::tests
