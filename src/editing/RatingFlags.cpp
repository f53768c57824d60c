#include "editing/RatingFlags.h"

#include <map>

#include "data/RatingChoicesTable.h"
#include "data/RatingTypeTable.h"

namespace inspector::editing {

bool RatingFlags::IsBold(TextView ratingType, TextView choice) {
  return IsIn(m_Bold, u"SELECT * FROM RatingChoices WHERE RatingChoices.BoldFlag = TRUE;", ratingType,
              choice);
}

bool RatingFlags::IsRed(TextView ratingType, TextView choice) {
  return IsIn(m_Red, u"SELECT * FROM RatingChoices WHERE RatingChoices.RedFlag = TRUE;", ratingType, choice);
}

bool RatingFlags::IsSummary(TextView ratingType, TextView choice) {
  return IsIn(m_Summary, u"SELECT * FROM RatingChoices WHERE RatingChoices.SummaryFlag = TRUE;", ratingType,
              choice);
}

bool RatingFlags::IsIn(std::optional<Pairs>& pairs, TextView query, TextView ratingType, TextView choice) {
  if (!pairs) pairs = Load(query);
  return pairs->contains({Text(ratingType), Text(choice)});
}

RatingFlags::Pairs RatingFlags::Load(TextView query) {
  data::Databases& databases = m_Workspace.GetDatabases();
  const data::ReadScope reading(databases.Template());
  std::multimap<std::int32_t, Text> typeNames;
  data::RatingTypeTable types(databases);
  types.Open();
  m_Failed = m_Failed || types.Failed();
  for (int n = 0; n < types.RecordCount(); ++n) {
    if (types.GetRecord(n)) typeNames.emplace(types.m_ID, types.m_RatingType);
    m_Failed = m_Failed || types.Failed();
  }

  Pairs pairs;
  data::RatingChoicesTable choices(databases);
  choices.OpenSQL(query);
  m_Failed = m_Failed || choices.Failed();
  for (int n = 0; n < choices.RecordCount(); ++n) {
    const bool isRead = choices.GetRecord(n);
    m_Failed = m_Failed || choices.Failed();
    if (!isRead) continue;
    const auto [first, last] = typeNames.equal_range(choices.m_RatingTypeID);
    for (auto name = first; name != last; ++name) pairs.emplace(name->second, choices.m_ChoiceName);
  }
  return pairs;
}

}  // namespace inspector::editing
