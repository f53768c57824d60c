// Whole reports against files that another program reckoned from the same visit.
#include <map>

#include "ReportFixture.h"

namespace inspector::tests {
namespace {

using device::Text;
using nlohmann::json;

struct Case {
  json variant;
  std::string layout;

  // "Pages" are a folder.
  std::string FileName() const {
    std::string name = variant["name"].get<std::string>() + "-" + layout;
    for (char& letter : name)
      letter = letter == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return name + (layout == "Pages" ? "" : layout == "Text" ? ".txt" : ".rtf");
  }
};

void PrintTo(const Case& value, std::ostream* out) {
  *out << value.FileName();
}

std::vector<Case> AllCases() {
  std::vector<Case> cases;
  const json visit = ReadVisit(json::object());
  for (const json& variant : visit["variants"]) {
    for (const json& layout : variant["layouts"]) cases.push_back({variant, layout});
  }
  return cases;
}

// Where two files part, with what surrounds it: whole reports are too long to look through.
std::string FirstDifference(const std::string& written, const std::string& expected) {
  if (written == expected) return {};
  std::size_t at = 0;
  while (at < written.size() && at < expected.size() && written[at] == expected[at]) ++at;
  const std::size_t begin = at < 60 ? 0 : at - 60;
  return "at byte " + std::to_string(at) + "\nwritten:  " + written.substr(begin, 140) +
         "\nexpected: " + expected.substr(begin, 140);
}

// A file, or all files of a folder, by their names.
std::map<std::string, std::string> FilesOf(const std::filesystem::path& path) {
  if (!std::filesystem::is_directory(path)) return {{"", ContentOf(path)}};
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(path))
    files[entry.path().filename()] = ContentOf(entry.path());
  return files;
}

// "2 Column" of an inspection report, "Summary", "Summary French", "Summary of Marginal", "Major Systems",
// "Pages", "Text".
reports::ReportRequest RequestFor(const std::string& layout) {
  reports::ReportRequest request{0, u"inspection", {.layout = device::FromUtf8(layout)}, {}};
  if (layout == "Major Systems") request.format = u"major-systems";
  if (layout == "Pages") request.format = u"html";
  if (layout == "Text") request.format = u"text";
  if (!layout.starts_with("Summary")) return request;
  request.format = u"summary";
  request.choices.layout = layout.ends_with("French") ? u"2 Column French" : u"4 Column";
  if (const auto of = layout.find(" of "); of != std::string::npos)
    request.choices.rating = device::FromUtf8(layout.substr(of + 4));
  return request;
}

class ExpectedReportsTest : public testing::TestWithParam<Case> {};

void ExpectSameFiles(const std::map<std::string, std::string>& written,
                     const std::map<std::string, std::string>& expected) {
  for (const auto& [name, content] : written) EXPECT_TRUE(expected.contains(name)) << name << " is left over";
  for (const auto& [name, content] : expected) {
    ASSERT_TRUE(written.contains(name)) << name << " is not there";
    EXPECT_EQ(FirstDifference(written.at(name), content), "") << name;
  }
}

TEST_P(ExpectedReportsTest, IsWrittenByteForByte) {
  ReportDevice device;
  reports::ReportRequest request = RequestFor(GetParam().layout);
  request.inspectionID = StoreVisit(device, ReadVisit(GetParam().variant));
  const auto target = device.folder / "report";
  request.target = target;
  const auto outcome = reports::MakeReport(device.GetWorkspace(), request);
  ASSERT_EQ(outcome.result, reports::ReportResult::Written);
  EXPECT_EQ(device.Faults(), 0);
  ExpectSameFiles(FilesOf(target), FilesOf(ExpectedFolder() / GetParam().FileName()));
}

// On the device the frames name the places of their pages; all else is as in the exported folder.
TEST(ViewedPagesTest, AreTheExportedOnes) {
  ReportDevice device;
  const std::int32_t visit = StoreVisit(device, ReadVisit(json::object()));
  const auto outcome = reports::MakeReport(device.GetWorkspace(), {visit, u"html-view", {}, {}});
  ASSERT_EQ(outcome.result, reports::ReportResult::Written);
  auto expected = FilesOf(ExpectedFolder() / "plain-pages");
  for (const std::string page : {"toc.htm", "inspection.htm"}) {
    std::string& frames = expected["index.htm"];
    frames.insert(frames.find("\"" + page) + 1, "file:///Program Files\\Brindlecove\\");
  }
  ExpectSameFiles(FilesOf(device.Home() / "Program Files" / "Brindlecove"), expected);
}

INSTANTIATE_TEST_SUITE_P(Visit, ExpectedReportsTest, testing::ValuesIn(AllCases()), [](const auto& one) {
  std::string name = one.param.FileName();
  std::erase_if(name, [](unsigned char letter) { return !std::isalnum(letter); });
  return name;
});

}  // namespace
}  // namespace inspector::tests
