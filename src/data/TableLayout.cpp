#include "data/TableLayout.h"

#include <array>

#include "device/Format.h"

namespace inspector::data {
namespace {

constexpr auto kInteger = ValueType::Integer;
constexpr auto kDouble = ValueType::Double;
constexpr auto kDate = ValueType::Date;
constexpr auto kString = ValueType::String;
constexpr auto kYesNo = ValueType::YesNo;
constexpr auto kBinary = ValueType::Binary;

// PrivateNotes stays on the device, so the staging table ends before it.
constexpr ColumnLayout kInspection[] = {
    {u"InspectionID", kInteger},
    {u"DwellingAddress", kString},
    {u"ClientName", kString},
    {u"ClientAddress", kString},
    {u"ClientCityStateZip", kString},
    {u"GeneralInformation", kString},
    {u"InspectionDate", kDate},
    {u"DocType", kString},
    {u"Reserve8", kYesNo},
    {u"Reserve9", kYesNo},
    {u"Reserve10", kInteger},
    {u"InspectionNum", kString},
    {u"ClientPhone", kString},
    {u"CityStateZip", kString},
    {u"ClientAgent", kString},
    {u"ListingAgent", kString},
    {u"InspectionTypeID", kInteger},
    {u"RealEstateCompany", kString},
    {u"PrivateNotes", kString},
};

constexpr ColumnLayout kCategory[] = {
    {u"CategoryID", kInteger},       {u"CategoryTitle", kString}, {u"CategoryNumber", kString},
    {u"Remarks", kString},           {u"CommentText", kString},   {u"CompleteFlag", kYesNo},
    {u"NotPresentFlag", kYesNo},     {u"InspectionID", kInteger}, {u"CategoryTemplateID", kInteger},
    {u"Type", kInteger, u"integer"},
};

constexpr ColumnLayout kStep[] = {
    {u"StepID", kInteger},
    {u"StepNumber", kString},
    {u"StepTitle", kString},
    {u"CategoryID", kInteger},
    {u"InspectResult", kString},
    {u"Comments", kString},
    {u"Materials", kString},
    {u"RatingType", kString},
    {u"Reserve8", kString},
    {u"MaterialNote", kString},
    {u"StepTemplateID", kInteger},
    {u"Reserve11", kYesNo},
    {u"MajorSystem", kString, u"Text"},
    {u"StepInfoExists", kYesNo, u"bit"},
    {u"SummaryComment", kString, u"Text"},
    {u"BitmapPath", kString, u"Text"},
    {u"PictureBefore", kYesNo, u"bit"},
};

constexpr ColumnLayout kField[] = {
    {u"ID", kInteger, u"integer"},        {u"CategoryID", kInteger, u"integer"},
    {u"AssignedValue", kString, u"Text"}, {u"SequenceNumber", kInteger, u"integer"},
    {u"FieldType", kInteger, u"integer"}, {u"FieldLabel", kString, u"varchar(80)"},
};

constexpr ColumnLayout kInspectionType[] = {
    {u"ID", kInteger},      {u"InspectionType", kString}, {u"Description", kString}, {u"Reserve3", kString},
    {u"Reserve4", kString}, {u"Layout", kString},         {u"Reserve6", kYesNo},     {u"Reserve7", kInteger},
};
constexpr ColumnLayout kInspectionTypeCategory[] = {{u"InspectionTypeID", kInteger},
                                                    {u"CategoryID", kInteger}};
constexpr ColumnLayout kInspectionTypeComment[] = {
    {u"InspectionTypeID", kInteger}, {u"CommentID", kInteger}, {u"LinkKey", kString}};

constexpr ColumnLayout kCategoryTemplate[] = {
    {u"ID", kInteger},
    {u"Title", kString},
    {u"CategoryNumber", kInteger},
    {u"Description", kString},
    {u"DefComments", kString, u"Text"},
    {u"FormType", kInteger, u"integer"},
    {u"ExcludeFromApplyDefault", kYesNo, u"bit"},
};
constexpr ColumnLayout kCategoryStep[] = {{u"CategoryID", kInteger}, {u"StepID", kInteger}};
constexpr ColumnLayout kCategoryComment[] = {
    {u"CategoryID", kInteger}, {u"CommentID", kInteger}, {u"LinkKey", kString}};

constexpr ColumnLayout kStepTemplate[] = {
    {u"ID", kInteger},
    {u"Title", kString},
    {u"StepNumber", kString},
    {u"RatingTypeID", kInteger},
    {u"StepInfo", kString, u"Text"},
    {u"Keyword", kString, u"Text"},
};
constexpr ColumnLayout kStepComment[] = {
    {u"StepID", kInteger}, {u"CommentID", kInteger}, {u"LinkKey", kString}};

constexpr ColumnLayout kComments[] = {
    {u"ID", kInteger},
    {u"OwnerID", kInteger},
    {u"Comments", kString},
    {u"Rating", kString, u"varchar(80)"},
    {u"GroupName", kString, u"varchar(80)"},
    {u"PicturePath", kString, u"varchar(255)"},
    {u"VoidFlag", kYesNo, u"bit"},
};

constexpr ColumnLayout kMaterialTemplate[] = {
    {u"ID", kInteger},
    {u"StepID", kInteger},
    {u"Material", kString},
    {u"MaterialOrder", kInteger},
    {u"CommentsExist", kYesNo, u"bit"},
    {u"DefaultMaterial", kYesNo, u"bit"},
    {u"PicturePath", kString, u"varchar(255)"},
};
constexpr ColumnLayout kMaterialComment[] = {
    {u"MaterialID", kInteger}, {u"CommentID", kInteger}, {u"LinkKey", kString}};

constexpr ColumnLayout kRatingType[] = {
    {u"ID", kInteger}, {u"RatingType", kString}, {u"Description", kString}};
constexpr ColumnLayout kRatingChoices[] = {
    {u"ID", kInteger},        {u"RatingTypeID", kInteger}, {u"ChoiceName", kString},
    {u"DefaultFlag", kYesNo}, {u"BoldFlag", kYesNo},       {u"CommentPromptFlag", kYesNo},
    {u"SummaryFlag", kYesNo}, {u"ReserveFlag", kYesNo},    {u"RedFlag", kYesNo, u"bit"},
};

constexpr ColumnLayout kPickers[] = {{u"PickerName", kString}, {u"PickerChoice", kString}, {u"ID", kInteger}};
constexpr ColumnLayout kFieldTemplate[] = {
    {u"ID", kInteger, u"integer"},         {u"Label", kString, u"varchar(80)"},
    {u"Type", kInteger, u"integer"},       {u"Sequence", kInteger, u"integer"},
    {u"CategoryID", kInteger, u"integer"},
};
constexpr ColumnLayout kExpandedText[] = {
    {u"ShortCut", kString, u"varchar(80)"}, {u"Expanded", kString, u"Text"}, {u"ID", kInteger, u"integer"}};
constexpr ColumnLayout kVoidComments[] = {{u"MaterialID", kInteger}, {u"CommentID", kInteger}};
constexpr ColumnLayout kUniqueID[] = {{u"TableName", kString, u"varchar(50)"},
                                      {u"NextID", kInteger, u"integer"}};

constexpr ColumnLayout kOptions[] = {
    {u"ShowStepNumbers", kYesNo},
    {u"BlankLineBetweenComments", kYesNo},
    {u"OmitPictures", kYesNo},
    {u"Reserve3", kYesNo},
    {u"FinePrint", kString},
    {u"DefinitionOfTerms", kString},
    {u"FooterText", kString},
    {u"InspectorEntry", kString},
    {u"DataVersion", kString, u"varchar(20)"},
    {u"SummaryDisclaimer", kString, u"Text"},
    {u"ColumnWidth1", kDouble, u"float"},
    {u"ColumnWidth2", kDouble, u"float"},
    {u"ColumnWidth3", kDouble, u"float"},
    {u"ColumnWidth4", kDouble, u"float"},
    {u"ColumnWidth5", kDouble, u"float"},
    {u"OptionsID", kInteger, u"integer"},
    {u"ReportIcon", kBinary, u"Long Varbinary"},
    {u"ReportFontSize", kInteger, u"integer"},
    {u"UserName", kString, u"varchar(20)"},
    {u"Pswrd", kString, u"varchar(20)"},
    {u"IPAddress", kString, u"varchar(80)"},
    {u"Port", kInteger, u"integer"},
    {u"StepSpacing", kInteger, u"integer"},
    {u"PrintTOC", kYesNo, u"bit"},
    {u"DefaultPath", kString, u"varchar(255)"},
    {u"LabelDwellingAddress", kString},
    {u"LabelClientAddress", kString},
    {u"LabelClientAgent", kString},
    {u"LabelDocType", kString},
    {u"LabelRealEstateCompany", kString},
    {u"LabelDocNumber", kString},
    {u"LabelClientName", kString},
    {u"LabelDate", kString},
    {u"NextPictNumber", kInteger, u"integer"},
    {u"HideRatings", kYesNo, u"bit"},
    {u"Reserve35", kYesNo},
    {u"Reserve36", kYesNo},
    {u"Reserve37", kYesNo},
    {u"DefStepTab", kInteger, u"integer"},
    {u"ReportFontName", kString, u"Text"},
    {u"DefaultPictCardPath", kString, u"Text"},
};

constexpr TextView kById[] = {u"ID"};
constexpr TextView kInspectionIndexes[] = {u"InspectionID", u"InspectionNum"};
constexpr TextView kCategoryIndexes[] = {u"CategoryID", u"InspectionID"};
constexpr TextView kStepIndexes[] = {u"StepID", u"CategoryID"};
constexpr TextView kByCategory[] = {u"CategoryID"};
constexpr TextView kByInspectionType[] = {u"InspectionTypeID"};
constexpr TextView kByStep[] = {u"StepID"};
constexpr TextView kByMaterial[] = {u"MaterialID"};
constexpr TextView kMaterialIndexes[] = {u"ID", u"StepID"};
constexpr TextView kRatingTypeIndexes[] = {u"ID", u"RatingType"};
constexpr TextView kByRatingType[] = {u"RatingTypeID"};
constexpr TextView kByPicker[] = {u"PickerName"};
constexpr TextView kByTableName[] = {u"TableName"};

constexpr auto kInTemplate = DatabaseKind::Template;
constexpr auto kInInspection = DatabaseKind::Inspection;
constexpr auto kMergeInspection = std::span<const ColumnLayout>(kInspection).first(18);

const TableLayout kLayouts[] = {
    {u"Inspection", kInInspection, kInspection, kInspectionIndexes},
    {u"Category", kInInspection, kCategory, kCategoryIndexes},
    {u"InspectionCategory", kInInspection, kCategory, kCategoryIndexes},
    {u"Step", kInInspection, kStep, kStepIndexes},
    {u"Field", kInInspection, kField, kByCategory},
    {u"MERGE_Inspection", kInInspection, kMergeInspection, {}},
    {u"MERGE_Category", kInInspection, kCategory, kCategoryIndexes},
    {u"MERGE_Step", kInInspection, kStep, kStepIndexes},
    {u"UniqueID", kInInspection, kUniqueID, kByTableName},
    {u"CategoryComment", kInTemplate, kCategoryComment, kByCategory, true},
    {u"CategoryStep", kInTemplate, kCategoryStep, kByCategory, true},
    {u"CategoryTemplate", kInTemplate, kCategoryTemplate, kById},
    {u"Comments", kInTemplate, kComments, kById},
    {u"ExpandedText", kInTemplate, kExpandedText, {}},
    {u"FieldTemplate", kInTemplate, kFieldTemplate, kByCategory},
    {u"InspectionType", kInTemplate, kInspectionType, {}},
    {u"InspectionTypeCategory", kInTemplate, kInspectionTypeCategory, kByInspectionType, true},
    {u"InspectionTypeComment", kInTemplate, kInspectionTypeComment, kByInspectionType, true},
    {u"MaterialComment", kInTemplate, kMaterialComment, kByMaterial, true},
    {u"MaterialTemplate", kInTemplate, kMaterialTemplate, kMaterialIndexes},
    {u"Options", kInTemplate, kOptions, {}},
    {u"Pickers", kInTemplate, kPickers, kByPicker},
    {u"RatingChoices", kInTemplate, kRatingChoices, kByRatingType},
    {u"RatingType", kInTemplate, kRatingType, kRatingTypeIndexes},
    {u"StepComment", kInTemplate, kStepComment, kByStep, true},
    {u"StepTemplate", kInTemplate, kStepTemplate, kById},
    {u"VoidComments", kInTemplate, kVoidComments, {}},
    {u"UniqueID", kInTemplate, kUniqueID, kByTableName},
};

constexpr TextView kGeneratedNames[] = {u"Number%d", u"Double%d", u"DateTime%d",
                                        u"String%d", u"YesNo%d",  u"Binary%d"};
constexpr TextView kGeneratedTypes[] = {u"integer",       u"double", u"datetime",
                                        u"varchar (255)", u"bit",    u"Long Varbinary"};

}  // namespace

TextView GeneratedSqlType(ValueType type) {
  const auto index = static_cast<std::size_t>(type);
  return index < std::size(kGeneratedTypes) ? kGeneratedTypes[index] : TextView();
}

Text GeneratedName(ValueType type, int position) {
  const auto index = static_cast<std::size_t>(type);
  return index < std::size(kGeneratedNames) ? device::Format(kGeneratedNames[index], position) : Text();
}

std::span<const TableLayout> AllLayouts() {
  return kLayouts;
}

TextView RealTableName(TextView table) {
  return device::EqualIgnoringCase(table, u"MERGE_InspectionCategory") ? TextView(u"MERGE_Category") : table;
}

bool IsStagingTable(TextView table) {
  constexpr TextView kPrefix = u"MERGE_";
  return device::EqualIgnoringCase(table.substr(0, kPrefix.size()), kPrefix) && FindLayout(table);
}

const TableLayout* FindLayout(TextView table) {
  const TextView name = RealTableName(table);
  for (const TableLayout& layout : kLayouts)
    if (device::EqualIgnoringCase(layout.name, name)) return &layout;
  return nullptr;
}

}  // namespace inspector::data
