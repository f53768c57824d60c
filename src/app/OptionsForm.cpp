#include "app/OptionsForm.h"

#include <utility>

#include "data/OptionFields.h"
#include "device/Format.h"
#include "device/OwnerRecord.h"
#include "editing/PictureAttachment.h"
#include "exchange/ServerSettings.h"

namespace inspector::app {
namespace {

using Kind = OptionEntry::Kind;

const Text kOwnerValue = u"Owner";

struct OwnerEntry {
  TextView name;
  Text device::OwnerRecord::*text;
};
constexpr OwnerEntry kOwner[] = {
    {u"OwnerName", &device::OwnerRecord::name},
    {u"OwnerCompany", &device::OwnerRecord::company},
    {u"OwnerAddress", &device::OwnerRecord::address},
    {u"OwnerPhone", &device::OwnerRecord::phone},
};
// Of pictures that are attached to comments.
constexpr TextView kAttachedSized = u"AttachedSized";
constexpr TextView kAttachedUpright = u"AttachedUpright";
constexpr TextView kTemplatePath = u"TemplatePath";
constexpr TextView kInspectionPath = u"InspectionPath";

device::OwnerRecord ReadOwner(const device::Registry& registry) {
  const auto block = registry.ReadBinary(Text(data::kOwnerKey), kOwnerValue);
  return block ? device::OwnerRecord::Decode(*block) : device::OwnerRecord();
}

Text YesNo(bool yes) {
  return yes ? u"TRUE" : u"FALSE";
}

bool IsKeptElsewhere(TextView name) {
  return name.starts_with(u"Owner") || name.starts_with(u"Attached") || name == kTemplatePath ||
         name == kInspectionPath;
}

OptionsPage LongText(OptionsPage::View view, TextView title, TextView explanation, TextView name,
                     TextView caption) {
  return {title, explanation, {{name, caption, Kind::Lines}}, view};
}

}  // namespace

const std::vector<OptionsPage>& OptionsPages() {
  static const std::vector<OptionsPage> pages = {
      {u"General",
       u"",
       {{u"ShowStepNumbers", u"Show Step numbers on Step List", Kind::YesNo},
        {u"BlankLineBetweenComments", u"Blank line between comments", Kind::YesNo},
        {u"DefStepTab",
         u"First page of Step Properties",
         Kind::Choice,
         {u"0", u"1", u"2", u"3"},
         {u"Materials", u"Comments", u"Picture", u"Info"}}}},
      {u"Report",
       u"",
       {{u"ReportFontName", u"Font"},
        {u"ReportFontSize", u"Font size", Kind::Choice, {u"10", u"12"}},
        {u"StepSpacing", u"Lines between steps", Kind::Choice, {u"1", u"2"}},
        {u"PrintTOC", u"Table of contents", Kind::YesNo},
        {u"HideRatings", u"Leave ratings out", Kind::YesNo},
        {u"DefaultPath", u"Folder that export and import begin in"}}},
      {u"Columns",
       u"Widths in inches. Set all to 0 to take those of the first inspection type's layout.",
       {{u"ColumnWidth1", u"Column 1", Kind::Inches},
        {u"ColumnWidth2", u"Column 2", Kind::Inches},
        {u"ColumnWidth3", u"Column 3", Kind::Inches},
        {u"ColumnWidth4", u"Column 4", Kind::Inches},
        {u"ColumnWidth5", u"Column 5", Kind::Inches}}},
      {u"Header labels",
       u"What stands before the header's values in a report.",
       {{u"LabelDwellingAddress", u"Dwelling address"},
        {u"LabelClientAddress", u"Client address"},
        {u"LabelClientAgent", u"Client's agent"},
        {u"LabelDocType", u"Doc type"},
        {u"LabelRealEstateCompany", u"Real estate company"},
        {u"LabelDocNumber", u"Document number"},
        {u"LabelClientName", u"Client name"},
        {u"LabelDate", u"Date"}}},
      LongText(OptionsPage::View::Legal, u"Legal",
               u"At the end of the first page, below the picture of the house.", u"FinePrint", u"Fine print"),
      LongText(OptionsPage::View::DefOfTerms, u"Definition of terms",
               u"At the top of the second page: what the words of the ratings mean.", u"DefinitionOfTerms",
               u"Definition of terms"),
      LongText(OptionsPage::View::Footer, u"Footer",
               u"In small type at the foot of every page, below a line.", u"FooterText",
               u"Footer of each page"),
      LongText(OptionsPage::View::ReportText, u"Summary", u"In the summary report.", u"SummaryDisclaimer",
               u"Disclaimer of the summary"),
      {u"Pictures",
       u"",
       {{u"OmitPictures", u"Leave pictures out of reports", Kind::YesNo},
        {u"DefaultPictCardPath", u"Folder of the camera's card"},
        {u"NextPictNumber", u"Number of the next picture", Kind::Number},
        {kAttachedSized, u"Size pictures to at most 1600 pixels", Kind::YesNo},
        {kAttachedUpright, u"Turn pictures upright", Kind::YesNo}}},
      {u"Owner",
       u"Who the inspector is; it stands on the first page of a report.",
       {{u"InspectorEntry", u"Inspector; licence"},
        {u"OwnerName", u"Name", Kind::Line, {}, {}, 35},
        {u"OwnerCompany", u"Company", Kind::Line, {}, {}, 35},
        {u"OwnerAddress", u"Address", Kind::Lines, {}, {}, 185},
        {u"OwnerPhone", u"Phone; fax", Kind::Line, {}, {}, 125}}},
      {u"Server",
       u"The office's server, with which inspections are exchanged.",
       {{u"IPAddress", u"Address of the server", Kind::Line, {}, {}, exchange::kMostAddressLetters},
        {u"Port", u"Port", Kind::Number},
        {u"UserName", u"User name"},
        {u"Pswrd", u"Password", Kind::Secret, {}, {}, exchange::kMostPasswordLetters}}},
      {u"Paths",
       u"Inspector ends when a database is to be found elsewhere.",
       {{kTemplatePath, u"Template database"}, {kInspectionPath, u"Inspection database"}}},
  };
  return pages;
}

OptionsForm::Values OptionsForm::Load() {
  Values values;
  const device::OwnerRecord owner = ReadOwner(m_Workspace.GetMachine().registry);
  for (const OwnerEntry& entry : kOwner) values[entry.name] = owner.*entry.text;
  const editing::AttachmentForm form = editing::ReadAttachmentForm(m_Workspace.GetMachine().registry);
  values[kAttachedSized] = YesNo(form.longestSide > 0);
  values[kAttachedUpright] = YesNo(form.upright);
  values[kTemplatePath] = m_Workspace.PathsInUse().templatePath;
  values[kInspectionPath] = m_Workspace.PathsInUse().inspectionPath;
  for (const OptionsPage& page : OptionsPages())
    for (const OptionEntry& entry : page.entries)
      if (!IsKeptElsewhere(entry.name))
        values[entry.name] = data::OptionText(m_Workspace.Options(), entry.name).value_or(u"");
  return values;
}

std::optional<OptionsForm::Problem> OptionsForm::WhyNot(const Values& values) {
  data::OptionsTable tried(m_Workspace.GetDatabases());
  for (const OptionsPage& page : OptionsPages()) {
    for (const OptionEntry& entry : page.entries) {
      const Text& value = values.at(entry.name);
      if (entry.limit > 0 && value.size() > static_cast<std::size_t>(entry.limit))
        return Problem{page.title,
                       device::Phrase(u"\"%s\" takes at most %d characters.", entry.caption, entry.limit)};
      // A new device has no server and a port of 0.
      if (entry.name == u"Port" && value != u"0" && !exchange::IsServerPort(value))
        return Problem{page.title, device::Phrase(u"\"%s\" takes a number from %d to %d.", entry.caption,
                                                  exchange::kLowestPort, exchange::kHighestPort)};
      if (!IsKeptElsewhere(entry.name) &&
          data::SetOption(tried, entry.name, value) == data::OptionSet::BadValue)
        return Problem{page.title, device::Phrase(u"\"%s\" does not take \"%s\".", entry.caption, value)};
    }
  }
  return std::nullopt;
}

OptionsForm::Values OptionsForm::WithWhatStands(Values values, const Values& entered) {
  for (const auto& [name, text] : entered) {
    if (name == kTemplatePath || name == kInspectionPath) continue;
    const Text before = std::exchange(values[name], text);
    if (text != before && WhyNot(values)) values[name] = before;
  }
  return values;
}

data::OptionsSaved OptionsForm::Save(const Values& values) {
  const device::Machine& machine = m_Workspace.GetMachine();
  const Values former = Load();
  const device::OwnerRecord before = ReadOwner(machine.registry);
  device::OwnerRecord owner = before;
  for (const OwnerEntry& entry : kOwner) owner.*entry.text = values.at(entry.name);
  const editing::AttachmentForm formBefore = editing::ReadAttachmentForm(machine.registry);
  const editing::AttachmentForm form = {values.at(kAttachedSized) == u"TRUE" ? editing::kAttachedSide : 0,
                                        values.at(kAttachedUpright) == u"TRUE"};
  const bool written =
      (owner == before || machine.registry.WriteBinary(Text(data::kOwnerKey), kOwnerValue, owner.Encode())) &&
      editing::WriteAttachmentForm(machine.registry, form);
  if (!written) {
    machine.faults.Report(machine.registry.LastError());
    return data::OptionsSaved::Failed;
  }
  for (const auto& [name, value] : values)
    if (!IsKeptElsewhere(name)) data::SetOption(m_Workspace.Options(), name, value);
  const data::OptionsSaved saved =
      data::SaveOptions(m_Workspace, {values.at(kTemplatePath), values.at(kInspectionPath)});
  // What could not be written must not look as if it were in force, nor what was written already.
  if (saved == data::OptionsSaved::Failed) {
    m_Workspace.ForgetOptions();
    for (const auto& [name, value] : former)
      if (!IsKeptElsewhere(name)) data::SetOption(m_Workspace.Options(), name, value);
    m_Workspace.Options().Write();
    machine.registry.WriteBinary(Text(data::kOwnerKey), kOwnerValue, before.Encode());
    editing::WriteAttachmentForm(machine.registry, formBefore);
  }
  return saved;
}

}  // namespace inspector::app
