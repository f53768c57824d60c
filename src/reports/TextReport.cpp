#include "reports/TextReport.h"

#include "reports/PlainTextWriter.h"
#include "reports/ReportWords.h"

namespace inspector::reports {
namespace {

constexpr std::size_t kHeaderColumn = 22;  // where the values of the header begin
constexpr std::size_t kStepColumn = 8;     // where all that is said of a step begins

Text InCapitals(TextView words) {
  Text capitals(words);
  // Only what the code page has small and large.
  constexpr TextView kPairs = u"\u0153\u0152\u0161\u0160\u017E\u017D\u00FF\u0178";
  for (char16_t& unit : capitals) {
    if ((unit >= u'a' && unit <= u'z') || (unit >= 0xE0 && unit <= 0xFE && unit != 0xF7)) {
      unit = static_cast<char16_t>(unit - 0x20);
    } else if (const std::size_t pair = kPairs.find(unit); pair != TextView::npos) {
      unit = kPairs[pair | 1];
    }
  }
  return capitals;
}

class TextPage {
public:
  TextPage(device::OutputFile& output, const ReportContent& content, bool hideRatings)
      : m_Writer(output), m_Content(content), m_HideRatings(hideRatings) {}

  void WriteHeader() {
    for (const Text& line : m_Content.companyLines)
      if (HasWords(line)) m_Writer.WriteCentred(line);
    m_Writer.WriteRule(u'=');
    m_Writer.WriteCentred(u"INSPECTION REPORT");
    m_Writer.WriteRule(u'=');
    m_Writer.WriteBlankLine();
    WriteFields();
    if (m_Content.HasGeneralInformation()) WriteBlock(u"GENERAL INFORMATION", m_Content.generalInformation);
  }

  void WriteCategory(const ReportSection& category) {
    if (category.isSkipped || category.steps.empty()) return;
    m_Writer.WriteBlankLine();
    m_Writer.WriteTitle(InCapitals(NameOrNone(category.title)), u'-');
    for (const ReportStep& step : category.steps)
      if (step.isReported) WriteStep(step);
  }

  void WriteEnd() {
    WriteBlock(u"DEFINITION OF TERMS", m_Content.definitionOfTerms);
    WriteBlock(u"TERMS OF THIS REPORT", m_Content.finePrint);
    if (!HasWords(m_Content.footer)) return;
    m_Writer.WriteBlankLine();
    m_Writer.WriteRule(u'=');
    m_Writer.WriteCentred(m_Content.footer);
  }

private:
  void WriteFields() {
    for (const HeaderField& field : HeaderFields(m_Content))
      if (!field.value.empty()) m_Writer.WriteLabelled(field.label + u":", field.value, kHeaderColumn);
  }

  void WriteBlock(TextView title, const Text& words) {
    if (!HasWords(words)) return;
    m_Writer.WriteBlankLine();
    m_Writer.WriteTitle(title, u'-');
    m_Writer.WriteWrapped(words, 0);
  }

  void WriteStep(const ReportStep& step) {
    const bool hasRating = !m_HideRatings && !step.rating.empty();
    m_Writer.WriteLabelled(step.number, hasRating ? step.title + u" [" + step.rating + u"]" : step.title,
                           kStepColumn);
    if (step.materials.find_first_not_of(u' ') != Text::npos)
      m_Writer.WriteWrapped(u"Materials: " + step.materials, kStepColumn);
    if (const Text words = WordsOf(step); !words.empty()) m_Writer.WriteWrapped(words, kStepColumn);
    m_Writer.WriteBlankLine();
  }

  PlainTextWriter m_Writer;
  const ReportContent& m_Content;
  const bool m_HideRatings;
};

}  // namespace

void TextReport::Write(const ReportSource& source, ReportRun& run) const {
  TextPage page(run.Create(), source.content, source.options.m_HideRatings != 0);
  page.WriteHeader();
  for (const ReportSection& category : source.content.sections) {
    page.WriteCategory(category);
    if (!run.Progress().PartDone()) return;
  }
  page.WriteEnd();
}

}  // namespace inspector::reports
