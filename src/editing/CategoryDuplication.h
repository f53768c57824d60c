// Copies of one category: a second kitchen.
#pragma once

#include <vector>

#include "data/CategoryTable.h"
#include "data/StepTable.h"
#include "data/Workspace.h"
#include "editing/EditingDialogs.h"

namespace inspector::editing {

class CategoryDuplication {
public:
  // `source` is the row last read of an open query; its columns are taken over.
  CategoryDuplication(data::Workspace& workspace, const data::CategoryTable& source);

  // What the dialog begins with: one copy without data, numbered after the categories of the same template.
  // Nothing when those could not be counted.
  std::optional<EditingDialogs::CategoryCopies> Suggest();

  // Makes the copies, each with a number that no category of any inspection has. Copies with data take over
  // texts, flags, steps and fields; those without get the steps of the templates. A step whose template is
  // gone is not copied, which is said once all is written. One transaction; false when it failed or was
  // cancelled.
  bool Make(const EditingDialogs::CategoryCopies& wanted);
  // The key of the first one that Make has made.
  std::int32_t FirstCopy() const { return m_FirstCopy; }

private:
  bool MakeAll(const EditingDialogs::CategoryCopies& wanted);
  bool ReadSource();
  std::optional<int> CountOfTemplate();
  bool FindFreeNumber();
  bool MakeCopy(const Text& title, bool withData);
  bool CopySteps(std::int32_t targetCategory);
  std::optional<bool> HasTemplate(std::int32_t stepTemplateID);

  data::Workspace& m_Workspace;
  data::Databases& m_Databases;
  data::CategoryTable m_Source;
  data::CategoryTable m_Copy;
  std::int32_t m_FirstCopy = -1;
  std::int64_t m_LastNumber = 0;
  bool m_IsCancelled = false;
  std::vector<int> m_LeftOut;  // steps without a template, by their place in the source
};

}  // namespace inspector::editing
