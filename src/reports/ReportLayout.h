// The layouts that an inspection report can take. A new one is a class and a line in Layouts().
#pragma once

#include <span>

#include "reports/ReportContent.h"
#include "reports/ReportRun.h"
#include "reports/RtfWriter.h"
#include "reports/StepRows.h"

namespace inspector::reports {

class ReportLayout {
public:
  ReportLayout(TextView name, int columns, bool isFrench)
      : m_Name(name), m_Columns(columns), m_IsFrench(isFrench) {}
  virtual ~ReportLayout() = default;
  ReportLayout(const ReportLayout&) = delete;
  ReportLayout& operator=(const ReportLayout&) = delete;

  TextView Name() const { return m_Name; }
  // Besides the step number; 1 for a report without tables.
  int Columns() const { return m_Columns; }
  bool IsFrench() const { return m_IsFrench; }

  // Title, heading and steps. Returns early when the person wishes to stop or the disk fails.
  virtual void WriteCategory(RtfWriter& writer, const RowStyle& style, const ReportSection& category,
                             ReportProgress& progress) const = 0;

private:
  TextView m_Name;
  int m_Columns;
  bool m_IsFrench;
};

// In the order in which a person chooses among them. They live as long as the program.
std::span<const ReportLayout* const> Layouts();
// By name, in any case; null when there is none.
const ReportLayout* FindLayout(TextView name);

}  // namespace inspector::reports
