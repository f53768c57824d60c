#include "library/LibraryTables.h"

#include <algorithm>

#include "device/Format.h"

namespace inspector::library {
namespace {

constexpr LinkShorthand kShorthands[] = {
    {u"InType", u"CategoryTemplate", u"InspectionTypeCategory"},
    {u"InCategory", u"StepTemplate", u"CategoryStep"},
    {u"ForStep", u"Comments", u"StepComment"},
    {u"ForCategory", u"Comments", u"CategoryComment"},
    {u"ForMaterial", u"Comments", u"MaterialComment"},
    {u"ForType", u"Comments", u"InspectionTypeComment"},
};

std::vector<const data::TableLayout*> TemplateTables() {
  std::vector<const data::TableLayout*> tables;
  for (const data::TableLayout& layout : data::AllLayouts())
    if (layout.database == data::DatabaseKind::Template) tables.push_back(&layout);
  return tables;
}

}  // namespace

std::span<const LinkShorthand> LinkShorthands() {
  return kShorthands;
}

const LinkShorthand* FindShorthand(TextView owner, TextView key) {
  const auto* const found =
      std::find_if(std::begin(kShorthands), std::end(kShorthands),
                   [&](const auto& shorthand) { return shorthand.owner == owner && shorthand.key == key; });
  return found == std::end(kShorthands) ? nullptr : found;
}

data::RawRow MakeLink(const data::TableLayout& links, std::int32_t linked, std::int32_t owner) {
  data::RawRow row = {linked, owner};
  if (links.columns.size() > 2) row.push_back(device::Format(u"%d-%d", linked, owner));
  return row;
}

const std::vector<const data::TableLayout*>& LibraryTables() {
  static const std::vector<const data::TableLayout*> tables = TemplateTables();
  return tables;
}

const data::TableLayout* FindLibraryTable(TextView name) {
  const auto& tables = LibraryTables();
  const auto found =
      std::find_if(tables.begin(), tables.end(), [&](const auto* table) { return table->name == name; });
  return found == tables.end() ? nullptr : *found;
}

bool StaysOnDevice(const data::TableLayout& table, TextView column) {
  return table.name == kOptions && (column == u"UserName" || column == u"Pswrd");
}

}  // namespace inspector::library
