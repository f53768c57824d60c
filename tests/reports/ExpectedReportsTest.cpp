// Whole reports against files that another program reckoned from the same visit.
#include "ReportFixture.h"

namespace inspector::tests {
namespace {

using device::Text;
using nlohmann::json;

struct Case {
  json variant;
  std::string layout;

  std::string FileName() const {
    std::string name = variant["name"].get<std::string>() + "-" + layout + ".rtf";
    for (char& letter : name)
      letter = letter == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return name;
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

// "2 Column" of an inspection report, "Summary", "Summary French", "Summary of Marginal", "Major Systems".
reports::ReportRequest RequestFor(const std::string& layout) {
  reports::ReportRequest request{0, u"inspection", {.layout = device::FromUtf8(layout)}, {}};
  if (layout == "Major Systems") request.format = u"major-systems";
  if (!layout.starts_with("Summary")) return request;
  request.format = u"summary";
  request.choices.layout = layout.ends_with("French") ? u"2 Column French" : u"4 Column";
  if (const auto of = layout.find(" of "); of != std::string::npos)
    request.choices.rating = device::FromUtf8(layout.substr(of + 4));
  return request;
}

class ExpectedReportsTest : public testing::TestWithParam<Case> {};

TEST_P(ExpectedReportsTest, IsWrittenByteForByte) {
  ReportDevice device;
  reports::ReportRequest request = RequestFor(GetParam().layout);
  request.inspectionID = StoreVisit(device, ReadVisit(GetParam().variant));
  const auto target = device.folder / "report.rtf";
  request.target = target;
  const auto outcome = reports::MakeReport(device.GetWorkspace(), request);
  ASSERT_EQ(outcome.result, reports::ReportResult::Written);
  EXPECT_EQ(device.Faults(), 0);
  EXPECT_EQ(FirstDifference(ContentOf(target), ContentOf(ExpectedFolder() / GetParam().FileName())), "");
}

INSTANTIATE_TEST_SUITE_P(Visit, ExpectedReportsTest, testing::ValuesIn(AllCases()), [](const auto& one) {
  std::string name = one.param.FileName();
  std::erase_if(name, [](unsigned char letter) { return !std::isalnum(letter); });
  return name;
});

}  // namespace
}  // namespace inspector::tests
