#include "editing/StepDuplication.h"

#include "data/UniqueIDTable.h"
#include "device/Format.h"
#include "editing/Completeness.h"
#include "editing/NumberedTitle.h"

namespace inspector::editing {
namespace {

using device::Format;

constexpr int kBeforeA = 96;  // the first copy of 4.2 is 4.2a

}  // namespace

StepDuplication::StepDuplication(data::Databases& databases, const data::StepTable& source)
    : m_Databases(databases), m_Source(databases) {
  data::CopyColumns(source, m_Source);
}

std::optional<int> StepDuplication::CountAlike() {
  const Text baseName = BaseNameOf(m_Source.m_StepTitle);
  data::StepTable steps(m_Databases);
  steps.OpenSQL(Format(u"SELECT * FROM %s WHERE CategoryID = %d Order By StepNumber", steps.TableName(),
                       m_Source.m_CategoryID));
  int alike = 0;
  for (int n = 0; n < steps.RecordCount(); ++n)
    if (steps.GetRecord(n) && steps.m_StepTitle.starts_with(baseName)) ++alike;
  return steps.Failed() ? std::nullopt : std::optional(alike);
}

std::optional<Text> StepDuplication::SuggestedName() {
  const data::ReadScope reading(m_Databases.Inspection());
  const std::optional<int> alike = CountAlike();
  if (!alike) return std::nullopt;
  return NumberedTitle(BaseNameOf(m_Source.m_StepTitle), *alike + 1);
}

// "Roof-Covering*" for a copy called Vents: "RoofVents*". The hyphen is dropped on purpose.
Text StepDuplication::MajorSystemFor(const Text& name) const {
  const Text& source = m_Source.m_MajorSystem;
  const std::size_t hyphen = source.find(u'-');
  if (hyphen == Text::npos) return source;
  return source.substr(0, hyphen) + name + (device::Contains(source, u"*") ? u"*" : u"");
}

std::optional<std::int32_t> StepDuplication::Make(TextView name) {
  data::Transaction transaction(m_Databases.Inspection());
  if (!transaction.IsOpen()) return std::nullopt;
  // Now that nobody else writes, it counts.
  const std::int32_t key = m_Source.m_StepID;
  m_Source.OpenSQL(Format(u"SELECT * FROM Step WHERE StepID = %d", key));
  if (!m_Source.GetRecord(0)) {
    if (!m_Source.Failed()) m_Databases.Inspection().ReportVanishedRow(m_Source.TableName());
    return std::nullopt;
  }
  const std::optional<int> alike = CountAlike();
  if (!alike) return std::nullopt;
  data::StepTable copy(m_Databases);
  copy.PrepareNew();
  copy.m_StepID = data::NextInspectionID(m_Databases, u"Step");
  copy.m_StepNumber = Format(u"%s%c", m_Source.m_StepNumber, *alike + kBeforeA);
  copy.m_StepTitle = device::StripLeadingControls(name);
  copy.m_MajorSystem = MajorSystemFor(copy.m_StepTitle);
  copy.m_RatingType = m_Source.m_RatingType;
  copy.m_StepTemplateID = m_Source.m_StepTemplateID;
  copy.m_CategoryID = m_Source.m_CategoryID;
  copy.m_StepInfoExists = m_Source.m_StepInfoExists;
  copy.m_BitmapPath = m_Source.m_BitmapPath;
  copy.m_Reserve8 = m_Source.m_Reserve8;
  copy.m_MaterialNote = m_Source.m_MaterialNote;
  if (!copy.Write() || !RecomputeComplete(m_Databases, copy.m_CategoryID) || !transaction.Commit())
    return std::nullopt;
  return copy.m_StepID;
}

}  // namespace inspector::editing
