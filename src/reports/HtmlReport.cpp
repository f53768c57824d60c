#include "reports/HtmlReport.h"

#include <cerrno>

#include "device/CodePage.h"
#include "device/Format.h"

namespace inspector::reports {
namespace {

constexpr TextView kProgramFolder = u"\\Program Files\\Brindlecove\\";

// The numbers by which the device knows why a folder cannot be made.
enum class DeviceError : int {
  PathNotFound = 3,
  AccessDenied = 5,
  DiskFull = 112,
  InvalidName = 123,
  GeneralFailure = 31,
};

DeviceError DeviceErrorOf(const std::error_code& error) {
  switch (error.value()) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
      return DeviceError::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
      return DeviceError::AccessDenied;
    case ENOSPC:
    case EDQUOT:
      return DeviceError::DiskFull;
    case EINVAL:
    case EILSEQ:
    case ENAMETOOLONG:
      return DeviceError::InvalidName;
    default:
      return DeviceError::GeneralFailure;
  }
}

bool CanNameFolder(TextView documentNumber) {
  return documentNumber.find_first_of(u"\\/:") == TextView::npos &&
         documentNumber.find(u"..") == TextView::npos;
}

bool RefuseFolder(ReportRun& run, const Text& folder, DeviceError error) {
  device::ShowError(run.GetMachine().prompts, device::Format(u"Unable to create the %s directory. Error#%d",
                                                             folder, static_cast<int>(error)));
  return false;
}

bool IsThere(const std::error_code& error) {
  return error == std::errc::file_exists;
}

// False when the page is too large and the person does not want a part of it. A full disk is told at the end.
bool SavePage(ReportRun& run, TextView name, const Text& page) {
  std::string bytes = device::ToCodePage(page);
  if (bytes.size() > HtmlReport::kMostPageBytes) {
    const Text question = device::Format(
        u"The page %s has %d bytes, and a page can hold no more than %d. Leave out some categories, or make "
        u"the web page in one file, which has no such limit. Write only the beginning of the page?",
        name, bytes.size(), HtmlReport::kMostPageBytes);
    if (!device::ConfirmCaution(run.GetMachine().prompts, question)) return false;
    bytes.resize(HtmlReport::kMostPageBytes);
  }
  run.Create(run.Target().path / device::ToUtf8(name)).Write(bytes);
  return true;
}

bool SavePage(ReportRun& run, TextView name, const HtmlPage& page) {
  Text text;
  page.RenderTo(text);
  return SavePage(run, name, text);
}

}  // namespace

Text HtmlReport::FramesPage(TextView folder) {
  return device::Format(
      u"<html><head><title>Inspection Report</title></head><frameset cols=\"150,*\">"
      u"<frame name=\"contents\" target=\"contents\" src=\"%stoc.htm\">"
      u"<frame name=\"main\" src=\"%sinspection.htm\" target=\"main\"></frameset></html>",
      folder, folder);
}

void HtmlReport::Write(const ReportSource& source, ReportRun& run) const {
  if (!Prepare(source.content.header, run)) return run.Refuse();
  PagePictures pictures(source.pictures, run, run.Target().path);
  HtmlPages pages(source.content, pictures, source.options.m_HideRatings != 0);
  ReportProgress& progress = run.Progress();
  progress.SetStatus(u"Building Categories...");
  for (const ReportSection& category : source.content.sections) {
    if (!pages.AddCategory(category, progress) || !progress.PartDone()) return;
  }
  pages.AddEnd();
  pictures.DropThoseOf(run.Target().path / device::ToUtf8(HtmlPages::kInspectionFile));
  progress.SetStatus(u"Saving to file...");
  if (!SavePage(run, HtmlPages::kInspectionFile, pages.Inspection()) ||
      !SavePage(run, HtmlPages::kContentsFile, pages.Contents()) ||
      !SavePage(run, u"index.htm", FramesPage(FrameFolder())))
    return run.Refuse();
  progress.PartDone();
}

device::SaveQuestion HtmlExport::Question(const ReportHeader& header) const {
  return {u"Inspection" + header.documentNumber, Text(kProgramFolder), {}, {}};
}

bool HtmlExport::Prepare(const ReportHeader& header, ReportRun& run) const {
  const std::filesystem::path& folder = run.Target().path;
  const bool isSuggested = run.Target().isSuggested;
  const Text shown = isSuggested ? Question(header).folder + Question(header).suggestedName
                                 : device::FromUtf8(folder.native());
  if (isSuggested) {
    if (!CanNameFolder(header.documentNumber)) return RefuseFolder(run, shown, DeviceError::InvalidName);
    // The program's own folder is the device's business, whether anything lies in it yet or not.
    for (const auto& above : {folder.parent_path().parent_path(), folder.parent_path()})
      if (const auto error = run.MakeFolder(above); error && !IsThere(error))
        return RefuseFolder(run, shown, DeviceErrorOf(error));
  }
  if (const auto error = run.MakeFolder(folder); error && !IsThere(error))
    return RefuseFolder(run, shown, DeviceErrorOf(error));
  return true;
}

device::SaveQuestion HtmlView::Question(const ReportHeader&) const {
  return {{}, Text(kProgramFolder), {}, {}};
}

}  // namespace inspector::reports
