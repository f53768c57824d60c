#include "reports/MajorSystemsReport.h"

#include "reports/SummaryRTFFile.h"

namespace inspector::reports {
namespace {

// A summary whose header is there whatever is reported, and whose rows have no pictures.
class CMajorSystemsRTFFile : public CSummaryRTFFile {
public:
  using CSummaryRTFFile::CSummaryRTFFile;

  void WriteSystems(ReportProgress& progress) {
    WriteDocumentHeader();
    for (const ReportSection& system : Content().sections) {
      bool hasTitle = false;
      for (const ReportStep& step : system.steps) {
        if (step.isReported) {
          if (!hasTitle) WriteSectionTitle(system.title);
          hasTitle = true;
          WriteRow(step);
        }
        if (!progress.PartDone() || HasFailed()) return;
      }
    }
    WriteDocumentEnd();
  }

protected:
  void WriteFirstSectionTitle(TextView title) override { WriteTitle(title); }
};

}  // namespace

int MajorSystemsReport::Parts(const ReportContent& content) const {
  std::size_t steps = 0;
  for (const ReportSection& system : content.sections) steps += system.steps.size();
  return static_cast<int>(steps);
}

void MajorSystemsReport::Write(const ReportSource& source, ReportRun& run) const {
  CMajorSystemsRTFFile file(run.Create(), source.pictures, source.content,
                            SettingsOf(source, RtfSettings::kSummary), StyleOf(source.options), false);
  file.WriteSystems(run.Progress());
}

}  // namespace inspector::reports
